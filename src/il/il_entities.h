// il_entities.h - records of the declared entities, scopes and the IL header.
// All of these are plain, trivially copyable records in numbered regions; il_entities.def lists
// every field of every kind, and a record that disagrees with it does not compile
// (il_field_table.cpp).
#pragma once
#include <cstdint>

#include "il/il_exprs.h"
#include "il/il_templates.h"

// Where a variable or routine is placed.
struct a_section_specification {
  const char *name;
  a_source_position position;
  unsigned char kind;                  // 0 by a pragma, 1 by an attribute, 2 by a SET_..._SECTION pragma
};

// --- Lists ---------------------------------------------------------------------------------------

struct an_il_entity_list_entry {
  an_il_entity_list_entry *next;
  an_il_entry_kind kind;               // says what entity is
  void *entity;
};

struct a_class_list_entry {
  a_class_list_entry *next;
  a_type *class_type;
};

struct a_routine_list_entry {
  a_routine_list_entry *next;
  a_routine *routine;
};

// --- Names and links -----------------------------------------------------------------------------

struct a_name_qualifier {
  a_name_qualifier *next;
  bool is_namespace;                   // says what entity is
  union {
    a_type *type;
    a_namespace *name_space;
  } entity;
};

struct a_name_reference {
  a_name_reference *next;
  a_name_qualifier *qualifier;
  a_type *type;
  int64_t position_seq;                // -1 at allocation
  bool is_global_qualified : 1;        // written with a leading ::
  bool is_qualified : 1;
  bool has_template_keyword : 1;
  bool has_typename_keyword : 1;
};

// How a file-scope entity finds its parent in a function's region.
struct a_local_scope_ref {
  a_local_scope_ref *next;
  a_scope *scope;
  an_il_entry_kind entity_kind;
  void *entity;
};

// The same for an expression of the function that a file-scope type or routine refers to.
struct a_local_expr_node_ref {
  a_local_expr_node_ref *next;
  an_expr_node *expr;
  a_local_expr_use use;
  an_il_entry_kind entity_kind;
  void *entity;
};

struct a_per_instantiation_needed_flags_entry {
  a_per_instantiation_needed_flags_entry *next;
  uint32_t number;                     // of the first bit
  uint32_t bits[2];
};

// What outlives a released function region.
struct a_scope_orphaned_list_header {
  a_scope_orphaned_list_header *next;
  a_routine *routine;
  int scope_number;
  a_type *types;
  a_variable *variables;
  a_namespace *namespaces;
};

// --- Declared entities ---------------------------------------------------------------------------

struct a_param_type {
  a_param_type *next;
  a_type *type;                        // after adjustment
  a_type *orig_type;                   // as written
  const char *name;
  bool passed_by_copy_constructor : 1;
  bool has_default_arg : 1;
  bool default_arg_unevaluated : 1;
  bool is_pack : 1;
  bool is_this_param : 1;
  bool is_unused : 1;
  bool declared_register : 1;
  bool has_static_bound : 1;           // `static` in the outermost brackets
  bool is_transparent_union : 1;
  unsigned char qualifiers;            // stored qualifiers of the parameter itself
  uint32_t number;                     // from 1
  uint32_t decl_modifiers;
  a_source_position position;
  an_expr_node *default_arg_expr;
  an_il_entity_list_entry *declared_entities;
  an_attribute *attributes;
  a_decl_position_supplement *decl_position_supplement;
};

