// lower_vtbl.cpp - virtual function tables, the pointers to them in objects, calls through them.
// Rule:    a table is an array of integers; the pointer of an object shows at the entry of function
//          number 0, behind the offset to the top and the type information.
// Entry:   lower_vtbls_of_scope, set_virtual_function_pointers, lower_virtual_function_call.
#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_class.h"
#include "lower/lower_name.h"

static const unsigned entries_in_front = 2; // offset to the top, type information

static a_type *entry_type()
{
  return f_make_qualified_type(integer_type(ik_int), tq_const);
}

// --- Slots ---------------------------------------------------------------------------------------

static unsigned slot_count(a_type *class_type)
{
  unsigned count = 0;
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  if (supplement->primary_base != nullptr)
    count = slot_count(skip_typerefs(supplement->primary_base->type));
  if (supplement->class_scope == nullptr) return count;
  for (a_routine *routine = supplement->class_scope->routines; routine; routine = routine->next) {
    if (!routine->is_virtual || routine->virtual_function_number == 0xffff) continue;
    unsigned last = routine->virtual_function_number;
    if (routine->special_kind == sfk_destructor) last++;
    if (last + 1 > count) count = last + 1;
  }
  return count;
}

// The function of the number in the table of the class itself, or null.
static a_routine *routine_in_slot(a_type *class_type, unsigned number)
{
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  a_routine *list =
      supplement->class_scope == nullptr ? nullptr : supplement->class_scope->routines;
  for (a_routine *routine = list; routine != nullptr; routine = routine->next) {
    if (!routine->is_virtual || routine->virtual_function_number == 0xffff) continue;
    unsigned first = routine->virtual_function_number;
    bool takes_two = routine->special_kind == sfk_destructor;
    if (number == first || (takes_two && number == first + 1)) return routine;
  }
  if (supplement->primary_base == nullptr) return nullptr;
  return routine_in_slot(skip_typerefs(supplement->primary_base->type), number);
}

// Who answers for the function of the base in an object of the class.
static a_routine *final_overrider(a_base_class *base, a_routine *routine)
{
  if (base == nullptr) return routine;
  for (an_overriding_virtual_function *entry = base->overriders; entry; entry = entry->next)
    if (entry->overridden == routine) return entry->overrider;
  return routine;
}

// --- Tables --------------------------------------------------------------------------------------

static void add_integer_entry(a_constant *aggregate, long long value)
{
  a_constant constant;
  set_integer_constant(&constant, value, ik_int);
  constant.type = entry_type();
  add_to_aggregate(aggregate, alloc_unshared_constant(&constant));
}

// The address of the function, as an integer.
static void add_routine_entry(a_constant *aggregate, a_routine *routine)
{
  a_constant constant;
  set_routine_address_constant(routine, &constant, true);
  constant.type = entry_type();
  constant.value_is_punned = true;
  constant.show_cast = true;
  add_to_aggregate(aggregate, alloc_unshared_constant(&constant));
}

// --- Thunks --------------------------------------------------------------------------------------

// Two tables may need the same one.
static a_routine *find_thunk(const char *name)
{
  for (a_routine *routine = il_header.primary_scope->routines; routine; routine = routine->next)
    if (routine->is_thunk && strcmp(routine->source_corresp.internal_name, name) == 0)
      return routine;
  return nullptr;
}

static void make_thunk_body(a_routine *thunk, a_routine *target, int64_t delta)
{
  a_generated_routine_state state;
  begin_generated_routine(thunk, &state);
  for (a_param_type *param = param_types_of(thunk->type); param; param = param->next)
    add_generated_parameter(&state, param);
  an_expr_node *arguments = values_of_parameters(state.scope->parameters);
  an_expr_node *rest = arguments->next;
  a_type *this_type = arguments->type;
  arguments->next = nullptr;
  arguments = displaced_pointer(arguments, delta, rvalue_type(this_type));
  arguments->next = rest;
  an_expr_node *call = make_call_node(target, arguments);
  an_insert_location location;
  set_block_start_insert_location(state.scope->assoc_block, &location);
  if (is_void_type(call->type)) {
    insert_expr_statement(call, &location);
  } else {
    a_statement *statement = alloc_statement(stmk_return);
    statement->expr = call;
    insert_statement_full(statement, &location, true);
  }
  finish_generated_routine(&state);
}

