// il_alloc.h - allocation of IL entries, regions, parent links and the lists of scopes.
// Owns:    il_header, curr_il_region_number, the prefix sizes, the orphan lists.
// Rule:    a file-scope entry never keeps a plain pointer into a function's region; the link is
//          kept the other way round, in a reference record of the function (make_local_scope_ref).
// Entry:   alloc_variable, alloc_routine, ..., new_il_region, set_source_corresp, add_to_*_list.
// No routine here fails or issues diagnostics; exhausted memory ends in the region manager.
#pragma once
#include <cstddef>
#include <cstring>

#include "il/il_entities.h"
#include "mem/mem_manage.h"

// --- State ---------------------------------------------------------------------------------------

extern an_il_header il_header;                  // writers: the owners of the fields
extern int curr_il_region_number;               // 0 between translation units
extern bool initial_value_for_il_lowering_flag; // 1 while lowering creates entries
extern bool in_front_end;                       // clear in the back end and between
extern bool file_scope_visited_value;   // of entries that no walk is at; writer: il_walk.cpp
extern bool flag_value_meaning_visited; // see il_walk.h
extern bool okay_to_eliminate_unneeded_il_entries;
extern bool il_lowering_underway; // writer: lowering
extern a_name_linkage_kind default_routine_name_linkage;
extern unsigned needed_flag_bit_number;
extern bool statement_expressions_exist;             // some node of the unit is one
extern const unsigned short *const sizeof_il_entry;  // by kind; 9999 behind the last
extern const char *const *const il_entry_kind_names; // by kind, for dumps and internal errors

// --- Entry prefix --------------------------------------------------------------------------------

// The word in front of every entry.
struct an_il_entry_flags {
  bool is_file_scope_entry : 1;
  bool is_secondary_entry : 1;
  bool visited : 1;
  bool lowered : 1;
  bool keep_in_il : 1;
  uint32_t padding[1];
};
static_assert(sizeof(an_il_entry_flags) == 8);

// Bytes in front of an entry, for the current translation unit.
extern unsigned file_scope_il_prefix_size;
inline constexpr unsigned function_il_prefix_size = sizeof(an_il_entry_flags);
inline constexpr unsigned primary_file_scope_il_prefix_size =
    sizeof(an_il_entry_flags) + sizeof(void *);
inline constexpr unsigned secondary_file_scope_il_prefix_size =
    sizeof(an_il_entry_flags) + 2 * sizeof(void *);

inline an_il_entry_flags &entry_flags_of(const void *entry)
{
  return ((an_il_entry_flags *)entry)[-1];
}
// File-scope entries only.
inline void *&next_orphan_of(const void *entry)
{
  return *(void **)((char *)entry - primary_file_scope_il_prefix_size);
}
// Entries of secondary translation units only; null for all others.
inline void *corresp_entry_of(const void *entry)
{
  an_il_entry_flags &flags = entry_flags_of(entry);
  if (!flags.is_file_scope_entry || !flags.is_secondary_entry) return nullptr;
  return *(void **)((char *)entry - secondary_file_scope_il_prefix_size);
}
inline void set_corresp_entry(const void *entry, void *corresp)
{
  *(void **)((char *)entry - secondary_file_scope_il_prefix_size) = corresp;
}
inline bool is_file_scope_entry(const void *entry)
{
  return entry_flags_of(entry).is_file_scope_entry;
}

// Sets the prefix sizes for the translation unit in force.
void compute_il_prefix_size();

extern bool is_primary_translation_unit; // trans_unit.h

