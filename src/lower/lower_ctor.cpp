// lower_ctor.cpp - constructors and destructors: their calls, the code in their bodies that the
// source doesn't write, their entries for base subobjects and for delete.
// Rule:    the routine from the source is the complete entry, or the base entry where the class has
//          virtual bases; the others call it.
// Entry:   lower_constructor_init, add_destructor_call, lower_special_function_body.
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"
#include "lower/lower_name.h"
#include "parse/symbol_tbl.h"

enum : unsigned { entry_complete = 1, entry_base = 2, entry_deleting = 3 };

// --- Types ---------------------------------------------------------------------------------------

void lower_member_function_type(a_routine *routine)
{
  a_type *type = skip_typerefs(routine->type);
  if (type->kind != tk_routine || type->source_corresp.lowered) return;
  a_routine_type_supplement *supplement = routine_supplement_of(type);
  if (supplement->this_class == nullptr) return;
  type->source_corresp.lowered = true;
  int saved;
  switch_to_file_scope_region(&saved);
  a_param_type *param = alloc_param_type(f_implicit_this_param_type_of(type));
  param->is_this_param = true;
  param->next = supplement->param_types;
  supplement->param_types = param;
  if (routine->special_kind == sfk_constructor)
    as_routine(type).return_type = make_pointer_type(supplement->this_class);
  else if (routine->special_kind == sfk_destructor)
    as_routine(type).return_type = make_pointer_type(void_type());
  switch_back_to_original_region(saved);
}

// --- Entries -------------------------------------------------------------------------------------

static a_type *class_of_routine(const a_routine *routine)
{
  return routine_supplement_of(skip_typerefs(routine->type))->this_class;
}

static unsigned primary_kind(const a_routine *routine)
{
  return as_class(skip_typerefs(class_of_routine(routine))).has_virtual_bases ? entry_base
                                                                              : entry_complete;
}

static a_routine *find_alternate(a_routine *routine, unsigned kind)
{
  for (a_routine_list_entry *entry = routine->special.ctor_dtor_variants; entry != nullptr;
       entry = entry->next)
    if (entry->routine->special.ctor_dtor_kind == kind) return entry->routine;
  return nullptr;
}

static void copy_properties(const a_routine *from, a_routine *to)
{
  to->storage_class = from->storage_class;
  to->source_corresp.name_linkage = from->source_corresp.name_linkage;
  to->source_corresp.decl_position = from->source_corresp.decl_position;
  to->is_inline = from->is_inline;
  to->inline_linkage_state = from->inline_linkage_state;
  to->may_be_duplicated = from->may_be_duplicated;
  to->visibility = from->visibility;
  to->section_specification = from->section_specification;
}

static a_routine *make_alternate(a_routine *routine, unsigned kind)
{
  int saved;
  switch_to_file_scope_region(&saved);
  a_routine *alternate = alloc_routine();
  alternate->type = copy_routine_type_with_param_types(skip_typerefs(routine->type));
  skip_typerefs(alternate->type)->source_corresp.lowered =
      skip_typerefs(routine->type)->source_corresp.lowered;
  set_routine_special_kind(alternate, routine->special_kind);
  alternate->special.ctor_dtor_kind = kind;
  alternate->is_compiler_generated = true;
  alternate->generated_from = routine;
  copy_properties(routine, alternate);
  mangle_alternate_entry_point_name(alternate, routine);
  lower_member_function_type(alternate);
  add_to_routines_list(alternate, 0);
  a_routine_list_entry *entry = alloc_list_entry_for_routine(alternate);
  entry->next = routine->special.ctor_dtor_variants;
  routine->special.ctor_dtor_variants = entry;
  switch_back_to_original_region(saved);
  return alternate;
}

a_routine *alternate_entry_point(a_routine *routine, unsigned kind)
{
  if (kind == primary_kind(routine)) return routine;
  a_routine *alternate = find_alternate(routine, kind);
  return alternate != nullptr ? alternate : make_alternate(routine, kind);
}

