// scope_stk.h - the scope stack: where the parser stands, and all that a change of scope replaces.
// Owns:    scope_stack and the depths of interest; writer: scope_stk*.cpp.
// Rule:    the array moves when it grows; keep indices, not pointers, across a push.
// Entry:   push_scope, pop_scope, push_file_scope, ensure_il_scope_exists.
#pragma once
#include <cstdint>

#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "mem/check.h"
#include "parse/symbol_tbl.h"

struct a_shareable_constants_table;
struct a_template_decl_info;
struct a_pack_expansion_stack_entry;
struct a_deferred_access_check;
struct an_unexpanded_pack_reference;

struct an_active_using_directive {
  an_active_using_directive *next;
  an_active_using_directive *next_applying;
  a_using_decl *using_decl;
  a_namespace_symbol_supplement *nominated;
  int common_ancestor_depth;
  uint32_t decl_seq;
};

// A name whose meaning differs under the other rule for the scope of a for-init declaration.
struct a_hidden_symbol {
  a_hidden_symbol *next;
  a_symbol *symbol;
  bool saved_mark;
};

struct a_scope_stack_entry {
  int number;
  a_scope_kind kind;
  unsigned current_access : 2;
  bool use_slow_lookup : 1;
  bool in_local_class : 1;
  bool force_stack_lookup : 1;
  bool in_template_definition : 1;
  bool in_template_prototype : 1;
  bool for_init_scope : 1;
  bool incomplete_class_reactivated : 1;
  bool keep_deferred_access_errors : 1;
  unsigned name_linkage : 2;        // a_name_linkage_kind: nlk_cplusplus or nlk_c
  bool name_linkage_is_explicit : 1;
  bool suppress_wrapup : 1;
  bool has_implicit_template_typename : 1;
  bool routine_may_have_multiple_copies : 1;
  unsigned saved_fp_contract_state : 2;
  unsigned saved_fenv_access_state : 2;
  unsigned saved_cx_limited_range_state : 2;
  bool skip_in_lookup : 1;
  bool suppress_references : 1;
  bool eliminate_body : 1;          // drop the function's body at the pop instead of lowering it
  bool lifetime_pushed : 1;         // the pop undoes push_object_lifetime
  bool inherit_lifetime : 1;        // blocks inside take this entry's lifetime
  bool region_is_own : 1;
  bool is_function_body_block : 1;  // the outermost block of a function
  bool is_switch_body : 1;
  a_scope_pointers_block *external_block;  // null: own_block
  a_scope_pointers_block own_block;
  a_scope *il_scope;                       // may be null, see ensure_il_scope_exists
  int region_number;
  int saved_region_number;
  a_type *assoc_type;
  a_routine *assoc_routine;
  a_namespace *assoc_namespace;
  a_shareable_constants_table *shareable_constants_table;
  a_variable *params_tail;
  a_variable *variables_tail;     // local_variables of the IL scope
  a_label *labels_tail;
  a_scope *subscopes_head;
  a_scope *subscopes_tail;
  int saved_decl_scope_level;
  int saved_depth_template_declaration_scope;
  int saved_depth_innermost_instantiation_scope;
  a_symbol *template_symbol;
  a_symbol *template_instance_symbol;
  void *template_info;
  a_source_position push_position;
  int enclosing_function_depth;
  a_template_decl_info *template_decl_info;
  a_pending_pragma *pending_pragmas;
  a_pending_pragma *pending_pragma_list;
  int saved_access_depth;
  a_deferred_access_check *deferred_access_head;
  a_deferred_access_check *deferred_access_tail;
  int saved_deferred_access_scope;
  an_expr_stack_entry *saved_expr_stack;
  an_object_lifetime *object_lifetime;
  an_object_lifetime *saved_object_lifetime;
  an_object_lifetime *free_lifetimes;
  int namespace_depth;
  an_active_using_directive *active_using_directives;
  an_active_using_directive *applying_using_directives;
  int previous_lookup_depth;
  int saved_initial_lookup_depth;
  int depth_before_reactivation;           // of the stack, before a class or namespace was entered again
  a_hidden_symbol *hidden_symbols;
  a_template_arg *template_args;
  void *template_arg_info;
  an_unexpanded_pack_reference *unexpanded_packs;
  a_pack_expansion_stack_entry *saved_pack_expansion_stack;
  a_symbol **lambda_lists;
  a_symbol **lambda_hash;
  a_lambda *assoc_lambda;
  int classes_being_defined;      // function entries and entry 0
  int depth_of_class_holder;      // classes: the entry that counts them
  void *deferred_classes;
};

extern a_scope_stack_entry *scope_stack;
extern int size_scope_stack;
extern int depth_scope_stack;                  // index of the top entry, -1 when empty
extern int decl_scope_level;                   // depth of the scope that receives declarations
extern int depth_innermost_function_scope;     // -1 when none
extern a_scope *innermost_function_scope;
extern int depth_innermost_namespace_scope;
extern int depth_innermost_instantiation_scope;
extern int depth_template_declaration_scope;
extern int depth_of_initial_lookup_scope;
extern int depth_of_innermost_scope_that_affects_access_control;
extern int curr_deferred_access_scope;
extern int num_classes_on_scope_stack;
extern bool inside_local_class;
extern a_pack_expansion_stack_entry *pack_expansion_stack;
// Used by the STDC pragmas and saved here: an_stdc_pragma_state values.
extern unsigned curr_fp_contract_state;
extern unsigned curr_fenv_access_state;
extern unsigned curr_cx_limited_range_state;
// Set when lowering of some function of the primary IL waits.
extern bool function_body_processing_delayed_on_some_func_in_primary_il;

