// il_walk.h - walking the IL, and the analysis of what the output needs.
// Owns:    the field table's three uses: walk, remap, dump; needed and keep marks; elimination.
// Rule:    the pointers of each kind are known from il_entities.def alone.
#pragma once
#include "il/il.h"

// --- Generic walk --------------------------------------------------------------------------------

struct an_il_walk_callbacks {
  void (*entry_callback)(void *entry, an_il_entry_kind kind); // at each entry
  void (*string_callback)(const char *text, an_il_entry_kind kind, size_t length);
  void *(*pointer_remap)(void *pointer, an_il_entry_kind kind); // result is stored in the field
  void *(*list_remap)(void *pointer, an_il_entry_kind kind);    // for a list's first entry
  bool (*entry_filter)(void *entry, an_il_entry_kind kind);     // true: leave the subtree out
  void (*end_callback)(void *entry, an_il_entry_kind kind);     // behind a subtree
};

// The file scope, then all source files and the other roots of il_header.
void walk_file_scope_il(const an_il_walk_callbacks *callbacks);
// Starts at the root scope of the region.
void walk_routine_scope_il(int region, const an_il_walk_callbacks *callbacks);
void walk_il_subtree(const an_il_walk_callbacks *callbacks, void *entry, an_il_entry_kind kind);
// Replaces each IL pointer of one entry (by pointer_remap, list heads by list_remap).
void remap_pointers_in_il_entry(void *entry, an_il_entry_kind kind,
                                void *(*pointer_remap)(void *pointer, an_il_entry_kind kind),
                                void *(*list_remap)(void *pointer, an_il_entry_kind kind));
void remap_last_ptr_of_orphaned_file_scope_entry_array(
    void *(*pointer_remap)(void *pointer, an_il_entry_kind kind));
// Each type declared in a scope of the function or below it.
void process_local_types(a_scope *scope, void (*callback)(a_type *type));
// One line for each field, on standard output: debugging.
void dump_il_entry(const void *entry, an_il_entry_kind kind);
size_t size_of_il_entry(an_il_entry_kind kind);

// --- Light traversal of expressions and statements -----------------------------------------------

struct an_expr_or_stmt_traversal_block {
  void (*expr_callback)(an_expr_node *expr, an_expr_or_stmt_traversal_block *block);
  void (*expr_end_callback)(an_expr_node *expr, an_expr_or_stmt_traversal_block *block);
  void (*stmt_callback)(a_statement *statement, an_expr_or_stmt_traversal_block *block);
  void (*type_callback)(a_type *type, an_expr_or_stmt_traversal_block *block);
  void (*constant_callback)(a_constant *constant, an_expr_or_stmt_traversal_block *block);
  void (*routine_callback)(a_routine *routine, an_expr_or_stmt_traversal_block *block);
  void (*init_callback)(a_dynamic_init *init, an_expr_or_stmt_traversal_block *block);
  bool stop;         // ends the whole traversal
  bool skip_subtree; // set by a callback, cleared by the traversal
  bool follow_lvalue_casts;
  bool follow_class_casts;
  bool follow_dynamic_inits;
  bool follow_default_args;
  bool result; // for the callbacks' use
  void *data;
};

void clear_expr_or_stmt_traversal_block(an_expr_or_stmt_traversal_block *block);
void traverse_expr(an_expr_node *expr, an_expr_or_stmt_traversal_block *block);
void traverse_expr_list(an_expr_node *list, an_expr_or_stmt_traversal_block *block);
void traverse_statement(a_statement *statement, an_expr_or_stmt_traversal_block *block);
void traverse_statement_list(a_statement *list, an_expr_or_stmt_traversal_block *block);
void traverse_constant(a_constant *constant, an_expr_or_stmt_traversal_block *block);
void traverse_dynamic_init(a_dynamic_init *init, an_expr_or_stmt_traversal_block *block);

// --- Needed and kept entities --------------------------------------------------------------------

void mark_as_needed(void *entry, an_il_entry_kind kind);
void mark_as_needed_like(void *entry, an_il_entry_kind kind, void *like, bool class_too);
// Marks again what an already needed entry reaches: it has got new parts.
void remark_as_needed(void *entry, an_il_entry_kind kind);
void set_per_instantiation_needed_flag(void *entry, an_il_entry_kind kind, unsigned number);
bool instantiation_needed_flag_is_set(const a_source_correspondence *corresp, unsigned number);
unsigned assign_instantiation_needed_bit_number();
void set_variable_instantiation_needed_bit_number(a_variable *variable);
void set_routine_definition_needed(a_routine *routine);
void remark_routine_definition_needed(a_routine *routine);
void set_routine_keep_definition_in_il(a_routine *routine);
void set_class_definition_needed(a_type *class_type);
void set_class_keep_definition_in_il(a_type *class_type);
bool class_definition_needed(const a_type *class_type);
void mark_to_keep_in_il(void *entry, an_il_entry_kind kind);
void walk_subtrees_of_local_entities(a_scope *scope);
extern bool end_of_file_scope_needed_flags_phase; // written by the driver and here

// What the file scope defines for others, and all that this reaches (recursively through
// namespaces).
void set_needed_flags_at_end_of_file_scope(a_scope *scope);
void eliminate_unneeded_il_entries(a_scope *scope);
void eliminate_bodies_of_unneeded_functions();
void eliminate_unneeded_scope_orphaned_list_entries();
void eliminate_pragmas_for_file_scope_entities(a_scope *scope);

// Installed by the driver's service layer: routines that the tool chain calls by name.
extern bool (*is_hook_function_hook)(const a_routine *routine);

void il_walk_init();