static a_statement *make_return_statement(an_expr_node *expr)
{
  a_statement *statement = alloc_statement(stmk_return);
  statement->start_position = statement->end_position = code_pos_for_lowering;
  statement->is_compiler_generated = true;
  statement->expr = expr;
  return statement;
}

an_expr_node *values_of_parameters(a_variable *parameters)
{
  an_expr_node *first = nullptr, **link = &first;
  for (a_variable *variable = parameters; variable != nullptr; variable = variable->next) {
    *link = variable->is_by_reference ? var_addr_expr(variable) : var_rvalue_expr(variable);
    link = &(*link)->next;
  }
  return first;
}

// The body of an entry: a call of the routine from the source.
static void make_alternate_body(a_routine *alternate, a_routine *routine)
{
  a_generated_routine_state state;
  begin_generated_routine(alternate, &state);
  for (a_param_type *param = param_types_of(alternate->type); param; param = param->next)
    add_generated_parameter(&state, param);
  an_insert_location location;
  set_block_start_insert_location(state.scope->assoc_block, &location);
  an_expr_node *call = make_call_node(routine, values_of_parameters(state.scope->parameters));
  insert_statement_full(make_return_statement(call), &location, true);
  finish_generated_routine(&state);
}

// The class's own deallocation function, or the global one.
static a_routine *deallocation_routine(a_type *class_type)
{
  a_class_type_supplement *supplement = class_supplement_of(skip_typerefs(class_type));
  a_routine *list =
      supplement->class_scope == nullptr ? nullptr : supplement->class_scope->routines;
  for (a_routine *routine = list; routine != nullptr; routine = routine->next)
    if (routine->special_kind == sfk_operator && routine->special.operator_kind == onk_delete)
      return routine;
  for (a_base_class *base = supplement->base_classes; base != nullptr; base = base->next) {
    a_routine *routine = base->is_direct ? deallocation_routine(base->type) : nullptr;
    if (routine != nullptr && routine->source_corresp.is_class_member) return routine;
  }
  return runtime_routine("_ZdlPv", void_type(), make_pointer_type(void_type()));
}

// The entry that a delete through a base finds in the table: destroys, then frees.
static void make_deleting_body(a_routine *alternate, a_routine *routine)
{
  a_generated_routine_state state;
  begin_generated_routine(alternate, &state);
  for (a_param_type *param = param_types_of(alternate->type); param; param = param->next)
    add_generated_parameter(&state, param);
  a_variable *object = state.scope->parameters;
  an_insert_location location;
  set_block_start_insert_location(state.scope->assoc_block, &location);
  a_routine *complete = alternate_entry_point(routine, entry_complete);
  insert_expr_statement(make_call_node(complete, var_rvalue_expr(object)), &location);
  a_type *pointer = make_pointer_type(void_type());
  an_expr_node *address = add_cast(var_rvalue_expr(object), pointer);
  a_routine *deallocation = deallocation_routine(class_of_routine(routine));
  an_expr_node *arguments = address;
  a_param_type *param = param_types_of(deallocation->type);
  if (param != nullptr && param->next != nullptr)
    address->next = node_for_host_large_integer((long long)size_of_type(class_of_routine(routine)),
                                                targ_size_t_int_kind);
  insert_expr_statement(make_call_node(deallocation, arguments), &location);
  insert_statement_full(make_return_statement(add_cast(var_rvalue_expr(object), pointer)),
                        &location, true);
  finish_generated_routine(&state);
}

static void create_alternate_entry_points(a_routine *routine)
{
  if (routine->is_virtual && routine->special_kind == sfk_destructor) {
    a_routine *deleting = alternate_entry_point(routine, entry_deleting);
    if (!deleting->is_defined) make_deleting_body(deleting, routine);
  }
  unsigned other = primary_kind(routine) == entry_complete ? entry_base : entry_complete;
  a_routine *alternate = alternate_entry_point(routine, other);
  if (!alternate->is_defined) make_alternate_body(alternate, routine);
}

