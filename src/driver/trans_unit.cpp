// trans_unit.cpp - translation units: making one, switching between them.
// Owns:    the list and the stack of units, each unit's copy of the registered variables.
// Uses:    the scope stack (its scopes belong to the unit in force), il_header.
// Entry:   process_translation_unit, switch_translation_unit, push_translation_unit_stack.
#include "driver/trans_unit.h"
#include <cstring>
#include "driver/fe_init.h"
#include "driver/fe_wrapup.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/later_modules.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/preproc.h"
#include "mem/check.h"
#include "mem/mem_manage.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

a_translation_unit *curr_translation_unit;
a_translation_unit *translation_units;
bool is_primary_translation_unit;
const char *trans_unit_file_name;
bool translation_unit_needed_only_for_exported_templates;
a_translation_unit_stack_entry *curr_translation_unit_stack_entry;
int secondary_trans_units_on_stack;
int file_scope_number;

static a_translation_unit *last_translation_unit;
static a_translation_unit_stack_entry *avail_stack_entries;

// ---- Saving and restoring a unit ----

static void *&registered_field(a_translation_unit *unit, size_t field_offset)
{
  return *reinterpret_cast<void **>(reinterpret_cast<char *>(unit) + field_offset);
}

// The scopes of one unit are the entries from the top down to the unit's file scope.
static void set_depths_of_scopes(bool active)
{
  for (int depth = depth_scope_stack; depth >= 0; depth--) {
    a_scope *scope = scope_stack[depth].il_scope;
    if (scope != nullptr) scope->stack_depth = active ? depth : -1;
    if (scope_stack[depth].kind == sck_file) break;
  }
}

static void save_translation_unit(a_translation_unit *unit)
{
  for (a_registered_variable *v = registered_variables; v != nullptr; v = v->next) {
    char *copy = unit->saved_variables + v->save_offset;
    memcpy(copy, v->address, v->size);
    if (v->field_offset != 0) registered_field(unit, v->field_offset) = copy;
  }
  unit->saved_primary_scope = il_header.primary_scope;
  unit->saved_scope_orphaned_lists = il_header.scope_orphaned_lists;
  unit->saved_macros = il_header.macros;
  unit->saved_types_used_in_eh = il_header.types_used_in_eh;
  if (depth_scope_stack >= 0) {
    set_active_using_list_scope_depths(depth_scope_stack, 0, 0);
    set_depths_of_scopes(false);
  }
}

static void point_fields_at_live_variables(a_translation_unit *unit)
{
  for (a_registered_variable *v = registered_variables; v != nullptr; v = v->next) {
    if (v->field_offset != 0) registered_field(unit, v->field_offset) = v->address;
  }
}

static uint32_t using_list_sequence()
{
  bool asked_for = do_dependent_name_processing && depth_innermost_instantiation_scope >= 0 &&
                   scope_stack[depth_innermost_instantiation_scope].in_template_definition;
  return asked_for ? f_get_effective_decl_seq() : 0;
}

static void restore_translation_unit(a_translation_unit *unit)
{
  for (a_registered_variable *v = registered_variables; v != nullptr; v = v->next) {
    memcpy(v->address, unit->saved_variables + v->save_offset, v->size);
  }
  point_fields_at_live_variables(unit);
  il_header.primary_scope = unit->saved_primary_scope;
  il_header.scope_orphaned_lists = unit->saved_scope_orphaned_lists;
  il_header.macros = unit->saved_macros;
  il_header.types_used_in_eh = unit->saved_types_used_in_eh;
  if (depth_scope_stack < 0) return;
  set_depths_of_scopes(true);
  set_active_using_list_scope_depths(depth_scope_stack, 1, using_list_sequence());
}

void switch_translation_unit(a_translation_unit *unit)
{
  if (unit == curr_translation_unit) return;
  if (curr_translation_unit != nullptr) save_translation_unit(curr_translation_unit);
  curr_translation_unit = unit;
  restore_translation_unit(unit);
}

// ---- The stack ----

static void link_stack_entry(a_translation_unit *unit)
{
  a_translation_unit_stack_entry *entry = avail_stack_entries;
  if (entry != nullptr) {
    avail_stack_entries = entry->next;
  } else {
    entry = static_cast<a_translation_unit_stack_entry *>(alloc_in_region(0, sizeof *entry));
  }
  *entry = {curr_translation_unit_stack_entry, unit};
  curr_translation_unit_stack_entry = entry;
  if (unit != translation_units) secondary_trans_units_on_stack++;
}