struct a_variable {
  a_source_correspondence source_corresp;
  a_variable *next;
  a_type *type;
  a_param_type *param_type;            // for a parameter, its entry in the routine type
  a_storage_class storage_class;
  an_init_kind init_kind;              // says what initializer is
  unsigned char register_number;       // code of registers.def while !asm_name_is_text
  const char *asm_name;                // text of an __asm__ name while asm_name_is_text, or null
  uint32_t alignment;                  // explicit; 0: the type's
  uint32_t decl_modifiers;
  a_routine *cleanup_routine;
  // First byte of variable_flags.
  unsigned visibility : 3;             // an_elf_visibility
  unsigned weak_state : 2;             // a_weak_state
  bool is_unused : 1;
  bool is_used : 1;
  bool no_common : 1;
  // Second byte.
  bool is_common : 1;                  // carries the common attribute
  bool asm_name_is_text : 1;
  bool address_taken : 1;
  bool is_parameter : 1;
  bool is_this_parameter : 1;
  bool is_compiler_generated : 1;
  bool is_temporary : 1;
  bool is_handler_param : 1;
  bool is_definition : 1;
  bool is_tentative : 1;
  bool has_initializer : 1;            // an initializer stood in the source
  bool has_definite_init : 1;
  bool is_thread_local : 1;
  bool has_flexible_array_init : 1;
  bool is_vla : 1;
  bool is_vla_temporary : 1;           // compound literal of variably modified type
  bool init_needs_zero_fill : 1;       // the writer zeroes the whole object first
  bool is_dynamically_initialized : 1;
  bool is_member_constant : 1;
  bool is_static_data_member : 1;
  bool is_specialized : 1;
  bool is_template_instance : 1;
  bool is_vtable : 1;
  bool is_typeinfo : 1;
  bool is_anonymous_union_object : 1;
  bool is_return_value : 1;            // named return value
  bool is_by_reference : 1;            // held by reference in the generated code
  bool in_comdat_group : 1;
  bool has_guard : 1;
  bool is_device_variable : 1;         // OpenMP declare target
  bool is_left_out : 1;                // the writer skips it
  bool is_noinit : 1;
  bool is_persistent : 1;
  bool is_catch_var : 1;
  bool promoted_from_function : 1;
  bool declared_register : 1;
  bool is_external_in_block : 1;       // declared extern in a block
  bool is_loop_counter : 1;            // of a for statement whose body is being read; the checker's
  unsigned boolean_use : 2;            // what its uses make of it; a_boolean_use of the checker
  union {
    a_constant *constant;              // initk_static
    a_dynamic_init *dynamic_init;      // initk_dynamic
  } initializer;
  a_source_range decl_range;
  an_il_entity_list_entry *declared_entities;
  a_template *assoc_template;
  a_variable *alias_target;
  const char *comdat_group_name;
  uint32_t instantiation_bit;
  uint32_t name_collision_discriminator;
  a_section_specification *section_specification;
  a_variable *element_count_variable;  // total number of elements of a VLA
  const char *location;                // location attribute, or null
};

inline a_constant *&constant_initializer_of(a_variable *variable)
{
  check(variable->init_kind == initk_static);
  return variable->initializer.constant;
}
inline a_dynamic_init *&dynamic_initializer_of(a_variable *variable)
{
  check(variable->init_kind == initk_dynamic);
  return variable->initializer.dynamic_init;
}

struct a_field {
  a_source_correspondence source_corresp;
  a_field *next;                       // in declaration order
  a_type *type;
  uint64_t offset;                     // layout result, in bytes
  unsigned char bit_offset;            // within offset
  unsigned char bit_size;              // width of a bit-field
  uint32_t declared_alignment;         // from an attribute, 0 if none
  bool is_packed_field : 1;
  bool layout_done : 1;
  bool is_bit_field : 1;
  bool is_mutable : 1;
  bool is_anonymous_union_field : 1;
  bool is_base_subobject : 1;
  bool is_first_field_mark : 1;
  bool is_compiler_generated : 1;
  bool is_unused : 1;
  bool is_vptr : 1;
  bool needs_tail_padding : 1;
  bool is_flexible_array : 1;
  bool is_captured : 1;
  bool bit_field_is_signed : 1;
  a_constant *bit_size_constant;       // the width as written, when dependent
  uint64_t declared_width;             // the width as written, when larger than bit_size
  a_type *allocation_type;             // integer type that allocation used
  a_type *declared_type;               // type as declared, of a bit-field
};

struct a_routine_special_info {
  uint16_t builtin_function_kind;      // sfk_none: non-zero means a GNU built-in
  unsigned char operator_kind;         // sfk_operator
  uint32_t ctor_dtor_kind;             // which variant this one is
  a_routine_list_entry *ctor_dtor_variants;  // sfk_constructor, sfk_destructor: generated variants
};

