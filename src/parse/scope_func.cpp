// scope_func.cpp - the fate of a function's body when its scope ends: kept, dropped, lowered, put off.
// Owns:    the list of regions that wait for the module id.
// Entry:   decide_fate_of_function_body, finish_function, should_delay_lowering_on_function.
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "mem/mem_manage.h"
#include "parse/scope_stk.h"
#include "parse/scope_stk_parts.h"

void (*lower_region_hook)(int region);

struct a_waiting_region {
  a_waiting_region *next;
  int region;
};
static a_waiting_region *functions_waiting_for_module_id;

//---------------------------------------------------------------------------------------------
// Patterns

// A body that only serves as a pattern is dropped instead of lowered.
static bool is_only_a_pattern(a_routine *routine)
{
  if (C_dialect != 2) return false;
  if (routine->is_prototype_instance) return !prototype_instantiations_in_il;
  return routine->is_template_function && is_template_dependent_type(routine->type) &&
         !prototype_instantiations_in_il;
}

bool keep_function_body_for_possible_inlining(a_routine *routine)
{
  return routine->is_inline && !routine->no_inline;
}

static bool is_inside_pattern(const a_scope_stack_entry *entry)
{
  for (int depth = entry->previous_lookup_depth; depth >= 0;
       depth = scope_stack[depth].previous_lookup_depth) {
    const a_scope_stack_entry *outer = &scope_stack[depth];
    if (outer->kind == sck_function && outer->assoc_routine != nullptr &&
        is_only_a_pattern(outer->assoc_routine)) {
      return true;
    }
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Delay

static bool needs_module_id(a_routine *routine)
{
  if (routine->source_corresp.is_class_member) {
    a_namespace *name_space = parent_namespace_of(&routine->source_corresp);
    if (name_space != nullptr && name_space->source_corresp.name == nullptr) return true;
  }
  return is_or_contains_unnamed_namespace_type(routine->type);
}

static void mark_enclosing_functions_as_delayed()
{
  for (int depth = depth_scope_stack; depth >= 0; --depth) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    if (entry->kind == sck_function && entry->assoc_routine != nullptr) {
      entry->assoc_routine->lowering_delayed = true;
    }
  }
}

static bool class_of_routine_is_incomplete(a_routine *routine)
{
  if (!routine->source_corresp.is_class_member) return false;
  a_type *class_type = parent_class_of(&routine->source_corresp);
  return class_type != nullptr && is_incomplete_type(class_type);
}

bool should_delay_lowering_on_function(a_routine *routine, bool flag)
{
  if (!is_primary_translation_unit) return true;
  if (C_dialect != 2) return false;
  bool delay = (flag && routine->lowering_delayed) || class_of_routine_is_incomplete(routine) ||
               routine->lowering_delayed;
  if (delay) {
    function_body_processing_delayed_on_some_func_in_primary_il = true;
    return true;
  }
  if (in_template_context() || get_module_id() != nullptr || !needs_module_id(routine))
    return false;
  a_waiting_region *waiting = (a_waiting_region *)alloc_in_region(0, sizeof(a_waiting_region));
  waiting->region = routine->region_number;
  waiting->next = functions_waiting_for_module_id;
  functions_waiting_for_module_id = waiting;
  mark_enclosing_functions_as_delayed();
  function_body_processing_delayed_on_some_func_in_primary_il = true;
  return true;
}

void lower_functions_waiting_for_module_id()
{
  a_waiting_region *waiting = functions_waiting_for_module_id;
  functions_waiting_for_module_id = nullptr;
  for (; waiting != nullptr; waiting = waiting->next) {
    finish_function_processing_for_memory_region(waiting->region, false);
  }
}

void lower_waiting_functions_if_possible()
{
  if (functions_waiting_for_module_id != nullptr && get_module_id() != nullptr) {
    lower_functions_waiting_for_module_id();
  }
}

//---------------------------------------------------------------------------------------------
// Finish

static bool is_always_needed(a_routine *routine)
{
  return routine->source_corresp.needed || routine->is_constructor_attr ||
         routine->is_destructor_attr;
}

static bool external_routine_is_needed(a_routine *routine)
{
  if (routine->is_trivial_default_constructor) return false;
  if (routine->is_inline && routine->inline_linkage_state != 1) {
    return !routine->inline_definition_only && (gcc_mode || c99_mode);
  }
  if (is_primary_translation_unit && routine->inline_linkage_state == 1) {
    return instantiation_mode == 1;
  }
  return true;
}

static bool routine_is_needed(a_routine *routine)
{
  switch (routine->storage_class) {
  case sc_static: return routine->weak_state == ws_weak || routine->is_used;
  case sc_unspecified: return external_routine_is_needed(routine);
  case sc_extern:
  case sc_auto:
  case sc_typedef:
  case sc_register: return false;
  }
  unexpected_kind("storage class");
}

void finish_function(a_routine *routine, a_scope *scope, bool eliminate, bool file_scope_only)
{
  int region = routine->region_number;
  bool is_pattern = in_template_context();
  if (is_primary_translation_unit && !eliminate && !is_pattern && total_errors == 0 &&
      lower_region_hook != nullptr) {
    lower_region_hook(region);
  }
  if (eliminate)
    eliminate_pragmas_for_file_scope_entities(scope);
  else
    add_scope_orphaned_il_lists(scope);
  walk_subtrees_of_local_entities(scope);
  if (routine->definition_needed) remark_routine_definition_needed(routine);
  if (!file_scope_only && is_pattern) return;
  if (is_always_needed(routine) || routine_is_needed(routine)) mark_as_needed(routine, iek_routine);
}

void finish_function_processing_for_memory_region(int region, bool only_if_inline)
{
  a_scope *scope = region < size_of_mem_region_table ? region_scope_table[region] : nullptr;
  if (scope == nullptr || scope->kind != sck_function || scope->is_reactivated_function) return;
  a_routine *routine = routine_of_scope(scope);
  if (only_if_inline && !routine->is_inline) return;
  if (entry_flags_of(scope).is_secondary_entry) return;
  int saved_region = curr_il_region_number;
  switch_il_region(region);
  finish_function(routine, scope, false, true);
  check_for_done_with_memory_region(region);
  switch_il_region(saved_region);
}

static void drop_body(a_routine *routine, a_scope *scope)
{
  scope->assoc_block = nullptr;
  routine->region_number = 0;
}

void decide_fate_of_function_body(a_scope_stack_entry *entry)
{
  a_routine *routine = entry->assoc_routine;
  a_scope *scope = entry->il_scope;
  bool eliminate = entry->eliminate_body || is_only_a_pattern(routine) || is_inside_pattern(entry);
  bool delayed = !eliminate && should_delay_lowering_on_function(routine, false);
  int region = entry->region_number;
  if (!delayed) finish_function(routine, scope, eliminate, false);
  empty_func_shareable_constants_table(entry->shareable_constants_table);
  free_function_shareable_constants_table(entry->shareable_constants_table);
  entry->shareable_constants_table = nullptr;
  set_routine_defined(routine, true);
  if (eliminate) {
    drop_body(routine, scope);
    return;
  }
  if (!delayed) check_for_done_with_memory_region(region);
}
