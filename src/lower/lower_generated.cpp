// lower_generated.cpp - routines that the source doesn't write: bodies made while another routine is
// lowered, and declarations of the run-time library.
// Rule:    a generated body has a region of its own and is finished before the routine that asked
//          for it goes on.
// Entry:   begin_generated_routine, finish_generated_routine, runtime_routine.
#include <cstring>

#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_class.h"
#include "mem/mem_manage.h"

struct a_runtime_routine {
  a_runtime_routine *next;
  const char *name;
  a_routine *routine;
};
static a_runtime_routine *runtime_routines; // of the current translation unit

// --- Entries -------------------------------------------------------------------------------------

a_routine *make_rout_entry(const char *name, a_storage_class storage_class, a_type *type)
{
  int saved;
  switch_to_file_scope_region(&saved);
  a_routine *routine = alloc_routine();
  routine->type = type;
  routine->storage_class = storage_class;
  routine->is_compiler_generated = true;
  routine->source_corresp.name_linkage = storage_class == sc_static ? nlk_internal : nlk_c;
  assign_internal_name(&routine->source_corresp, name);
  add_to_routines_list(routine, 0);
  switch_back_to_original_region(saved);
  return routine;
}

static a_routine *declared_routine(const char *name)
{
  for (a_routine *routine = il_header.primary_scope->routines; routine; routine = routine->next) {
    const a_source_correspondence &corresp = routine->source_corresp;
    const char *own = corresp.internal_name != nullptr ? corresp.internal_name : corresp.name;
    bool is_external = corresp.name_is_mangled || corresp.name_linkage == nlk_c;
    if (own != nullptr && is_external && strcmp(own, name) == 0) return routine;
  }
  return nullptr;
}

a_routine *runtime_routine(const char *name, a_type *return_type, a_type *p1, a_type *p2,
                           a_type *p3)
{
  for (a_runtime_routine *entry = runtime_routines; entry != nullptr; entry = entry->next)
    if (strcmp(entry->name, name) == 0) return entry->routine;
  a_routine *routine = declared_routine(name);
  if (routine == nullptr) {
    int saved;
    switch_to_file_scope_region(&saved);
    a_type *type = make_routine_type(return_type, p1, p2, p3);
    switch_back_to_original_region(saved);
    routine = make_rout_entry(name, sc_extern, type);
    routine->is_runtime_routine = true;
  }
  a_runtime_routine *entry = (a_runtime_routine *)alloc_in_region(0, sizeof *entry);
  *entry = {runtime_routines, name, routine};
  runtime_routines = entry;
  return routine;
}

void clear_runtime_routines()
{
  runtime_routines = nullptr;
}

an_expr_node *make_call_node(a_routine *routine, an_expr_node *arguments)
{
  an_expr_node *function = function_addr_expr(routine);
  function->next = arguments;
  mark_as_needed(routine, iek_routine);
  return make_operator_node(eok_call, return_type_of(routine->type), function);
}

// --- Bodies --------------------------------------------------------------------------------------

void begin_generated_routine(a_routine *routine, a_generated_routine_state *state)
{
  state->routine = routine;
  state->outer_context = curr_context;
  state->outer_lifetime = curr_object_lifetime;
  state->outer_function_scope = innermost_function_scope;
  state->outer_temp_inits = temp_init_statements;
  state->outer_region = curr_il_region_number;
  state->outer_lowering_file_scope = lowering_file_scope;
  temp_init_statements = nullptr;
  curr_object_lifetime = nullptr;
  lowering_file_scope = false;
  a_scope *scope = new_il_region(sck_function, -1, routine);
  routine->region_number = curr_il_region_number;
  state->scope = scope;
  scope->owner.routine = routine;
  innermost_function_scope = scope;
  a_statement *block = alloc_statement(stmk_block);
  block->start_position = block->end_position = code_pos_for_lowering;
  block_supplement_of(block)->scope = scope;
  block_supplement_of(block)->is_compiler_generated = true;
  scope->assoc_block = block;
  push_context(&state->context, scope, nullptr);
}

a_variable *add_generated_parameter(a_generated_routine_state *state, a_param_type *param)
{
  a_variable *variable = make_variable(param->type, sc_auto, true);
  variable->is_parameter = true;
  variable->param_type = param;
  variable->is_by_reference = class_is_passed_by_address(param->type);
  variable->source_corresp.is_local = true;
  set_parent_scope(&variable->source_corresp, iek_variable, state->scope);
  a_variable **link = &state->scope->parameters;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = variable;
  return variable;
}

static void add_missing_return(a_statement *block)
{
  a_statement **link = &first_statement_of(block);
  a_statement *last = nullptr;
  for (; *link != nullptr; link = &(*link)->next)
    last = *link;
  if (last != nullptr && last->kind == stmk_return) return;
  a_statement *statement = alloc_statement(stmk_return);
  statement->start_position = statement->end_position = code_pos_for_lowering;
  statement->is_compiler_generated = true;
  *link = statement;
}

void finish_generated_routine(a_generated_routine_state *state)
{
  a_routine *routine = state->routine;
  int region = routine->region_number;
  add_missing_return(state->scope->assoc_block);
  pop_context();
  add_scope_orphaned_il_lists(state->scope);
  walk_subtrees_of_local_entities(state->scope);
  set_routine_defined(routine, true);
  if (routine->definition_needed) remark_routine_definition_needed(routine);
  innermost_function_scope = state->outer_function_scope;
  curr_context = state->outer_context;
  curr_object_lifetime = state->outer_lifetime;
  temp_init_statements = state->outer_temp_inits;
  lowering_file_scope = state->outer_lowering_file_scope;
  switch_il_region(state->outer_region);
  check_for_done_with_memory_region(region);
}