// --- Calls ---------------------------------------------------------------------------------------

// The object's address, as the type of `this`.
static an_expr_node *object_address(const an_init_pos_descr *descr, a_routine *routine)
{
  an_expr_node *object = make_lvalue_of_init_entity_node(descr);
  a_type *type = make_pointer_type(class_of_routine(routine));
  an_expr_node *address = add_address_of_to_node(object);
  return identical_types(address->type, type) ? address : add_cast(address, type);
}

static an_expr_node *source_address(const an_init_pos_descr *source, a_routine *routine)
{
  an_expr_node *address = add_address_of_to_node(make_lvalue_of_init_entity_node(source));
  a_param_type *param = param_types_of(routine->type);
  if (param != nullptr && param->is_this_param) param = param->next;
  if (param == nullptr || !is_any_reference_type(param->type)) return address;
  return add_cast(address, make_pointer_type(type_pointed_to(param->type)));
}

static void lower_arguments(an_expr_node *list)
{
  for (an_expr_node *next; list != nullptr; list = next) {
    next = list->next;
    lower_c99_expr(list);
  }
}

// A counted loop over the elements: for (i = 0; i < count; i++) statement.
static a_statement *make_element_loop(a_variable *index, uint64_t count, bool downward)
{
  a_type *type = index->type;
  an_integer_kind kind = int_kind_of_type(type);
  a_statement *loop = alloc_statement(stmk_for);
  loop->start_position = loop->end_position = code_pos_for_lowering;
  an_expr_node *start = node_for_host_large_integer(downward ? (long long)count - 1 : 0, kind);
  loop->expr =
      make_binary_node(downward ? eok_ge : eok_lt, integer_type(ik_int), var_rvalue_expr(index),
                       node_for_host_large_integer(downward ? 0 : (long long)count, kind));
  a_for_supplement *supplement = for_supplement_of(loop);
  supplement->init_statement =
      alloc_expr_statement(make_binary_node(eok_assign, type, var_lvalue_expr(index), start));
  supplement->increment_expr =
      make_operator_node(downward ? eok_pre_decr : eok_pre_incr, type, var_lvalue_expr(index));
  body_of(loop) = alloc_statement(stmk_block);
  return loop;
}

// The element that the index shows at, the array seen as a row of its innermost elements.
static an_expr_node *element_address(const an_init_pos_descr *descr, a_variable *index,
                                     a_routine *routine)
{
  an_expr_node *address = add_address_of_to_node(make_lvalue_of_init_entity_node(descr));
  a_type *pointer = make_pointer_type(class_of_routine(routine));
  an_expr_node *first = add_cast(address, pointer);
  return make_binary_node(eok_pointer_add, pointer, first, var_rvalue_expr(index));
}

static a_type *type_of_object(const an_init_pos_descr *descr)
{
  return descr->last_modifier == nullptr ? descr->type : descr->last_modifier->type;
}

// One call for each element; an expression can't hold the loop, so it has to be a statement.
static void call_for_elements(a_routine *entry, const an_init_pos_descr *descr,
                              an_expr_node *arguments, bool downward, an_insert_location *location)
{
  a_target_size count = 0;
  if (!num_array_elements(type_of_object(descr), &count)) return;
  a_variable *index = make_lowered_temporary(integer_type(ik_int));
  a_statement *loop = make_element_loop(index, count, downward);
  an_expr_node *address = element_address(descr, index, entry);
  address->next = arguments;
  an_insert_location inside;
  set_block_start_insert_location(body_of(loop), &inside);
  insert_expr_statement(make_call_node(entry, address), &inside);
  insert_statement_full(loop, location, true);
}

