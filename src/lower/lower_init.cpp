// lower_init.cpp - initializations as code, for what C has: constants, expressions, aggregates of
// both.
// Rule:    an aggregate with parts that need code keeps its constant parts as a constant, with
//          zeros in the places of the others, and assigns these, in their order, behind it.
// Entry:   lower_dynamic_init, zero_automatic_temporary.
#include "lower/lower_init.h"

#include "driver/flags.h"
#include "driver/target.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"
#include "mem/stack_limit.h"

// --- Positions -----------------------------------------------------------------------------------

void set_var_init_pos_descr(a_variable *variable, an_init_pos_descr *descr)
{
  *descr = {};
  descr->variable = variable;
  descr->type = variable->type;
}

static a_type *type_of_part(const an_init_pos_descr *descr)
{
  return descr->last_modifier == nullptr ? descr->type : descr->last_modifier->type;
}

// Extends the position by a step; undone by `remove_modifier`.
static void add_modifier(an_init_pos_descr *descr, an_init_pos_modifier *modifier)
{
  modifier->next = nullptr;
  if (descr->last_modifier == nullptr) {
    descr->modifiers = modifier;
  } else {
    descr->last_modifier->next = modifier;
  }
  descr->last_modifier = modifier;
}

static void restore_last_modifier(an_init_pos_descr *descr, an_init_pos_modifier *last)
{
  descr->last_modifier = last;
  if (last == nullptr) {
    descr->modifiers = nullptr;
  } else {
    last->next = nullptr;
  }
}

static an_expr_node *element_lvalue(an_expr_node *array, uint64_t index, a_type *element_type)
{
  an_expr_node *pointer = conv_array_expr_to_pointer(array);
  an_integer_kind kind = targ_ptrdiff_t_int_kind;
  pointer->next = node_for_host_large_integer((long long)index, kind);
  return make_lvalue_operator_node(eok_subscript, element_type, pointer);
}

an_expr_node *make_lvalue_of_init_entity_node(const an_init_pos_descr *descr)
{
  an_expr_node *object = descr->is_indirect
                             ? add_indirection_to_node(var_rvalue_expr(descr->variable))
                             : var_lvalue_expr(descr->variable);
  for (an_init_pos_modifier *step = descr->modifiers; step != nullptr; step = step->next) {
    switch (step->kind) {
    case ipm_field: object = field_lvalue_selection_expr(object, step->variant.field); break;
    case ipm_base_class:
      object = base_class_selection_expr(object, step->variant.base_class);
      lower_cplusplus_operator(object); // what is made here isn't walked again
      break;
    case ipm_element: object = element_lvalue(object, step->variant.index, step->type); break;
    }
  }
  return object;
}

// --- Assignment of initial values ----------------------------------------------------------------

// A const object, or one inside a const object, is written through a pointer without const.  A
// bit-field has no address: what holds it does.
static an_expr_node *without_const(an_expr_node *object)
{
  if (!is_const_qualified(object->type)) return object;
  if (is_operation(object, eok_dot_field) && field_of(second_operand_of(object))->is_bit_field) {
    an_expr_node *field = second_operand_of(object);
    an_expr_node *holder = first_operand_of(object);
    holder->next = nullptr;
    holder = without_const(holder);
    holder->next = field;
    first_operand_of(object) = holder;
    return object;
  }
  a_type *type = make_unqualified_type(object->type);
  an_expr_node *address = add_address_of_to_node(object);
  return add_indirection_to_node(add_cast(address, make_pointer_type(type)));
}

an_expr_node *make_init_assignment(an_expr_node *object, an_expr_node *value)
{
  object = without_const(object);
  an_expr_operator_kind op = assignment_operator_for_type(object->type);
  return make_binary_node(op, rvalue_type(object->type), object, value);
}

static void assign_init_value(const an_init_pos_descr *descr, an_expr_node *value,
                              an_insert_location *location)
{
  insert_expr_statement(make_init_assignment(make_lvalue_of_init_entity_node(descr), value),
                        location);
}

// --- Zeroing -------------------------------------------------------------------------------------

