// trans_unit.h - translation units: the record of each, the one in force, switching between them.
#pragma once
#include <cstddef>
#include "il/il_fwd.h"
#include "mem/registered_vars.h"

struct an_exported_template_file;

inline constexpr int num_trans_unit_list_heads = 12;      // file-scope list heads
inline constexpr int num_saved_il_header_list_heads = 4;  // those of them that a switch exchanges
inline constexpr int num_trans_unit_corresp_kinds = 22;

struct a_trans_unit_corresp_table {
  void *first;
  void *last;
  unsigned long count;
};

struct a_translation_unit {
  a_translation_unit *next;
  a_scope *primary_scope;
  char *saved_variables;                    // this unit's copy of every registered variable
  a_scope_pointers_block *scope_pointers;   // tails of the file scope's lists
  a_source_file *primary_source_file;
  void *list_heads[num_trans_unit_list_heads];  // the first four: il_header's heads while not in force
  void *registered_fields[3];               // may be kept up to date by a registered variable
  an_exported_template_file *exported_template_file;  // for which the unit was read, or null
  bool not_only_for_exported_templates;
  bool is_unit;
  bool lists_are_copied;
  bool is_wrapped_up;
  a_trans_unit_corresp_table corresp[num_trans_unit_corresp_kinds];
  int region_number;                        // file_scope_region_number of the unit
};

struct a_translation_unit_stack_entry {
  a_translation_unit_stack_entry *next;
  a_translation_unit *translation_unit;
};

// Written by trans_unit alone.
extern a_translation_unit *curr_translation_unit;
extern a_translation_unit *translation_units;             // always the primary one
extern bool is_primary_translation_unit;
extern const char *trans_unit_file_name;
extern bool translation_unit_needed_only_for_exported_templates;
extern a_translation_unit_stack_entry *curr_translation_unit_stack_entry;
extern int secondary_trans_units_on_stack;

// What a switch does with scopes and with the IL header: installed by the scope stack.
struct a_trans_unit_hooks {
  // Turns the using-lists and depths of the scopes on the stack off (a unit is left) or on.
  void (*deactivate_scopes)();
  void (*reactivate_scopes)();
  a_scope_pointers_block *(*alloc_scope_pointers)();
  // Stores the IL header's primary scope and list heads in the unit, or takes them back.
  void (*save_il_header)(a_translation_unit *unit);
  void (*restore_il_header)(a_translation_unit *unit);
};
extern a_trans_unit_hooks trans_unit_hooks;

// Compiles one unit from start to translation_unit_wrapup.  A secondary unit is read for an exported
// template file.
void process_translation_unit(const char *file_name, bool is_primary,
                              an_exported_template_file *template_file);
void switch_translation_unit(a_translation_unit *unit);
void push_translation_unit_stack(a_translation_unit *unit);
void pop_translation_unit_stack();

void trans_unit_early_init();
void trans_unit_one_time_init();
void trans_unit_init();