struct a_routine {
  a_source_correspondence source_corresp;
  a_routine *next;
  a_type *type;
  int region_number;                   // of the body; 0: none
  uint32_t alignment;                  // explicit; 0: none
  a_storage_class storage_class;
  a_routine_special_kind special_kind;
  a_routine_special_info special;      // by special_kind
  // Byte 0 of routine_flags.
  bool is_pure_virtual : 1;
  bool is_virtual : 1;
  bool overrides_base_function : 1;
  bool is_explicit : 1;
  bool is_static_member : 1;
  bool may_be_duplicated : 1;
  bool is_inline : 1;
  bool is_compiler_generated : 1;
  // Byte 1.
  bool is_template_function : 1;
  bool is_specialized : 1;
  bool is_prototype_instance : 1;
  bool is_defined : 1;
  bool is_friend_in_class : 1;
  bool is_copy_constructor : 1;
  bool is_copy_assignment : 1;
  bool is_trivial_default_constructor : 1;
  // Byte 2.
  bool is_trivial : 1;
  unsigned inline_linkage_state : 2;
  bool address_taken : 1;
  bool is_implicitly_declared : 1;     // C: called without a declaration
  bool is_nothrow : 1;
  bool is_noreturn : 1;
  bool contains_local_static : 1;
  // Byte 3.
  bool never_inline : 1;
  bool inline_in_class : 1;
  bool no_inline : 1;
  bool contains_try : 1;
  bool contains_setjmp_call : 1;
  bool contains_asm : 1;
  bool is_constructor_attr : 1;
  bool is_destructor_attr : 1;
  // Byte 4.
  bool is_pure : 1;
  unsigned weak_state : 2;             // a_weak_state
  bool is_unused : 1;
  bool is_used : 1;
  bool is_malloc : 1;
  bool no_instrument : 1;
  bool no_check_memory_usage : 1;
  // Byte 5.
  bool always_inline : 1;
  bool gnu_inline : 1;
  bool is_const_attr : 1;
  bool warn_unused_result : 1;
  bool is_cold : 1;
  bool is_hot : 1;
  bool is_artificial : 1;
  bool is_flatten : 1;
  // Byte 6.
  unsigned visibility : 3;             // an_elf_visibility
  bool definition_needed : 1;
  bool keep_definition_in_il : 1;
  bool is_interrupt : 1;
  bool is_builtin : 1;                 // predeclared
  bool is_runtime_routine : 1;
  // Byte 7.
  bool inline_definition_only : 1;
  bool contains_varargs_use : 1;
  bool has_old_style_definition : 1;
  bool is_main : 1;
  bool is_device_routine : 1;          // OpenMP
  bool variables_promoted : 1;
  bool is_left_out : 1;                // the writer skips it
  bool is_thunk : 1;
  bool checks_printf_args : 1;         // #pragma __printf_args stood before a declaration
  bool checks_scanf_args : 1;
  // Byte 8.
  bool has_function_try_block : 1;
  bool externally_visible : 1;
  bool returns_twice : 1;
  bool contains_computed_goto : 1;
  bool is_wrapper : 1;
  bool in_comdat_group : 1;
  unsigned primary_ctor_dtor_kind : 2;
  // Byte 9.
  bool is_vla_user : 1;                // has variable-length arrays
  bool lowering_delayed : 1;
  bool is_imported : 1;
  bool is_lambda_body : 1;
  bool is_reached_by_inline : 1;
  bool is_defaulted : 1;
  bool is_generation_pending : 1;      // the body that the compiler makes was asked for
  bool is_deleted : 1;
  bool body_was_lowered : 1;
  uint32_t decl_modifiers;
  uint16_t virtual_function_number;
  uint32_t mangled_name_length;        // place of the constructor or destructor digit in the name
  unsigned char fp_contract_state;     // an_stdc_pragma_state at the body; 0: no body
  unsigned char fenv_access_state;
  unsigned char cx_limited_range_state;
  uint32_t instantiation_bit;
  uint32_t name_collision_discriminator;
  a_template_arg *template_args;
  a_template *assoc_template;
  a_routine *alias_target;
  const char *asm_name;
  a_routine *generated_from;           // the routine of which this is a generated variant
  void *deferred_friend_fixup;         // no IL pointer
  const char *comdat_group_name;
  a_section_specification *section_specification;
  void *destruction_tree;              // exception table while the routine is lowered and written
  a_source_range decl_range;
  an_il_entity_list_entry *declared_entities;
};

struct a_label {
  a_source_correspondence source_corresp;
  a_label *next;
  bool is_defined : 1;
  bool is_reachable : 1;
  bool address_taken : 1;              // GNU: &&label
  bool is_compiler_generated : 1;
  bool is_break_label : 1;
  bool is_block_local : 1;             // declared with __label__: belongs to its block
  bool is_unused : 1;
  a_statement *statement;              // the stmk_label
};