void lower_constructor_init(a_dynamic_init *init, const an_init_pos_descr *descr,
                            const an_init_pos_descr *copy_source, an_insert_location *location)
{
  a_dynamic_init_constructor &constructor = constructor_of(init);
  a_routine *routine = constructor.routine;
  lower_arguments(constructor.first_arg);
  pass_class_arguments(&constructor.first_arg);
  if (constructor.zero_first) {
    an_expr_node *object = make_lvalue_of_init_entity_node(descr);
    a_type *type = make_unqualified_type(object->type);
    insert_expr_statement(zero_memory_call(add_address_of_to_node(object), type), location);
  }
  if (routine == nullptr) return;
  bool is_base = descr->is_base_subobject;
  a_routine *entry = alternate_entry_point(routine, is_base ? entry_base : entry_complete);
  an_expr_node *arguments = constructor.first_arg;
  if (constructor.is_copy_of_source && copy_source != nullptr) {
    an_expr_node *source = source_address(copy_source, routine);
    source->next = arguments;
    arguments = source;
  }
  if (is_array_type(type_of_object(descr))) {
    call_for_elements(entry, descr, arguments, false, location);
    return;
  }
  an_expr_node *address = object_address(descr, routine);
  address->next = arguments;
  insert_expr_statement(make_call_node(entry, address), location);
}

void add_destructor_call(a_routine *destructor, const an_init_pos_descr *descr, bool complete,
                         an_insert_location *location)
{
  a_routine *entry = alternate_entry_point(destructor, complete ? entry_complete : entry_base);
  if (is_array_type(type_of_object(descr)))
    call_for_elements(entry, descr, nullptr, true, location);
  else
    insert_expr_statement(make_call_node(entry, object_address(descr, destructor)), location);
}

// --- Bodies --------------------------------------------------------------------------------------

// The part of *this that an entry of the initializer list is about.
static void describe_member(const a_constructor_init *entry, a_variable *this_variable,
                            an_init_pos_descr *descr, an_init_pos_modifier *step)
{
  *descr = {};
  *step = {};
  descr->variable = this_variable;
  descr->is_indirect = true;
  descr->type = type_pointed_to(this_variable->type);
  descr->modifiers = descr->last_modifier = step;
  if (entry->kind == cik_field) {
    step->kind = ipm_field;
    step->variant.field = entry->entity.field;
    step->type = entry->entity.field->type;
  } else {
    step->kind = ipm_base_class;
    step->variant.base_class = entry->entity.base_class;
    step->type = entry->entity.base_class->type;
    descr->is_base_subobject = true;
    descr->is_virtual_base_init = entry->kind == cik_virtual_base;
  }
}

static void lower_ctor_init_entry(a_constructor_init *entry, a_variable *this_variable,
                                  an_insert_location *location)
{
  if (entry->delegate_expr != nullptr) lower_c99_full_expr(entry->delegate_expr);
  if (entry->dynamic_init == nullptr) return;
  an_init_pos_descr descr, source;
  an_init_pos_modifier step, source_step;
  describe_member(entry, this_variable, &descr, &step);
  // An implicit copy takes the same part of the constructor's argument.
  a_variable *argument = this_variable->next;
  bool has_source = argument != nullptr && is_any_ptr_or_ref_type(argument->type);
  if (has_source) describe_member(entry, argument, &source, &source_step);
  a_constant *constant = nullptr;
  bool is_new = false;
  lower_dynamic_init(entry->dynamic_init, &descr, has_source ? &source : nullptr, nullptr,
                     lif_full_expression, false, location, &constant, &is_new);
}

static void lower_entries_of_kind(a_scope *scope, a_constructor_init_kind kind,
                                  an_insert_location *location)
{
  for (a_constructor_init *entry = scope->constructor_inits; entry; entry = entry->next)
    if (entry->kind == kind) lower_ctor_init_entry(entry, scope->this_param, location);
}

