// trans_unit.h - translation units: the record of each, the one in force, switching between them.
#pragma once
#include <cstddef>
#include "il/il_fwd.h"
#include "mem/registered_vars.h"

struct a_directory_name_entry;
struct a_def_from_cmd_line;

// A file that holds definitions of exported templates; made by the template module.
struct an_exported_template_file {
  an_exported_template_file *next;
  const char *file_name;
  a_translation_unit *translation_unit; // the unit that was made for it
  const char *module_id;
  a_directory_name_entry *incl_search_path;
  a_directory_name_entry *end_incl_search_path;
  a_directory_name_entry *sys_incl_search_path;
  a_def_from_cmd_line *defs_from_cmd_line;
};

inline constexpr int num_trans_unit_corresp_kinds = 22;

struct a_trans_unit_corresp_table {
  void *first;
  void *last;
  unsigned long count;
};

struct a_translation_unit {
  a_translation_unit *next;
  a_scope *primary_scope;
  char *saved_variables;                  // this unit's copy of every registered variable
  a_scope_pointers_block *scope_pointers; // tails of the file scope's lists
  a_source_file *primary_source_file;
  // il_header's fields while the unit isn't in force.
  a_scope *saved_primary_scope;
  a_scope_orphaned_list_header *saved_scope_orphaned_lists;
  a_macro *saved_macros;
  a_type *saved_types_used_in_eh;
  void *registered_fields[3]; // may be kept up to date by a registered variable
  an_exported_template_file *exported_template_file; // for which the unit was read, or null
  bool not_only_for_exported_templates;
  bool is_unit;
  bool lists_are_copied;
  bool is_wrapped_up;
  a_trans_unit_corresp_table corresp[num_trans_unit_corresp_kinds];
  int region_number; // file_scope_region_number of the unit
};

struct a_translation_unit_stack_entry {
  a_translation_unit_stack_entry *next;
  a_translation_unit *translation_unit;
};

// Written by trans_unit alone.
extern a_translation_unit *curr_translation_unit;
extern a_translation_unit *translation_units; // always the primary one
extern bool is_primary_translation_unit;
extern const char *trans_unit_file_name;
extern bool translation_unit_needed_only_for_exported_templates;
extern a_translation_unit_stack_entry *curr_translation_unit_stack_entry;
extern int secondary_trans_units_on_stack;
extern int file_scope_number; // scope number of the unit's file scope

// Compiles one unit from start to translation_unit_wrapup.  A secondary unit is read for an
// exported template file.
void process_translation_unit(const char *file_name, bool is_primary,
                              an_exported_template_file *template_file);
// Makes another unit the one in force; nothing happens if it is.
void switch_translation_unit(a_translation_unit *unit);
void push_translation_unit_stack(a_translation_unit *unit);
void pop_translation_unit_stack();

void trans_unit_early_init();
void trans_unit_one_time_init();
void trans_unit_init();