// A routine of the target's type that moves the object's address and goes on to the target.
static a_routine *make_thunk(a_routine *target, int64_t delta)
{
  a_thunk_description description = {};
  description.target = target;
  description.this_adjustment.delta = delta;
  lower_member_function_type(target);
  a_routine *thunk = alloc_routine();
  mangle_wrapper_name(thunk, &description);
  a_routine *known = find_thunk(thunk->source_corresp.internal_name);
  if (known != nullptr) return known;
  thunk->type = copy_routine_type_with_param_types(skip_typerefs(target->type));
  skip_typerefs(thunk->type)->source_corresp.lowered = true;
  thunk->storage_class = sc_static; // each file that needs it has its own
  thunk->source_corresp.name_linkage = nlk_internal;
  thunk->is_compiler_generated = true;
  thunk->is_thunk = true;
  thunk->generated_from = target;
  thunk->visibility = target->visibility;
  thunk->section_specification = target->section_specification;
  add_to_routines_list(thunk, 0);
  make_thunk_body(thunk, target, delta);
  return thunk;
}

// What a table's entry has to add to the address of the base, so that the overrider finds its object.
static int64_t this_adjustment(a_type *class_type, const a_base_class *base,
                               const a_routine *overrider)
{
  if (base == nullptr) return 0;
  a_type *overrider_class = parent_class_of(&overrider->source_corresp);
  int64_t target = 0;
  if (overrider_class != nullptr && overrider_class != class_type) {
    if (overrider_class == skip_typerefs(base->type)) return 0;
    a_base_class *holder = find_base_class_of(class_type, overrider_class);
    if (holder != nullptr) target = (int64_t)holder->offset;
  }
  return target - (int64_t)base->offset;
}

static a_routine *entry_of_slot(a_routine *routine, a_routine *slot_owner, unsigned number)
{
  if (routine->is_pure_virtual) return runtime_routine("__cxa_pure_virtual", void_type());
  if (routine->is_deleted) return runtime_routine("__cxa_deleted_virtual", void_type());
  if (routine->special_kind != sfk_destructor) return routine;
  return alternate_entry_point(routine, number == slot_owner->virtual_function_number ? 1 : 3);
}

static a_variable *make_table_variable(a_type *class_type, a_base_class *base, unsigned count)
{
  const char *name = mangled_vtbl_name(class_type, base, nullptr);
  a_type *type = make_array_type(entry_type(), count + entries_in_front);
  set_array_type_size(type, false);
  a_variable *variable = make_lowered_variable(name, true, type, sc_extern);
  variable->is_vtable = true;
  variable->is_definition = false;
  variable->source_corresp.is_local = false;
  variable->source_corresp.name_is_mangled = true;
  variable->source_corresp.name_linkage = nlk_cplusplus;
  add_variable_to_scope(variable, il_header.primary_scope);
  return variable;
}

// The table of the class itself (base is null), or of a base within it that has a pointer of its
// own.
static a_variable *table_variable(a_type *class_type, a_base_class *base)
{
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  a_variable **place = base == nullptr ? &supplement->vtbl_variable : nullptr;
  if (place != nullptr && *place != nullptr) return *place;
  if (place == nullptr) {
    const char *name = mangled_vtbl_name(class_type, base, nullptr);
    for (a_variable *variable = il_header.primary_scope->variables; variable;
         variable = variable->next)
      if (variable->is_vtable && strcmp(variable->source_corresp.internal_name, name) == 0)
        return variable;
  }
  int saved;
  switch_to_file_scope_region(&saved);
  a_type *layout = base == nullptr ? class_type : skip_typerefs(base->type);
  a_variable *variable = make_table_variable(class_type, base, slot_count(layout));
  switch_back_to_original_region(saved);
  if (place != nullptr) *place = variable;
  return variable;
}