// Zeroed storage for an entry of `size` bytes in a region, with the prefix that the region asks
// for.
inline void *alloc_il_entry_in_region(int region, size_t size, bool in_file_scope)
{
  unsigned prefix = in_file_scope ? file_scope_il_prefix_size : function_il_prefix_size;
  char *place = (char *)alloc_in_region(region, size + prefix);
  memset(place, 0, size + prefix);
  void *entry = place + prefix;
  an_il_entry_flags &flags = entry_flags_of(entry);
  flags.is_file_scope_entry = in_file_scope;
  flags.is_secondary_entry = !is_primary_translation_unit;
  flags.visited = in_file_scope && file_scope_visited_value;
  flags.lowered = initial_value_for_il_lowering_flag;
  return entry;
}
inline void *alloc_il(size_t size)
{
  return alloc_il_entry_in_region(file_scope_region_number, size, true);
}
inline void *alloc_in_current_region(size_t size)
{
  bool in_file_scope = curr_il_region_number == file_scope_region_number;
  return alloc_il_entry_in_region(curr_il_region_number, size, in_file_scope);
}
template <class a_record> inline a_record *alloc_fs_entry()
{
  return (a_record *)alloc_il(sizeof(a_record));
}
template <class a_record> inline a_record *alloc_curr_entry()
{
  return (a_record *)alloc_in_current_region(sizeof(a_record));
}

// Region 1, with the primary prefix, also while a secondary unit is current.
void *alloc_primary_file_scope_il(size_t size);
// Beside `entry`: the current region for an entry of a function, else the file-scope region of its
// unit.
void *alloc_in_same_region_as(const void *entry, size_t size);
// Null-terminated copies: file-scope IL with prefix, or region 0 without.
char *copy_string_to_region(bool in_file_scope, const char *text);
char *copy_string_of_length_to_region(bool in_file_scope, const char *text, size_t length);
char *alloc_text_of_string_literal(uint64_t length);

// --- Entries of each kind ------------------------------------------------------------------------

a_source_file *alloc_source_file();
a_seq_number_lookup_entry *alloc_seq_number_lookup_entry();
a_constant *alloc_constant(a_constant_kind kind); // current region
a_constant *fs_constant(a_constant_kind kind);    // file scope
a_param_type *alloc_param_type(a_type *type);
a_based_type_list_member *alloc_based_type_list_member(a_type *base_type);
a_type *alloc_type(a_type_kind kind);
a_variable *alloc_variable(a_storage_class storage_class);
a_field *alloc_field();
an_exception_specification *alloc_exception_specification();
an_exception_specification_type *alloc_exception_specification_type();
a_routine *alloc_routine();
a_label *alloc_label();
an_expr_node *alloc_expr_node(an_expr_node_kind kind);
a_switch_case_entry *alloc_switch_case_entry();
a_handler *alloc_handler();
a_statement *alloc_statement(a_statement_kind kind);
an_object_lifetime *alloc_object_lifetime(an_object_lifetime_kind kind);
a_scope *alloc_scope(a_scope_kind kind, int number, a_routine *routine);
a_namespace *alloc_namespace(bool is_alias);
a_using_decl *alloc_using_decl();
a_dynamic_init *alloc_dynamic_init(a_dynamic_init_kind kind);
a_local_static_variable_init *alloc_local_static_variable_init();
a_vla_dimension *alloc_vla_dimension();
a_vcall_offset_entry *alloc_vcall_offset_entry();
an_overriding_virtual_function *alloc_overriding_virtual_function();
a_derivation_step *alloc_derivation_step();
a_base_class_derivation *alloc_base_class_derivation();
a_base_class *alloc_base_class();
a_class_list_entry *alloc_list_entry_for_class(a_type *class_type);
// `like`: the entry in whose region the record goes; null: file scope.
a_class_list_entry *alloc_list_entry_for_class_full(a_type *class_type, const void *like);
a_routine_list_entry *alloc_list_entry_for_routine(a_routine *routine);
a_constructor_init *alloc_ctor_init(a_constructor_init_kind kind);
an_asm_entry *alloc_asm_entry();
an_asm_operand *alloc_asm_operand();
a_named_register_list *alloc_named_register_list();
a_template_arg *alloc_template_arg(a_template_arg_kind kind);
void free_template_arg_list(a_template_arg *list);
a_lowered_eh_routine_ref *alloc_lowered_eh_routine_ref(a_routine *routine);
a_scope_orphaned_list_header *alloc_scope_orphaned_list_header();
a_pragma *alloc_pragma(unsigned char kind, const void *related_entry);
a_template *alloc_template(a_template_kind kind);
a_macro *alloc_macro();
a_per_instantiation_needed_flags_entry *
alloc_per_instantiation_needed_flags_entry(bool in_file_scope);
a_decl_position_supplement *alloc_decl_position_supplement(bool in_file_scope);
a_template_decl *alloc_template_decl();
a_template_param *alloc_template_parameter();
a_name_reference *alloc_name_reference();
a_name_qualifier *alloc_name_qualifier();
a_local_expr_node_ref *alloc_local_expr_node_ref();
a_local_scope_ref *alloc_local_scope_ref();
an_il_entity_list_entry *alloc_il_entity_list_entry(an_il_entry_kind kind, void *entity);
a_lambda *alloc_lambda();
a_lambda_capture *alloc_lambda_capture();
an_attribute *alloc_attribute();
an_attribute_arg *alloc_attribute_arg();
an_attribute_group *alloc_attribute_group();