a_constant *zero_constant_for_type(a_type *type)
{
  a_type *bare = skip_typerefs(type);
  if (bare->kind != tk_array && !kind_has_class_part(bare->kind)) {
    a_constant zero;
    make_zero_of_proper_type(rvalue_type(type), &zero);
    return alloc_unshared_constant(&zero);
  }
  a_constant *aggregate = alloc_constant(ck_aggregate);
  aggregate->type = type;
  if (bare->kind == tk_array) {
    add_to_aggregate(aggregate, zero_constant_for_type(as_array(bare).element_type));
  } else {
    a_field *field = first_initializable_field(bare);
    if (field != nullptr) add_to_aggregate(aggregate, zero_constant_for_type(field->type));
  }
  return aggregate;
}

static a_routine *memset_routine; // of the current translation unit

// A declaration of our own, unless the source has one that a call can use.
static a_routine *find_or_make_memset()
{
  if (memset_routine != nullptr) return memset_routine;
  for (a_routine *routine = il_header.primary_scope->routines; routine != nullptr;
       routine = routine->next) {
    const char *name = routine->source_corresp.name;
    if (name != nullptr && strcmp(name, "memset") == 0) {
      if (routine->storage_class != sc_static) memset_routine = routine;
      break;
    }
  }
  if (memset_routine == nullptr) {
    int saved;
    switch_to_file_scope_region(&saved);
    a_routine *routine = alloc_routine();
    a_type *void_pointer = make_pointer_type(void_type());
    a_type *int_type = integer_type(ik_int);
    routine->type = make_routine_type(void_pointer, void_pointer, int_type, size_t_type(), nullptr);
    routine->storage_class = sc_extern;
    routine->is_compiler_generated = true;
    routine->is_runtime_routine = true;
    routine->source_corresp.name_linkage = nlk_c;
    assign_internal_name(&routine->source_corresp, "memset");
    add_to_routines_list(routine, -1);
    switch_back_to_original_region(saved);
    memset_routine = routine;
  }
  memset_routine->source_corresp.needed = true;
  return memset_routine;
}

void clear_lowered_runtime_routines()
{
  memset_routine = nullptr;
}

an_expr_node *zero_memory_call(an_expr_node *address, a_type *type)
{
  a_routine *routine = find_or_make_memset();
  an_expr_node *function = function_addr_expr(routine);
  an_expr_node *pointer = add_cast_if_necessary(address, make_pointer_type(void_type()));
  an_expr_node *byte = node_for_integer_constant(0, ik_int);
  an_expr_node *size = alloc_expr_node(enk_sizeof);
  sizeof_of(size).is_type = true;
  sizeof_of(size).type = type;
  size->type = size_t_type();
  function->next = pointer;
  pointer->next = byte;
  byte->next = size;
  return make_operator_node(eok_call, make_pointer_type(void_type()), function);
}

void zero_automatic_temporary(a_variable *variable, an_expr_node *expr)
{
  set_variable_address_taken(variable);
  an_insert_location location;
  set_expr_insert_location(expr, &location);
  insert_expr(zero_memory_call(var_addr_expr(variable), variable->type), &location);
  variable->init_kind = initk_none;
}

static void zero_object(const an_init_pos_descr *descr, an_insert_location *location)
{
  an_expr_node *object = make_lvalue_of_init_entity_node(descr);
  a_type *type = skip_typerefs(object->type);
  if (type->kind == tk_array || kind_has_class_part(type->kind)) {
    insert_expr_statement(
        zero_memory_call(add_address_of_to_node(object), make_unqualified_type(object->type)),
        location);
  } else {
    a_type *value_type = rvalue_type(object->type);
    assign_init_value(descr, node_for_zero_of_type(value_type), location);
  }
}

// --- Aggregates ----------------------------------------------------------------------------------

bool has_dynamic_part(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_dynamic_init: return true;
  case ck_init_repeat: return has_dynamic_part(init_repeat_of(constant).repeated);
  case ck_aggregate:
    for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next) {
      if (has_dynamic_part(element)) return true;
    }
    return false;
  default: return false;
  }
}