static a_type *class_of_result(const a_routine *routine)
{
  a_type *type = return_type_of(routine->type);
  return is_any_ptr_or_ref_type(type) ? skip_typerefs(type_pointed_to(type)) : nullptr;
}

// An overrider whose result is another part of the object than what the caller expects.
static void check_covariant_result(const a_routine *owner, const a_routine *overrider)
{
  a_type *from = class_of_result(overrider), *to = class_of_result(owner);
  if (from == nullptr || to == nullptr || from == to || !kind_has_class_part(from->kind)) return;
  const a_base_class *base = find_base_class_of(from, to);
  if (base == nullptr || (base->offset == 0 && !base->is_virtual)) return;
  pos_error(ec_covariant_return_type_not_supported, overrider->source_corresp.decl_position);
}

static void define_table(a_type *class_type, a_base_class *base)
{
  a_variable *variable = table_variable(class_type, base);
  if (variable->init_kind != initk_none) return;
  a_type *layout = base == nullptr ? class_type : skip_typerefs(base->type);
  a_constant *aggregate = alloc_constant(ck_aggregate);
  aggregate->type = variable->type;
  add_integer_entry(aggregate, base == nullptr ? 0 : -(long long)base->offset);
  add_integer_entry(aggregate, 0);
  unsigned count = slot_count(layout);
  for (unsigned number = 0; number < count; number++) {
    a_routine *owner = routine_in_slot(layout, number);
    a_routine *routine = owner == nullptr ? nullptr : final_overrider(base, owner);
    if (routine == nullptr) {
      add_integer_entry(aggregate, 0);
      continue;
    }
    if (routine->special_kind == sfk_none || routine->special_kind == sfk_operator)
      check_covariant_result(owner, routine);
    a_routine *entry = entry_of_slot(routine, owner, number);
    int64_t delta = this_adjustment(class_type, base, routine);
    bool is_plain = delta == 0 || routine->is_pure_virtual || routine->is_deleted;
    add_routine_entry(aggregate, is_plain ? entry : make_thunk(entry, delta));
  }
  variable->init_kind = initk_static;
  constant_initializer_of(variable) = aggregate;
  variable->is_definition = true;
}

// --- Where tables are defined --------------------------------------------------------------------

// The first virtual function that is neither pure nor inline: its file defines the table.
static a_routine *vtbl_decider_function_for_class(a_type *class_type)
{
  a_scope *scope = class_supplement_of(class_type)->class_scope;
  for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
    bool counts = routine->is_virtual && !routine->is_pure_virtual && !routine->is_inline &&
                  routine->generated_from == nullptr;
    if (counts) return routine;
  }
  return nullptr;
}

// sc_extern: elsewhere; sc_static: here and in each other file that needs it; sc_unspecified: here
// for all.
static a_storage_class storage_of_tables(a_type *class_type)
{
  if (class_supplement_of(class_type)->class_scope == nullptr) return sc_extern;
  a_name_linkage_kind linkage = (a_name_linkage_kind)class_type->source_corresp.name_linkage;
  if (linkage == nlk_internal || linkage == nlk_none) return sc_static;
  a_routine *decider = vtbl_decider_function_for_class(class_type);
  if (decider == nullptr) return sc_static;
  return decider->is_defined ? sc_unspecified : sc_extern;
}

static bool has_table_of_its_own(const a_base_class *base)
{
  return as_class(skip_typerefs(base->type)).has_virtual_functions && !base->is_primary;
}

static void define_vtbls_of_class(a_type *class_type)
{
  a_storage_class storage = storage_of_tables(class_type);
  if (storage == sc_extern) return;
  table_variable(class_type, nullptr)->storage_class = storage;
  define_table(class_type, nullptr);
  for (a_base_class *base = class_supplement_of(class_type)->base_classes; base;
       base = base->next) {
    if (!has_table_of_its_own(base)) continue;
    table_variable(class_type, base)->storage_class = storage;
    define_table(class_type, base);
  }
}