// The kind of an existing record: resets the variant part and allocates the supplement that it
// needs.
void set_constant_kind(a_constant *constant, a_constant_kind kind);
void set_template_param_constant_kind(a_constant *constant, a_template_param_constant_kind kind);
void set_type_kind(a_type *type, a_type_kind kind);
void set_expr_node_kind(an_expr_node *expr, an_expr_node_kind kind);
void set_lowered_eh_construct_node_kind(an_expr_node *expr, a_lowered_eh_kind kind);
void set_statement_kind(a_statement *statement, a_statement_kind kind);
void set_scope_kind(a_scope *scope, a_scope_kind kind, a_routine *routine);
void set_dynamic_init_kind(a_dynamic_init *init, a_dynamic_init_kind kind);
void set_template_arg_kind(a_template_arg *arg, a_template_arg_kind kind);
// Also clears the special data.
void set_routine_special_kind(a_routine *routine, a_routine_special_kind kind);

// The whole record as at allocation.
void clear_type(a_type *type, a_type_kind kind);
void clear_constant(a_constant *constant, a_constant_kind kind);
void clear_expr_node(an_expr_node *expr, an_expr_node_kind kind);
void clear_namespace(a_namespace *name_space, bool is_alias);
void clear_name_reference(a_name_reference *reference);
void clear_decl_position_supplement(a_decl_position_supplement *supplement);
// The parts of a class that its definition fills in.
void clear_class_type_definition_fields(a_type *class_type);

// --- Regions -------------------------------------------------------------------------------------

// sck_function: makes a new region current and allocates the root scope in it; any other kind: the
// file-scope region.  Records the scope as the region's root.
a_scope *new_il_region(a_scope_kind kind, int number, a_routine *routine);
// Makes room for the region's slot and stores its root.
void set_scope_of_region(int region, a_scope *scope);
inline void switch_il_region(int region)
{
  curr_il_region_number = region;
}
// `saved` becomes 0 when nothing changed.
inline void switch_to_file_scope_region(int *saved)
{
  *saved = 0;
  if (curr_il_region_number != file_scope_region_number) {
    *saved = curr_il_region_number;
    curr_il_region_number = file_scope_region_number;
  }
}
inline void switch_back_to_original_region(int saved)
{
  if (saved != 0) curr_il_region_number = saved;
}
// To the region of the scope at that depth of the scope stack.
void switch_to_scope_region(int depth, int *saved);
// Root scope of the routine's body; null: no body, or its region is gone.
a_scope *scope_for_routine(const a_routine *routine);

// --- Source correspondence -----------------------------------------------------------------------

// The head of an entry of a kind that has one, else null.
a_source_correspondence *source_corresp_for_il_entry(void *entry, an_il_entry_kind kind);
void clear_source_corresp(a_source_correspondence *corresp);
// Takes name, first position, linkage and depth from the symbol; clears `referenced`.
void set_source_corresp(a_source_correspondence *corresp, a_symbol *symbol);
void set_source_corresp_with_scope_depth(a_source_correspondence *corresp, a_symbol *symbol,
                                         int scope_depth);
void set_source_corresp_name(a_source_correspondence *corresp, a_symbol_header *header);
void clear_source_corresp_name(a_source_correspondence *corresp);
void break_source_corresp(a_source_correspondence *corresp);
void break_instance_source_corresp(a_source_correspondence *corresp);
void break_constant_source_corresp(a_constant *constant);
void set_class_membership(a_source_correspondence *corresp, a_type *class_type);
void set_namespace_membership(a_source_correspondence *corresp, an_il_entry_kind kind,
                              a_namespace *name_space);