static void replace_by_zero(a_constant *element, a_type *type)
{
  a_constant *next = element->next;
  a_constant *zero = zero_constant_for_type(type);
  copy_constant(zero, element);
  element->next = next;
}

static void lower_aggregate_parts(a_constant *aggregate, an_init_pos_descr *descr, unsigned flags,
                                  an_insert_location *location);

// One element at the position that descr has reached.
static void lower_aggregate_element(a_constant *element, an_init_pos_descr *descr, unsigned flags,
                                    an_insert_location *location)
{
  if (element->kind == ck_aggregate) {
    lower_aggregate_parts(element, descr, flags, location);
    return;
  }
  if (element->kind != ck_dynamic_init) return;
  a_type *type = type_of_part(descr);
  a_dynamic_init *init = dynamic_init_of(element);
  a_constant *constant = nullptr;
  bool is_new = false;
  lower_dynamic_init(init, descr, nullptr, nullptr, flags | lif_full_expression, true, location,
                     &constant, &is_new);
  if (constant == nullptr) {
    replace_by_zero(element, type);
    return;
  }
  a_constant *next = element->next;
  copy_constant(constant, element);
  element->next = next;
}

// An expression that fills a run of elements is evaluated once; its value goes into each of them.
static void lower_repeated_element(a_constant *repeat, an_init_pos_descr *descr,
                                   an_init_pos_modifier *step, unsigned flags,
                                   an_insert_location *location)
{
  a_constant *value = init_repeat_of(repeat).repeated;
  if (!has_dynamic_part(value)) return;
  uint64_t first = step->variant.index;
  uint64_t count = init_repeat_of(repeat).count;
  lower_aggregate_element(value, descr, flags, location);
  // `value` is constant from here on, with the first element assigned; the others are copies of
  // that.
  an_expr_node *source_position = make_lvalue_of_init_entity_node(descr);
  for (uint64_t i = 1; i < count; i++) {
    step->variant.index = first + i;
    an_expr_node *source = rvalue_expr_for_lvalue(copy_expr_tree(source_position, true));
    assign_init_value(descr, source, location);
  }
  step->variant.index = first;
}

static void lower_array_parts(a_constant *aggregate, a_type *array, an_init_pos_descr *descr,
                              unsigned flags, an_insert_location *location)
{
  an_init_pos_modifier *outer = descr->last_modifier;
  an_init_pos_modifier step = {};
  step.kind = ipm_element;
  step.type = as_array(array).element_type;
  add_modifier(descr, &step);
  uint64_t index = 0;
  for (a_constant *element = aggregate_of(aggregate).first_element; element != nullptr;
       element = element->next) {
    step.variant.index = index;
    if (element->kind == ck_designator) {
      index = designator_of(element).index;
    } else if (element->kind == ck_init_repeat) {
      lower_repeated_element(element, descr, &step, flags, location);
      index += init_repeat_of(element).count;
    } else {
      lower_aggregate_element(element, descr, flags, location);
      index++;
    }
  }
  restore_last_modifier(descr, outer);
}

static void lower_class_parts(a_constant *aggregate, a_type *class_type, an_init_pos_descr *descr,
                              unsigned flags, an_insert_location *location)
{
  an_init_pos_modifier *outer = descr->last_modifier;
  an_init_pos_modifier step = {};
  step.kind = ipm_field;
  add_modifier(descr, &step);
  a_field *field = first_initializable_field(class_type);
  for (a_constant *element = aggregate_of(aggregate).first_element; element != nullptr;
       element = element->next) {
    if (element->kind == ck_designator) {
      field = designator_of(element).field;
      continue;
    }
    if (field == nullptr) break;
    step.variant.field = field;
    step.type = field->type;
    lower_aggregate_element(element, descr, flags, location);
    field = next_initializable_field(field->next);
  }
  restore_last_modifier(descr, outer);
}