void push_translation_unit_stack(a_translation_unit *unit)
{
  switch_translation_unit(unit);
  link_stack_entry(unit);
}

void pop_translation_unit_stack()
{
  a_translation_unit_stack_entry *entry = curr_translation_unit_stack_entry;
  check(entry != nullptr);
  curr_translation_unit_stack_entry = entry->next;
  if (entry->translation_unit != translation_units) secondary_trans_units_on_stack--;
  entry->next = avail_stack_entries;
  avail_stack_entries = entry;
  if (curr_translation_unit_stack_entry != nullptr) {
    switch_translation_unit(curr_translation_unit_stack_entry->translation_unit);
  }
}

// ---- Compiling a unit ----

static void clear_current_positions()
{
  pos_curr_token = null_source_position;
  error_position = null_source_position;
}

static void *alloc_cleared(size_t size)
{
  void *place = alloc_in_region(0, size);
  memset(place, 0, size);
  return place;
}

static a_translation_unit *make_translation_unit(an_exported_template_file *template_file)
{
  auto *unit = static_cast<a_translation_unit *>(alloc_cleared(sizeof(a_translation_unit)));
  unit->saved_variables = static_cast<char *>(alloc_cleared(size_of_saved_variables));
  unit->scope_pointers =
      static_cast<a_scope_pointers_block *>(alloc_cleared(sizeof(a_scope_pointers_block)));
  clear_scope_pointers_block(unit->scope_pointers);
  unit->is_unit = true;
  point_fields_at_live_variables(unit);
  unit->not_only_for_exported_templates = !translation_unit_needed_only_for_exported_templates;
  unit->exported_template_file = template_file;
  return unit;
}

static void enter_translation_unit(a_translation_unit *unit)
{
  if (translation_units == nullptr) {
    translation_units = unit;
  } else {
    last_translation_unit->next = unit;
  }
  last_translation_unit = unit;
  curr_translation_unit = unit;
  link_stack_entry(unit);
}

// The file was compiled with a search path and macros of its own.
static void take_over_settings(an_exported_template_file *file)
{
  defs_from_cmd_line = file->defs_from_cmd_line;
  incl_search_path = file->incl_search_path;
  sys_incl_search_path = file->sys_incl_search_path;
  end_incl_search_path = file->end_incl_search_path;
  dir_name_of_primary_source_file = f_directory_of(file->file_name, true);
  add_to_front_of_include_search_path(dir_name_of_primary_source_file, &incl_search_path,
                                      &end_incl_search_path);
}

static void run_front_end_proper()
{
  if (do_preprocessing_only) {
    fe_init_part_2();
    cpp_driver();
    return;
  }
  if (precompiled_header_processing_required && !cannot_do_pch_processing &&
      precompiled_header_processing != nullptr) {
    fe_init_for_pch_prefix_scan();
    precompiled_header_processing();
  }
  fe_init_part_2();
  translation_unit();
}

void process_translation_unit(const char *file_name, bool is_primary,
                              an_exported_template_file *template_file)
{
  if (curr_translation_unit != nullptr) save_translation_unit(curr_translation_unit);
  clear_current_positions();
  is_primary_translation_unit = is_primary;
  trans_unit_file_name = file_name;
  translation_unit_needed_only_for_exported_templates = template_file != nullptr;
  compute_il_prefix_size();
  if (is_primary) fe_init_part_1();
  a_translation_unit *unit = make_translation_unit(template_file);
  enter_translation_unit(unit);
  if (template_file != nullptr) {
    template_file->translation_unit = unit;
    take_over_settings(template_file);
  }
  fe_translation_unit_init();
  unit->region_number = file_scope_region_number;
  if (template_file != nullptr) set_module_id(template_file->module_id);
  run_front_end_proper();
  translation_unit_wrapup();
  pop_translation_unit_stack();
}

// ---- Initialisation ----

void trans_unit_early_init()
{
  curr_translation_unit = nullptr;
  translation_units = nullptr;
}

void trans_unit_one_time_init()
{
  register_trans_unit_variable(is_primary_translation_unit);
  register_trans_unit_variable(trans_unit_file_name);
  register_trans_unit_variable(translation_unit_needed_only_for_exported_templates);
  register_trans_unit_variable(file_scope_number);
}

void trans_unit_init()
{
  curr_translation_unit = nullptr;
  translation_units = nullptr;
  last_translation_unit = nullptr;
  translation_unit_needed_only_for_exported_templates = false;
  curr_translation_unit_stack_entry = nullptr;
  secondary_trans_units_on_stack = 0;
}