struct a_namespace {
  a_source_correspondence source_corresp;
  a_namespace *next;
  bool is_alias;                       // says which member holds
  bool is_inline : 1;
  unsigned visibility : 3;             // an_elf_visibility
  union {
    a_namespace *alias_target;
    a_scope *scope;
  } variant;
};

inline a_namespace *skip_namespace_aliases(a_namespace *name_space)
{
  while (name_space != nullptr && name_space->is_alias) {
    name_space = name_space->variant.alias_target;
  }
  return name_space;
}
inline a_scope *scope_of_namespace(a_namespace *name_space)
{
  return skip_namespace_aliases(name_space)->variant.scope;
}

struct a_using_decl {
  a_using_decl *next;
  a_source_position position;
  an_il_entry_kind entity_kind;        // a directive: iek_namespace
  void *entity;
  an_attribute *attributes;
  bool is_using_directive : 1;
  bool target_is_class : 1;            // says what target is
  unsigned access : 2;
  union {
    a_namespace *name_space;
    a_type *class_type;
  } target;
  int64_t decl_seq;
};

// --- Scopes --------------------------------------------------------------------------------------

struct a_scope {
  a_scope *next;                       // on the parent's subscopes
  a_scope *parent;                     // null if it would point out of the region
  int number;
  a_scope_kind kind;                   // says which owner holds
  bool is_reactivated_function : 1;
  bool has_orphaned_lists : 1;
  union {
    a_type *type;                      // prototype, class, enum
    a_namespace *name_space;
    a_handler *handler;                // block of a catch clause, else null
    a_statement *statement;            // condition
    a_routine *routine;                // function
  } owner;
  a_variable *parameters;              // function scopes
  a_constructor_init *constructor_inits;
  an_object_lifetime *outer_lifetime;
  a_variable *this_param;
  a_statement *assoc_block;            // the block that is the body of this scope
  an_object_lifetime *object_lifetime;
  a_constant *constants;
  a_type *types;
  a_variable *variables;               // static duration
  a_variable *local_variables;         // automatic
  a_label *labels;
  a_routine *routines;
  an_asm_entry *asm_entries;
  a_scope *subscopes;
  a_namespace *namespaces;
  a_using_decl *using_decls;
  a_dynamic_init *dynamic_inits;
  a_local_static_variable_init *local_static_inits;
  a_vla_dimension *vla_dimensions;
  a_local_expr_node_ref *local_expr_node_refs;
  a_local_scope_ref *local_scope_refs;
  a_pragma *pragmas;
  int stack_depth;                     // on the scope stack while active, else -1
  a_template *templates;
};

inline a_routine *&routine_of_scope(a_scope *scope)
{
  check(scope->kind == sck_function);
  return scope->owner.routine;
}
inline a_type *&type_of_scope(a_scope *scope)
{
  check(scope->kind == sck_function_prototype || scope->kind == sck_class ||
        scope->kind == sck_enum);
  return scope->owner.type;
}

// --- The root of a translation unit's IL ---------------------------------------------------------

struct a_seq_number_lookup_entry;

struct an_il_header {
  a_source_file *source_files;
  a_scope *primary_scope;
  a_routine *main_routine;
  const char *version_string;
  const char *compilation_date;
  bool plain_char_is_signed;
  a_scope_orphaned_list_header *scope_orphaned_lists;
  int source_language;                 // 0 C++, 1 C
  bool is_old_c_dialect;
  bool is_c99;
  bool enum_is_integral;
  uint32_t max_member_alignment;
  a_macro *macros;
  bool gcc_mode;
  bool gpp_mode;
  uint32_t gnu_version;
  bool short_enums;
  bool zero_uninitialized_definitions;
  bool canonical_ids_used;
  bool vla_used;
  bool exported_templates_used;
  bool templates_used;
  bool prototype_instantiations_in_il;
  bool nonclass_prototype_instantiations_in_il;
  bool il_is_lowered;
  const char *instantiation_dir_name;
  uint32_t instantiation_needed_bit_count;
  a_type *types_used_in_eh;
  a_seq_number_lookup_entry *seq_number_lookup_list;
  uint32_t seq_number_lookup_count;
};