inline a_scope_stack_entry *top_scope()
{
  check(depth_scope_stack >= 0);
  return &scope_stack[depth_scope_stack];
}
inline a_scope_stack_entry *decl_scope()
{
  return &scope_stack[decl_scope_level];
}
inline a_scope_pointers_block *block_of_scope_entry(a_scope_stack_entry *entry)
{
  return entry->external_block != nullptr ? entry->external_block : &entry->own_block;
}
inline bool in_function_scope()
{
  return depth_innermost_function_scope >= 0;
}
inline bool at_file_scope()
{
  return scope_stack[decl_scope_level].kind == sck_file;
}
inline bool in_template_context()
{
  return depth_scope_stack >= 0
         && (top_scope()->in_template_definition || top_scope()->in_template_prototype);
}
// The routine whose body is being parsed, or null.
a_routine *curr_routine();

// Flags of a push.
enum a_push_flag : unsigned {
  psf_none                = 0,
  psf_wrapup_scope        = 0x1,   // the file scope entered again after its end
  psf_template_definition = 0x2,
  psf_template_prototype  = 0x4,
  psf_suppress_wrapup     = 0x8,
  psf_no_il_scope         = 0x200,
  psf_keep_access_depth   = 0x1000
};

void push_file_scope(unsigned flags);
// number -1 takes the next number; type: the class or enum; routine: of a function scope.
void push_scope(a_scope_kind kind, int number, a_type *type, a_routine *routine);
void push_block_scope_with_lifetime(an_object_lifetime *lifetime);
void push_namespace_scope(a_scope_kind kind, a_namespace *name_space);
void push_template_declaration_scope(a_template_decl_info *decl_info, unsigned flags);
void push_for_init_scope();
void f_push_namespace_extension_scope(a_namespace *name_space, bool flag);
void f_push_namespace_reactivation_scope(a_namespace *name_space, bool flag);
void push_class_reactivation_scope(a_type *class_type, bool flag);
void push_class_and_template_reactivation_scope(a_type *class_type, bool flag, bool flag2);
// Pushed again for a function whose scope ended: symbols of the IL scope are not re-entered.
void push_function_reactivation_scope(a_routine *routine);

void pop_scope();
void pop_namespace_scope();
void pop_namespace_extension_scope();
void pop_namespace_reactivation_scope();
void pop_class_reactivation_scope();
// Pops all scopes above that index.
void pop_scopes_above(int depth);
// The checks at the end of the file for the names of all namespaces.
void wrapup_namespace_scopes();

void push_name_linkage(a_name_linkage_kind linkage);
void pop_name_linkage();

// The a_scope of a stack entry; made now for a block or prototype scope that has none.
a_scope *ensure_il_scope_exists(a_scope_stack_entry *entry);
a_scope_pointers_block *get_pointers_block_for_scope(a_scope *scope);
void clear_scope_pointers_block(a_scope_pointers_block *block);
bool namespace_is_enclosed_by_scope(a_symbol *symbol, a_scope_stack_entry *entry);
a_symbol *current_class_symbol_if_class_template();
void make_class_definition_context_visible(a_type *class_type);
bool routine_defined(a_routine *routine);
void set_needed_flags_at_end_of_file_scope(a_scope *scope);
bool keep_function_body_for_possible_inlining(a_routine *routine);
bool should_delay_lowering_on_function(a_routine *routine, bool flag);
void wrapup_scope(a_scope *il_scope, a_scope_kind kind, a_scope_pointers_block *block,
                  bool is_reactivation, unsigned flags);

// A tentative reference out of an inline function with external linkage (C99 6.7.4p3); reported
// at the end of the file if the function still has external linkage then.
void record_ref_within_inline_function(a_routine *routine, a_symbol *symbol,
                                       const a_source_position *position, bool is_definition);

void add_active_using_directive(a_using_decl *using_decl, int depth, uint32_t decl_seq);
void set_active_using_list_scope_depths(int from, int to, uint32_t seq);

// Lowering of one region (lower_il_memory_region); installed by the lowering module, null: none.
extern void (*lower_region_hook)(int region);

// One finished function body: lowering, orphan lists, needed marks.
void finish_function(a_routine *routine, a_scope *scope, bool eliminate, bool file_scope_only);
// The same for a body whose lowering was put off, by region.
void finish_function_processing_for_memory_region(int region, bool only_if_inline);
void lower_functions_waiting_for_module_id();


// Pack expansion contexts of templates.
bool any_packs_referenced();
void record_potential_pack_reference(a_symbol *symbol, a_source_position *position);

void scope_stk_one_time_init();
void scope_stk_init();
void scope_stk_trans_unit_init();