void lower_vtbls_of_scope(a_scope *scope)
{
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    if (!kind_has_class_part(type->kind)) continue;
    a_scope *class_scope = class_supplement_of(type)->class_scope;
    if (class_scope == nullptr) continue;
    if (as_class(type).has_virtual_functions && as_class(type).layout_done)
      define_vtbls_of_class(type);
    lower_vtbls_of_scope(class_scope);
  }
  for (a_namespace *name_space = scope->namespaces; name_space; name_space = name_space->next)
    if (!name_space->is_alias && name_space->variant.scope != nullptr)
      lower_vtbls_of_scope(name_space->variant.scope);
}

// --- Pointers in objects -------------------------------------------------------------------------

static a_type *vptr_type()
{
  return make_pointer_type(entry_type());
}

// *(vptr *)((char *)object + offset)
static an_expr_node *vptr_lvalue(an_expr_node *object, uint64_t offset)
{
  a_type *bytes = make_pointer_type(integer_type(ik_char));
  if (offset != 0)
    object = make_binary_node(eok_pointer_add, bytes, add_cast(object, bytes),
                              node_for_integer_constant((long long)offset, ik_int));
  return add_indirection_to_node(add_cast(object, make_pointer_type(vptr_type())));
}

static void set_one_pointer(a_variable *table, a_variable *this_variable, uint64_t offset,
                            an_insert_location *location)
{
  table->source_corresp.needed = true;
  set_variable_address_taken(table);
  an_expr_node *start = add_cast(var_addr_expr(table), vptr_type());
  an_expr_node *value = make_binary_node(eok_pointer_add, vptr_type(), start,
                                         node_for_integer_constant(entries_in_front, ik_int));
  an_expr_node *place = vptr_lvalue(var_rvalue_expr(this_variable), offset);
  insert_assignment_statement(place, eok_assign, value, location);
}

void set_virtual_function_pointers(a_type *class_type, a_variable *this_variable,
                                   an_insert_location *location)
{
  class_type = skip_typerefs(class_type);
  if (!as_class(class_type).has_virtual_functions) return;
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  set_one_pointer(table_variable(class_type, nullptr), this_variable, supplement->vptr_offset,
                  location);
  for (a_base_class *base = supplement->base_classes; base != nullptr; base = base->next)
    if (has_table_of_its_own(base))
      set_one_pointer(table_variable(class_type, base), this_variable, base->offset, location);
}

// --- Calls ---------------------------------------------------------------------------------------

void lower_virtual_function_call(an_expr_node *call, a_routine *routine)
{
  an_expr_node *object = first_operand_of(call)->next;
  if (object == nullptr || routine->virtual_function_number == 0xffff) return;
  an_expr_node *arguments = object->next;
  object->next = nullptr;
  a_type *class_type = skip_typerefs(type_pointed_to(object->type));
  an_expr_node *again = make_reusable_copy(object, false);
  bool is_saved = is_operation(object, eok_comma);
  uint64_t offset = class_supplement_of(class_type)->vptr_offset;
  an_expr_node *table = rvalue_expr_for_lvalue(vptr_lvalue(again, offset));
  table->next = node_for_integer_constant(routine->virtual_function_number, ik_int);
  an_expr_node *entry =
      rvalue_expr_for_lvalue(make_lvalue_operator_node(eok_subscript, entry_type(), table));
  an_expr_node *function = add_cast(entry, make_pointer_type(routine->type));
  if (!is_saved) {
    function->next = object;
    object->next = arguments;
    first_operand_of(call) = function;
    return;
  }
  // The object is evaluated in front: the function and the argument both use its value.
  an_expr_node *value = copy_expr_tree(second_operand_of(object), true);
  function->next = value;
  value->next = arguments;
  first_operand_of(call) = function;
  an_expr_node *first = first_operand_of(object);
  first->next = nullptr;
  overwrite_node(call, make_comma_node(first, copy_node(call)));
}