static void lower_aggregate_parts(a_constant *aggregate, an_init_pos_descr *descr, unsigned flags,
                                  an_insert_location *location)
{
  check_recursion();
  if (!has_dynamic_part(aggregate)) return;
  a_type *type = skip_typerefs(type_of_part(descr));
  if (type->kind == tk_array) {
    lower_array_parts(aggregate, type, descr, flags, location);
  } else if (kind_has_class_part(type->kind)) {
    lower_class_parts(aggregate, type, descr, flags, location);
  } else if (aggregate_of(aggregate).first_element != nullptr) {
    lower_aggregate_element(aggregate_of(aggregate).first_element, descr, flags, location);
  }
}

// --- The routine ---------------------------------------------------------------------------------

static void lower_init_expr(an_expr_node *expr, unsigned flags)
{
  if (C_dialect == 2) {
    if (flags & lif_full_expression) {
      lower_full_expr(expr, nullptr);
    } else {
      lower_expr_full(expr, false);
    }
  } else if (flags & lif_full_expression) {
    lower_c99_full_expr(expr);
  } else {
    lower_c99_expr(expr);
  }
}

// The initializer is a whole value: a variable that isn't a part of something can take it.
static bool variable_takes_constant(const an_init_pos_descr *descr)
{
  return descr->modifiers == nullptr && !descr->is_indirect;
}

// What dies with its block, or with the program.
static void note_destructible_object(a_dynamic_init *init, const an_init_pos_descr *descr,
                                     an_insert_location *location)
{
  a_storage_class storage = descr->variable == nullptr ? sc_auto : descr->variable->storage_class;
  bool is_static = !descr->is_indirect && storage != sc_auto && storage != sc_register;
  if (is_static)
    register_destructor(init, descr, location);
  else
    note_construction(init, descr, location);
}

void lower_dynamic_init(a_dynamic_init *init, an_init_pos_descr *descr,
                        const an_init_pos_descr *copy_source, a_variable *, unsigned flags,
                        bool not_last, an_insert_location *location, a_constant **out_constant,
                        bool *out_new_constant)
{
  *out_constant = nullptr;
  *out_new_constant = false;
  a_context context;
  bool has_lifetime = C_dialect == 2 && init->object_lifetime != nullptr;
  if (has_lifetime) begin_init_lifetime(init, &context, location);
  turn_function_constant_into_expr(init);
  switch (init->kind) {
  case dik_none: break;
  case dik_zero: zero_object(descr, location); break;
  case dik_constant:
    lower_c99_constant(constant_of(init));
    if (variable_takes_constant(descr) || not_last) {
      *out_constant = constant_of(init);
    } else {
      assign_init_value(descr, alloc_node_for_allocated_constant(constant_of(init)), location);
    }
    break;
  case dik_expression:
  case dik_call_returning_class:
    lower_init_expr(expr_of(init), flags);
    assign_init_value(descr, expr_of(init), location);
    break;
  case dik_constant_via_temp: {
    // The constant parts come first: the variable's initializer, or an assignment by the caller.
    a_constant *aggregate = constant_of(init);
    *out_new_constant = has_dynamic_part(aggregate);
    lower_aggregate_parts(aggregate, descr, flags, location);
    *out_constant = aggregate;
    break;
  }
  case dik_bitwise_copy: {
    check(copy_source != nullptr);
    an_expr_node *source = make_lvalue_of_init_entity_node(copy_source);
    assign_init_value(descr, rvalue_expr_for_lvalue(source), location);
    break;
  }
  case dik_constructor: lower_constructor_init(init, descr, copy_source, location); break;
  case dik_last: unexpected_kind("dynamic initialization");
  }
  if (has_lifetime) end_init_lifetime(init, location);
  // A part of an aggregate dies with the whole.
  if (init->destructor != nullptr && !not_last) note_destructible_object(init, descr, location);
}

void add_stmk_init_for_compound_literal(a_variable *variable, a_dynamic_init *init)
{
  a_statement *statement = alloc_statement(stmk_init);
  dynamic_init_of(statement) = init;
  init->variable = variable;
  statement->start_position = code_pos_for_lowering;
  statement->end_position = code_pos_for_lowering;
  statement->is_compiler_generated = true;
  variable->init_kind = initk_dynamic;
  variable->initializer.dynamic_init = init;
  add_to_end_of_temp_init_statements_list(statement);
}
