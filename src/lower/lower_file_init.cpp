// lower_file_init.cpp - objects of static storage: the routine that runs the initializations of the
// file scope before main, guards of local statics, destructors that run at exit.
// Entry:   lower_file_scope_dynamic_inits, make_guard, register_destructor.
#include <cstdio>
#include <cstring>

#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"

// --- Destructors at exit -------------------------------------------------------------------------

static a_variable *dso_handle; // of the current translation unit

static a_variable *dso_handle_variable()
{
  if (dso_handle != nullptr) return dso_handle;
  int saved;
  switch_to_file_scope_region(&saved);
  dso_handle =
      make_lowered_variable("__dso_handle", false, make_pointer_type(void_type()), sc_extern);
  dso_handle->is_definition = false;
  dso_handle->visibility = vis_hidden;
  dso_handle->source_corresp.is_local = false;
  dso_handle->source_corresp.name_linkage = nlk_c;
  add_variable_to_scope(dso_handle, il_header.primary_scope);
  switch_back_to_original_region(saved);
  return dso_handle;
}

void clear_static_init_entities()
{
  dso_handle = nullptr;
}

// A routine that destroys all elements of the array that its parameter shows at.
static a_routine *destructor_of_array(a_dynamic_init *init, a_type *array_type)
{
  static unsigned long number; // unique in the file, and internal
  char name[32];
  snprintf(name, sizeof name, "__std__%lu", ++number);
  int saved;
  switch_to_file_scope_region(&saved);
  a_type *type = make_routine_type(void_type(), make_pointer_type(array_type));
  const char *text = copy_string_to_region(true, name);
  switch_back_to_original_region(saved);
  a_routine *routine = make_rout_entry(text, sc_static, type);
  a_generated_routine_state state;
  begin_generated_routine(routine, &state);
  an_init_pos_descr descr = {};
  descr.variable = add_generated_parameter(&state, param_types_of(type));
  descr.is_indirect = true;
  descr.type = array_type;
  an_insert_location location;
  set_block_start_insert_location(state.scope->assoc_block, &location);
  add_destructor_call(init->destructor, &descr, true, &location);
  finish_generated_routine(&state);
  return routine;
}

static an_expr_node *address_as_void_pointer(an_expr_node *object)
{
  return add_cast(add_address_of_to_node(object), make_pointer_type(void_type()));
}

void register_destructor(a_dynamic_init *init, const an_init_pos_descr *descr,
                         an_insert_location *location)
{
  a_type *type = descr->last_modifier == nullptr ? descr->type : descr->last_modifier->type;
  a_routine *destructor = is_array_type(type) ? destructor_of_array(init, type)
                                              : alternate_entry_point(init->destructor, 1);
  a_type *pointer = make_pointer_type(void_type());
  a_type *handler = make_pointer_type(make_routine_type(void_type(), pointer));
  an_expr_node *routine = add_cast(function_addr_expr(destructor), handler);
  mark_as_needed(destructor, iek_routine);
  an_expr_node *object = address_as_void_pointer(make_lvalue_of_init_entity_node(descr));
  a_variable *handle = dso_handle_variable();
  handle->source_corresp.needed = true;
  an_expr_node *handle_address = address_as_void_pointer(var_lvalue_expr(handle));
  a_routine *registration =
      runtime_routine("__cxa_atexit", integer_type(ik_int), handler, pointer, pointer);
  routine->next = object;
  object->next = handle_address;
  insert_expr_statement(make_call_node(registration, routine), location);
  remove_from_destruction_list(init);
}

// --- Guards --------------------------------------------------------------------------------------

static a_type *guard_type()
{
  an_integer_kind kind = int_kind_for_bit_size(64, false);
  return integer_type(kind == ik_none ? ik_int : kind);
}

static a_statement *make_if(an_expr_node *condition)
{
  a_statement *statement = alloc_statement(stmk_if);
  statement->start_position = statement->end_position = code_pos_for_lowering;
  statement->is_compiler_generated = true;
  statement->expr = condition;
  then_statement_of(statement) = alloc_statement(stmk_block);
  return statement;
}

// if (*(char *)&guard == 0) if (__cxa_guard_acquire(&guard)) { ... __cxa_guard_release(&guard); }
void make_guard(a_variable *, an_insert_location *location, an_insert_location *inner)
{
  a_variable *guard = make_unnamed_local_static_variable(guard_type(), true);
  set_variable_address_taken(guard);
  a_type *pointer = make_pointer_type(guard_type());
  a_type *byte_pointer = make_pointer_type(integer_type(ik_char));
  an_expr_node *first_byte =
      rvalue_expr_for_lvalue(add_indirection_to_node(add_cast(var_addr_expr(guard), byte_pointer)));
  a_type *int_type = integer_type(ik_int);
  an_expr_node *is_zero =
      make_binary_node(eok_eq, int_type, first_byte, node_for_integer_constant(0, ik_int));
  a_statement *outer_if = make_if(is_zero);
  a_routine *acquire = runtime_routine("__cxa_guard_acquire", int_type, pointer);
  an_expr_node *acquired =
      make_binary_node(eok_ne, int_type, make_call_node(acquire, var_addr_expr(guard)),
                       node_for_integer_constant(0, ik_int));
  a_statement *inner_if = make_if(acquired);
  insert_statement_full(outer_if, location, true);
  an_insert_location place;
  set_block_start_insert_location(then_statement_of(outer_if), &place);
  insert_statement_full(inner_if, &place, true);
  set_block_start_insert_location(then_statement_of(inner_if), &place);
  *inner = place;
  a_routine *release = runtime_routine("__cxa_guard_release", void_type(), pointer);
  insert_expr_statement(make_call_node(release, var_addr_expr(guard)), &place);
}

// --- The file scope ------------------------------------------------------------------------------

static void lower_one_init(a_dynamic_init *init, an_insert_location *location)
{
  a_variable *variable = init->variable;
  if (variable == nullptr || init->kind == dik_none) return;
  variable->is_dynamically_initialized = true;
  code_pos_for_lowering = variable->source_corresp.decl_position;
  lower_dynamic_init_designated_initializers(init);
  an_init_pos_descr descr;
  set_var_init_pos_descr(variable, &descr);
  a_constant *constant = nullptr;
  bool is_new = false;
  lower_dynamic_init(init, &descr, nullptr, nullptr, lif_full_expression, false, location,
                     &constant, &is_new);
  variable->init_kind = constant != nullptr ? initk_static : initk_none;
  if (constant != nullptr)
    variable->initializer.constant =
        is_file_scope_entry(constant) ? constant : copy_constant_full(constant, true);
}

void lower_file_scope_dynamic_inits()
{
  a_scope *file_scope = il_header.primary_scope;
  a_dynamic_init *list = file_scope->dynamic_inits;
  file_scope->dynamic_inits = nullptr;
  if (list == nullptr) return;
  const char *id = get_module_id();
  size_t size = strlen(id) + 16;
  char *name = (char *)alloc_in_region(file_scope_region_number, size);
  snprintf(name, size, "__sti__%s", id);
  a_routine *routine = make_rout_entry(name, sc_static, make_routine_type(void_type()));
  routine->source_corresp.needed = true;
  a_generated_routine_state state;
  begin_generated_routine(routine, &state);
  an_insert_location location;
  set_block_start_insert_location(state.scope->assoc_block, &location);
  for (a_dynamic_init *init = list, *next; init != nullptr; init = next) {
    next = init->next;
    lower_one_init(init, &location);
  }
  finish_generated_routine(&state);
  mark_as_needed(routine, iek_routine);
  set_routine_definition_needed(routine);
}