static void lower_constructor_code(a_scope *scope)
{
  an_insert_location location;
  set_block_start_insert_location(scope->assoc_block, &location);
  lower_entries_of_kind(scope, cik_virtual_base, &location);
  lower_entries_of_kind(scope, cik_direct_base, &location);
  set_virtual_function_pointers(class_of_routine(routine_of_scope(scope)), scope->this_param,
                                &location);
  lower_entries_of_kind(scope, cik_field, &location);
}

// The list names bases and members in the order of construction; they die the other way round.
static void add_member_destructions(a_constructor_init *entry, a_variable *this_variable,
                                    an_insert_location *location)
{
  if (entry == nullptr) return;
  add_member_destructions(entry->next, this_variable, location);
  a_dynamic_init *init = entry->dynamic_init;
  if (init == nullptr || init->destructor == nullptr) return;
  an_init_pos_descr descr;
  an_init_pos_modifier step;
  describe_member(entry, this_variable, &descr, &step);
  add_destructor_call(init->destructor, &descr, entry->kind == cik_field, location);
}

// Each return but the last becomes a jump to the destructions.
static void turn_returns_into_jumps(a_statement *statement, a_statement *last, a_label *label,
                                    bool *used);

static void turn_list_into_jumps(a_statement *list, a_statement *last, a_label *label, bool *used)
{
  for (; list != nullptr; list = list->next)
    turn_returns_into_jumps(list, last, label, used);
}

static void turn_returns_into_jumps(a_statement *statement, a_statement *last, a_label *label,
                                    bool *used)
{
  if (statement == nullptr || statement == last) return;
  switch (statement->kind) {
  case stmk_return:
    statement->expr = nullptr;
    set_statement_kind(statement, stmk_goto);
    label_of(statement) = label;
    *used = true;
    break;
  case stmk_block: turn_list_into_jumps(first_statement_of(statement), last, label, used); break;
  case stmk_if:
    turn_returns_into_jumps(then_statement_of(statement), last, label, used);
    turn_returns_into_jumps(else_statement_of(statement), last, label, used);
    break;
  case stmk_while:
  case stmk_do:
  case stmk_for:
  case stmk_switch: turn_returns_into_jumps(body_of(statement), last, label, used); break;
  default: break;
  }
}

static void lower_destructor_code(a_scope *scope)
{
  a_statement *block = scope->assoc_block;
  a_statement *last = last_statement_in_block(block);
  bool ends_in_return = last != nullptr && last->kind == stmk_return;
  a_statement *before = nullptr;
  for (a_statement *each = first_statement_of(block); each != nullptr && each != last;
       each = each->next)
    before = each;
  if (!ends_in_return) before = last;
  an_insert_location location;
  if (before != nullptr)
    set_insert_location(before, &location);
  else
    set_block_start_insert_location(block, &location);
  a_statement *label_statement = insert_temp_label(&location);
  bool used = false;
  turn_returns_into_jumps(block, ends_in_return ? last : nullptr, label_of(label_statement), &used);
  add_member_destructions(scope->constructor_inits, scope->this_param, &location);
  if (!ends_in_return) {
    an_expr_node *result =
        add_cast(var_rvalue_expr(scope->this_param), make_pointer_type(void_type()));
    insert_statement_full(make_return_statement(result), &location, false);
  }
  an_insert_location start;
  set_block_start_insert_location(block, &start);
  set_virtual_function_pointers(class_of_routine(routine_of_scope(scope)), scope->this_param,
                                &start);
}

void lower_special_function_body(a_scope *scope)
{
  a_routine *routine = routine_of_scope(scope);
  if (routine->special_kind == sfk_constructor)
    lower_constructor_code(scope);
  else if (routine->special_kind == sfk_destructor)
    lower_destructor_code(scope);
  else
    return;
  scope->constructor_inits = nullptr;
  routine->primary_ctor_dtor_kind = primary_kind(routine);
  create_alternate_entry_points(routine);
}