void update_decl_pos_info(a_source_correspondence *corresp, const a_decl_pos_block *pos_block);
a_decl_position_supplement *make_decl_pos_supplement(a_source_correspondence *corresp,
                                                     const a_decl_pos_block *pos_block);

// --- Parent links --------------------------------------------------------------------------------

void set_parent_scope(a_source_correspondence *corresp, an_il_entry_kind kind, a_scope *scope);
// Null: no parent, or the parent's region is gone.
a_scope *f_get_parent_scope_of(const a_source_correspondence *corresp);
inline a_scope *get_parent_scope_of(const a_source_correspondence *corresp)
{
  return corresp->has_local_scope_ref ? f_get_parent_scope_of(corresp) : corresp->parent_scope;
}
// The class that the entity is a member of; the namespace; null otherwise.
a_type *parent_class_of(const a_source_correspondence *corresp);
a_namespace *parent_namespace_of(const a_source_correspondence *corresp);
void clear_parent(a_source_correspondence *corresp);
void clear_local_scope_ref_if_present(a_source_correspondence *corresp);
void make_local_scope_ref(a_scope *scope, void *entity, an_il_entry_kind kind,
                          a_scope *function_scope);
void make_local_expr_node_ref(an_expr_node *expr, a_local_expr_use use, void *entity,
                              an_il_entry_kind kind, a_scope *function_scope);
// Null when there is no reference, or the region is gone.
a_scope *find_local_scope(const a_source_correspondence *entity);
an_expr_node *find_local_expr_node(const a_source_correspondence *entity, a_local_expr_use use);
a_routine *enclosing_routine_for_local_type(a_type *type);
a_routine *enclosing_routine_for_local_type_or_null(a_type *type);
a_scope *function_scope_for_local_type(a_type *type);

// --- Lists of scopes; all append in constant time ------------------------------------------------

// depth: index on the scope stack; -1: the scope that the entity's parent says.
void add_to_types_list(a_type *type, int depth);
void add_to_variables_list(a_variable *variable, int depth);
void add_to_routines_list(a_routine *routine, int depth);
void add_to_constants_list(a_constant *constant, int depth);
void add_to_namespaces_list(a_namespace *name_space, int depth);
void add_to_templates_list(a_template *templ, int depth);
void add_to_labels_list(a_label *label, int depth);
void add_to_asm_entries_list(an_asm_entry *entry, int depth);
void add_to_using_decls_list(a_using_decl *using_decl, int depth);
void add_to_parameters_list(a_variable *parameter, int depth);
void add_to_pragma_list(a_pragma *pragma, int depth);
void add_to_dynamic_inits_list(a_dynamic_init *init, int depth);
void add_to_macros_list(a_macro *macro);
void add_to_scopes_list(a_scope *scope, int depth);
void add_to_local_static_inits_list(a_local_static_variable_init *init, a_scope *scope);
// The same when only the scope is known; its tails are found through get_pointers_block_for_scope,
// or searched.  Lowering uses them.
void add_variable_to_scope(a_variable *variable, a_scope *scope);
bool may_be_added_to_types_list(const a_type *type, int depth);
void remove_from_routines_list(a_routine *routine, a_scope *scope);
void remove_from_variables_list(a_variable *variable, a_scope *scope);
void move_to_end_of_types_list(a_type *type);
void schedule_move_to_current_end_of_routines_list(a_routine *routine);
void perform_scheduled_routine_moves();
void fix_type_list_ordering_problems(a_scope *scope);
extern bool perform_type_list_ordering;

// --- Orphans -------------------------------------------------------------------------------------

struct an_orphaned_list {
  void *head;
  void *tail;
};
extern an_orphaned_list orphaned_file_scope_il_entries[iek_last];
// Lists the entry by kind if nothing but other entries' pointers leads to it.
void f_possibly_add_orphaned_file_scope_il_entry(void *entry, an_il_entry_kind kind,
                                                 a_translation_unit *trans_unit);
// Saves what must outlive the region of a function scope.
void add_scope_orphaned_il_lists(a_scope *scope);

void il_one_time_init();
void il_trans_unit_init();
