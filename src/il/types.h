// types.h - the type model: the record of a type, its constructors, predicates and relations.
// Owns:    a_type and its supplements, the caches of the shared types.
// Rule:    derived types are shared through the base type's list, so that identity is mostly one
//          pointer compare; qualifiers and attributes stand on tk_typeref entries only.
// Entry:   integer_type, make_pointer_type, f_make_qualified_type, skip_typerefs, identical_types, ...
#pragma once
#include <cstdint>

#include "consts/const_ints.h"
#include "il/il_entities.h"
#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "mem/check.h"

typedef uint64_t a_target_size;            // size, offset or count in the target's units
typedef uint32_t a_target_alignment;       // in addressable units

struct a_based_type_list_member {
  a_based_type_list_member *next;
  a_type *type;  // the derived type
  a_based_type_kind based_kind;
  bool needs_fixup;  // removed by do_based_type_fixup
};

struct an_enum_type_supplement {
  a_type *underlying_type;  // the declared or chosen integer type
};

struct a_routine_type_supplement {
  a_param_type *param_types;
  a_routine *assoc_routine;  // the routine that this type belongs to, where unique
  bool has_ellipsis : 1;
  bool is_prototyped : 1;
  bool returns_class_in_memory : 1;  // set_routine_calling_method_flag
  bool is_old_style_definition : 1;  // parameters came from an identifier list
  bool has_transparent_union_param : 1;
  bool param_qualifiers_removed : 1;
  unsigned type_linkage : 2;  // a_name_linkage_kind of the function type
  unsigned this_qualifiers : 4;  // of the this parameter of a member function
  unsigned char calling_convention;  // index into calling_convention_names, 0 the default
  a_type *this_class;         // for a non-static member function
  a_scope *prototype_scope;   // the scope of the parameters
  an_exception_specification *exception_specification;  // null: none
};

struct an_exception_specification {
  an_exception_specification_type *first_type;
  a_source_range decl_range;
};

struct an_exception_specification_type {
  an_exception_specification_type *next;
  a_type *type;
  bool is_redundant;  // doesn't count in comparisons
  bool is_pack_expansion;
  a_source_position position;
};

struct a_typeref_supplement {
  a_template_arg *template_args;
  a_template *assoc_template;
  an_expr_node *decl_expr;  // operand of typeof or decltype
  int decltype_number;      // -1 at allocation
  a_type *underlying_type_operand;
  a_type *original_type;
  a_source_range decl_range;
};

struct a_template_param_type_supplement {
  a_type *parent_class;     // kind tptk_member: the dependent class
  a_type *proxy_class;      // proxy_class_for_template_param
  int coordinate;
  int level;                // -1 or less: the placeholder of auto
};

struct a_class_type_supplement {
  a_base_class *base_classes;   // direct and indirect, in order of first appearance
  a_base_class *virtual_bases;  // through next_virtual_base
  a_base_class *primary_base;   // shares this class's virtual function pointer
  a_target_size nonvirtual_size;
  a_target_alignment nonvirtual_alignment;    // 1 at allocation
  uint16_t next_virtual_function_number;      // 0xffff at allocation
  a_target_size vptr_offset;
  a_base_class *vptr_owner_base;
  bool is_closure : 1;
  bool closure_parent_is_variable : 1;
  bool definition_needed : 1;       // set_class_definition_needed
  bool keep_definition_in_il : 1;
  bool inline_members : 1;
  bool is_local_class : 1;
  bool dependent_bases : 1;
  bool in_template : 1;
  a_class_list_entry *friend_classes;
  a_routine_list_entry *friend_routines;
  a_scope *class_scope;
  a_template *assoc_template;
  a_vcall_offset_entry *vcall_offsets;
  // Of lowering.  Indexes count from the entry that the virtual function pointer shows at.
  int64_t next_negative_vtable_index;  // -3 at allocation
  int64_t negative_index_after_vbases;
  a_variable *vtbl_variable;           // the class's own virtual function table
  a_type *subobject_type;              // non-null once the class is prelowered; may be the class
  a_template_arg *template_args;
  a_template_arg *partial_spec_template_args;
  void *routine_fixups;        // head of the a_routine_fixup list while deferred work waits
  a_lambda *assoc_lambda;
};

// The variant parts of a_type, by kind.
struct an_integer_type_part {
  an_integer_kind int_kind;
  bool is_enum : 1;
  bool enum_is_scoped : 1;
  bool enum_is_packed : 1;  // may be smaller than int
  bool is_wchar_t : 1;      // the distinct types of C++
  bool is_char16_t : 1;
  bool is_char32_t : 1;
  bool is_bool : 1;
  bool underlying_is_fixed : 1;  // enum with a declared underlying type
  union {
    a_constant *first_enumerator;  // enums, chained through next
    a_scope *enum_scope;           // scoped enums
  };
  union {
    an_enum_type_supplement *enum_supplement;  // enums
    a_type *represented_enum;  // others: the enum that a generated integer stands for
  };
};

struct a_float_type_part {
  a_float_kind float_kind;
};

struct a_pointer_type_part {
  a_type *pointed_to_type;
  bool is_reference : 1;
  bool is_rvalue : 1;    // with is_reference
  bool is_tracking : 1;  // the distinct kind of make_lhsref_type
  void *based_pointer_info;
};

struct a_routine_type_part {
  a_type *return_type;
  a_routine_type_supplement *routine_supplement;
};

struct an_array_type_part {
  a_type *element_type;
  unsigned qualifiers : 4;       // written inside the brackets of a parameter
  bool bound_is_constant : 1;    // bound depends on a template parameter
  bool bound_is_expr : 1;
  bool is_vla : 1;               // always with bound_is_expr
  bool is_star_vla : 1;          // [*] in a prototype
  bool bound_is_zero : 1;        // a written bound of 0 (GNU), not a missing one
  bool is_static_bound : 1;      // [static n] of a parameter
  union {
    a_target_size number_of_elements;
    a_constant *bound_as_constant;
    an_expr_node *bound_expr;
  } bound;
  a_constant *bound_constant;    // the bound as written, where it is kept
};

struct a_class_type_part {
  a_field *first_field;
  a_class_type_supplement *class_supplement;
  uint32_t max_member_alignment;  // pack value in force, 0 for none
  bool has_virtual_bases : 1;
  bool has_virtual_functions : 1;
  bool abstract_known : 1;
  bool is_abstract : 1;
  bool is_template_dependent : 1;
  bool is_template_instance : 1;
  bool is_incomplete_until_end : 1;
  bool has_body : 1;
  bool is_empty_class : 1;
  bool has_flexible_array : 1;
  bool is_transparent_union : 1;
  bool is_packed : 1;
  bool has_empty_body : 1;           // GNU C: written with {}
  bool is_struct_vector : 1;         // the vector types of OpenCL
  bool is_nonreal : 1;               // a class only used as a template's pattern
  bool has_const_field : 1;          // a const field, here or inside a field
  bool has_volatile_field : 1;
  bool layout_done : 1;
  bool is_anonymous : 1;             // an anonymous struct or union inside another
  bool being_defined : 1;            // between { and }
};

struct a_typeref_type_part {
  a_type *referenced_type;
  a_typeref_supplement *typeref_supplement;  // null until needed
  unsigned qualifiers : 4;
  bool is_typedef_decl : 1;      // set by decl_typedef
  bool is_typeof : 1;
  bool is_underlying_type : 1;
  bool is_decltype : 1;
  bool dependent_decltype : 1;
  bool has_attributes : 1;       // make_typeref_with_attributes
  bool is_alias_decl : 1;
  bool predeclared : 1;          // entered by the compiler itself
};

struct a_ptr_to_member_type_part {
  a_type *member_class;
  a_type *member_type;
};

struct a_template_param_type_part {
  a_template_param_type_kind template_param_kind;
  a_template_param_type_supplement *template_param_supplement;
};

struct a_cl_vector_type_part {
  uint64_t element_count;
  unsigned char element_kind_index;
  unsigned char vector_flags;
  unsigned char element_int_or_float_kind;
};

struct a_type {
  a_source_correspondence source_corresp;  // a typedef or tag name lives here
  a_type *next;                            // scope's types list, or types_used_in_eh
  a_based_type_list_member *based_types;   // derived types already built on this type
  a_target_size size;                      // addressable units; 0 while incomplete
  a_target_size precision;                 // bits of value for integers
  a_target_alignment alignment;            // 1 at allocation
  a_type_kind kind;
  bool is_incomplete : 1;                  // tk_nullptr: the managed null type
  bool used_in_exception_or_rtti : 1;
  bool is_prototype_tag : 1;               // C only
  unsigned auto_deduction_state : 2;
  bool alignment_was_declared : 1;         // this entry carries its own alignment
  bool is_unused : 1;                      // __unused__
  bool may_alias : 1;                      // __may_alias__
  bool is_local_type : 1;                  // has a local reference record to its function
  bool has_vla_bound_ref : 1;              // a_local_expr_node_ref exists for the bound
  bool is_deduced_array_bound : 1;
  a_variable *typeinfo_var;                // run-time type information, once made
  union {
    an_integer_type_part integer;          // tk_integer
    a_float_type_part floating;            // tk_float, tk_imaginary, tk_complex
    a_pointer_type_part pointer;           // tk_pointer
    a_routine_type_part routine;           // tk_routine
    an_array_type_part array;              // tk_array
    a_class_type_part class_struct_union;  // tk_class, tk_struct, tk_union
    a_typeref_type_part typeref;           // tk_typeref
    a_ptr_to_member_type_part ptr_to_member;    // tk_ptr_to_member
    a_template_param_type_part template_param;  // tk_template_param
    a_cl_vector_type_part cl_vector;            // tk_cl_vector
  } variant;
};

// Kind-checked access to the variant part.  No typeref is skipped here.
#define TYPE_PART(accessor, part, member, test)    \
  inline part &accessor(a_type *type)              \
  {                                                \
    check(test(type->kind));                       \
    return type->variant.member;                   \
  }                                                \
  inline const part &accessor(const a_type *type)  \
  {                                                \
    check(test(type->kind));                       \
    return type->variant.member;                   \
  }
#define IS_KIND(k) k ==
inline bool kind_has_float_part(a_type_kind kind)
{
  return kind == tk_float || kind == tk_imaginary || kind == tk_complex;
}
inline bool kind_has_class_part(a_type_kind kind)
{
  return kind == tk_class || kind == tk_struct || kind == tk_union;
}
TYPE_PART(as_integer, an_integer_type_part, integer, IS_KIND(tk_integer))
TYPE_PART(as_float, a_float_type_part, floating, kind_has_float_part)
TYPE_PART(as_pointer, a_pointer_type_part, pointer, IS_KIND(tk_pointer))
TYPE_PART(as_routine, a_routine_type_part, routine, IS_KIND(tk_routine))
TYPE_PART(as_array, an_array_type_part, array, IS_KIND(tk_array))
TYPE_PART(as_class, a_class_type_part, class_struct_union, kind_has_class_part)
TYPE_PART(as_typeref, a_typeref_type_part, typeref, IS_KIND(tk_typeref))
TYPE_PART(as_ptr_to_member, a_ptr_to_member_type_part, ptr_to_member, IS_KIND(tk_ptr_to_member))
TYPE_PART(as_template_param, a_template_param_type_part, template_param, IS_KIND(tk_template_param))
TYPE_PART(as_cl_vector, a_cl_vector_type_part, cl_vector, IS_KIND(tk_cl_vector))
#undef TYPE_PART
#undef IS_KIND

// The supplement of a routine type (kind tk_routine exactly), of a class type.
inline a_routine_type_supplement *routine_supplement_of(a_type *type)
{
  return as_routine(type).routine_supplement;
}
inline a_class_type_supplement *class_supplement_of(a_type *type)
{
  return as_class(type).class_supplement;
}

// ---- Typerefs ----

a_type *f_skip_typerefs(a_type *type);                       // to the first non-typeref
a_type *skip_typedefs(a_type *type);                         // stops at qualifiers
a_type *skip_typerefs_not_typedefs(a_type *type);            // stops at a named typeref
a_type *skip_typerefs_not_dependent_decltypes(a_type *type);
a_type *skip_typedefs_not_dependent_decltypes(a_type *type);

inline a_type *skip_typerefs(a_type *type)
{
  while (type->kind == tk_typeref) type = type->variant.typeref.referenced_type;
  return type;
}

// Qualifiers along the typerefs; unless no_array_descent, also those of an array's element type.
a_type_qualifier_set f_get_type_qualifiers(a_type *type, bool no_array_descent);

inline a_type_qualifier_set get_type_qualifiers(a_type *type)
{
  return type->kind == tk_typeref || type->kind == tk_array ? f_get_type_qualifiers(type, false)
                                                            : 0u;
}
inline bool is_const_qualified(a_type *type) { return get_type_qualifiers(type) & tq_const; }
inline bool is_volatile_qualified(a_type *type) { return get_type_qualifiers(type) & tq_volatile; }
inline bool is_restrict_qualified(a_type *type) { return get_type_qualifiers(type) & tq_restrict; }

// ---- Constructors: each returns the shared type if there is one ----

a_type *void_type();
a_type *error_type();
a_type *unknown_type();
a_type *bool_type();
a_type *wchar_t_type();
a_type *char16_t_type();
a_type *char32_t_type();
a_type *standard_nullptr_type();
a_type *managed_nullptr_type();
a_type *integer_type(an_integer_kind kind);
a_type *float_type(a_float_kind kind);
a_type *complex_type(a_float_kind kind);
a_type *imaginary_type(a_float_kind kind);
a_type *eff_wchar_t_type();   // the keyword type, else the integer type that the target gives
a_type *eff_char16_t_type();
a_type *eff_char32_t_type();
a_type *size_t_type();        // of targ_size_t_int_kind
a_type *ptrdiff_t_type();
a_type *va_list_type();       // of the target
an_integer_kind signed_int_kind_of(an_integer_kind kind);
a_type *signed_integer_type(an_integer_kind kind);
a_type *other_signedness_integer_type(an_integer_kind kind);

// The one source of these values for an integer kind.

enum a_pointer_type_flag : unsigned char {
  ptf_none = 0, ptf_reference = 1, ptf_rvalue = 2, ptf_tracking = 4
};
// A null base gives an unshared type without pointed_to_type: a declarator fills it in later.
a_type *make_pointer_type_full(a_type *type, unsigned flags);
inline a_type *make_pointer_type(a_type *type) { return make_pointer_type_full(type, ptf_none); }
a_type *make_reference_type(a_type *type);
a_type *make_rvalue_reference_type(a_type *type);
a_type *make_lhsref_type(a_type *type);
a_type *make_pointer_type_of_same_kind(a_type *like, a_type *type);
a_type *ptr_to_member_type_full(a_type *type, a_type *class_type, unsigned flags);
extern bool ptr_to_member_function_types_used; // a type of a pointer to member function may exist
a_type *make_ptr_to_const_type(a_type *type);
// `limit` is the number of array levels that are copied at most; -1 for all.
a_type *f_make_qualified_type(a_type *type, a_type_qualifier_set qualifiers, int limit = -1);
a_type *make_unqualified_type(a_type *type);       // without top-level qualifiers
// A new typeref that carries the attributes; not shared.
a_type *make_typeref_with_attributes(a_type *type, an_attribute *attributes);
// Unshared array types: of a number of elements; without bound (bound absent).
a_type *make_array_type(a_type *element_type, a_target_size number_of_elements);
a_type *make_incomplete_array_type(a_type *element_type);
// A variably modified type with each variable bound left out, or 1 inside another array: what an
// object of the type is declared with where its bounds aren't known yet.  Other types unchanged.
a_type *type_without_variable_bounds(a_type *type);
// A new prototyped routine type with up to four parameters (null ends the list); not shared.
a_type *make_routine_type(a_type *return_type, a_type *p1 = nullptr, a_type *p2 = nullptr,
                          a_type *p3 = nullptr, a_type *p4 = nullptr);
void add_param_type(a_type *routine_type, a_param_type *param);  // appends
// Array of (const) characters with the length, terminator included.
a_type *string_literal_type(a_char_kind char_kind, a_target_size length);
a_type *string_type(a_target_size length);
extern bool wide_string_types_used;   // a string_literal_type of another kind than chk_char was asked for
a_type *cl_vector_type(uint64_t size, int int_kind, int float_kind, bool flag);
a_type *copy_type(a_type *type);                    // an unshared copy without names
a_type *copy_routine_type_with_param_types(a_type *routine_type);
a_type *routine_type_without_this_class(a_type *routine_type);
a_type *routine_type_without_param_type_qualifiers(a_type *routine_type);
a_type *routine_type_without_default_args(a_type *routine_type);
void do_based_type_fixup();
a_based_type_list_member *find_based_type(a_type *base, a_based_type_kind kind);
void add_based_type(a_type *base, a_based_type_kind kind, a_type *derived);

// ---- Kind predicates; each skips typerefs first ----

#define KIND_PREDICATE(name, test)                     \
  inline bool name(a_type *type)                       \
  {                                                    \
    type = skip_typerefs(type);                        \
    return test;                                       \
  }
KIND_PREDICATE(is_error_type, type->kind == tk_error)
KIND_PREDICATE(is_void_type, type->kind == tk_void)
KIND_PREDICATE(is_unknown_type, type->kind == tk_unknown)
KIND_PREDICATE(is_function_type, type->kind == tk_routine)
KIND_PREDICATE(is_array_type, type->kind == tk_array)
KIND_PREDICATE(is_enum_type, type->kind == tk_integer && type->variant.integer.is_enum)
KIND_PREDICATE(is_scoped_enum_type, type->kind == tk_integer && type->variant.integer.is_enum
                                        && type->variant.integer.enum_is_scoped)
KIND_PREDICATE(is_integral_or_enum_type, type->kind == tk_integer)
KIND_PREDICATE(is_integral_or_unscoped_enum_type,
               type->kind == tk_integer
                   && !(type->variant.integer.is_enum && type->variant.integer.enum_is_scoped))
KIND_PREDICATE(is_bool_type, type->kind == tk_integer && type->variant.integer.is_bool)
KIND_PREDICATE(is_real_floating_type, type->kind == tk_float)
KIND_PREDICATE(is_imaginary_type, type->kind == tk_imaginary)
KIND_PREDICATE(is_complex_type, type->kind == tk_complex)
KIND_PREDICATE(is_nonreal_floating_type, type->kind == tk_complex || type->kind == tk_imaginary)
KIND_PREDICATE(is_floating_type, kind_has_float_part(type->kind))
KIND_PREDICATE(is_class_struct_union_type, kind_has_class_part(type->kind))
KIND_PREDICATE(is_class_struct_type, type->kind == tk_class || type->kind == tk_struct)
KIND_PREDICATE(is_union_type, type->kind == tk_union)
KIND_PREDICATE(is_ptr_to_member_type, type->kind == tk_ptr_to_member)
KIND_PREDICATE(is_template_param_type, type->kind == tk_template_param)
KIND_PREDICATE(is_cl_vector_type, type->kind == tk_cl_vector)
KIND_PREDICATE(is_nullptr_type, type->kind == tk_nullptr)
KIND_PREDICATE(is_standard_nullptr_type, type->kind == tk_nullptr && !type->is_incomplete)
KIND_PREDICATE(is_managed_nullptr_type, type->kind == tk_nullptr && type->is_incomplete)
KIND_PREDICATE(is_pointer_type, type->kind == tk_pointer && !type->variant.pointer.is_reference)
KIND_PREDICATE(is_any_reference_type,
               type->kind == tk_pointer && type->variant.pointer.is_reference)
KIND_PREDICATE(is_rvalue_reference_type, type->kind == tk_pointer
                   && type->variant.pointer.is_reference && type->variant.pointer.is_rvalue)
KIND_PREDICATE(is_lhsref_type, type->kind == tk_pointer && type->variant.pointer.is_tracking)
KIND_PREDICATE(is_any_lvalue_reference_type, type->kind == tk_pointer
                   && type->variant.pointer.is_reference && !type->variant.pointer.is_rvalue)
KIND_PREDICATE(is_lvalue_reference_type, type->kind == tk_pointer
                   && type->variant.pointer.is_reference && !type->variant.pointer.is_rvalue
                   && !type->variant.pointer.is_tracking)
KIND_PREDICATE(is_any_ptr_or_ref_type, type->kind == tk_pointer)
#undef KIND_PREDICATE
inline bool is_reference_type(a_type *type) { return is_any_reference_type(type); }
inline bool is_ptr_or_ref_type(a_type *type) { return is_any_ptr_or_ref_type(type); }
inline bool is_pointer_or_handle_type(a_type *type) { return is_pointer_type(type); }

// ---- Predicates with a rule of their own ----

bool is_integral_type(a_type *type);             // an enum only when enum_type_is_integral
bool is_character_type(a_type *type);
bool is_object_type(a_type *type);
bool is_incomplete_type(a_type *type);
bool class_type_has_body(a_type *type);
bool is_incomplete_array_type(a_type *type);     // an array without bound
bool has_any_unknown_specified_bound(a_type *type);  // a VLA or dependent bound in any dimension
bool num_array_elements(a_type *type, a_target_size *count);  // all dimensions; false if unknown
bool is_scalar_type(a_type *type);
bool is_arithmetic_type(a_type *type);
bool is_arithmetic_or_enum_type(a_type *type);
bool is_arithmetic_or_unscoped_enum_type(a_type *type);
bool is_aggregate_or_union_type(a_type *type);
bool is_string_type(a_type *type);               // array of any character type
bool is_char_array_type(a_type *type);
bool is_wchar_t_array_type(a_type *type);
bool is_char16_t_array_type(a_type *type);
bool is_char32_t_array_type(a_type *type);
bool is_void_star_type(a_type *type);
bool is_ptrdiff_t_type(a_type *type);
bool is_struct_vector(a_type *type);
bool is_signed_integral_type(a_type *type);
bool is_unsigned_integral_type(a_type *type);
bool is_vla_type(a_type *type);                  // outermost dimension is of variable length
bool is_auto_type(a_type *type);                 // the placeholder of a deduced type
bool is_or_contains_template_param(a_type *type);
bool is_template_dependent_type(a_type *type);
bool is_instantiation_dependent_type(a_type *type);
bool is_or_contains_error_type(a_type *type);
bool is_or_contains_local_type(a_type *type);
bool is_or_contains_unnamed_namespace_type(a_type *type);
bool is_or_contains_type_with_no_name_linkage(a_type *type);
bool is_or_contains_trans_unit_specific_type(a_type *type);
bool is_variably_modified_type(a_type *type);
bool is_directly_variably_modified_type(a_type *type);   // without a pointer in between
bool is_nonlocal_variably_modified_type(a_type *type);
bool is_or_contains_vla_type_with_unspecified_bound(a_type *type);
bool type_has_side_effects(a_type *type);                // a VLA bound with side effects
// True when the type is qualified volatile or a class with a volatile member.
bool is_or_contains_volatile(a_type *type);

// ---- Accessors that skip typerefs ----

a_type *type_pointed_to(a_type *type);
a_type *array_element_type(a_type *type);
a_type *underlying_array_element_type(a_type *type);  // through all dimensions
a_type *skip_array_types(a_type *type);               // the same, for any type
a_type *pm_member_type(a_type *type);
a_type *pm_class_type(a_type *type);
a_type *return_type_of(a_type *type);
a_type *il_return_type_of(a_type *type);
a_param_type *param_types_of(a_type *type);
a_target_alignment f_alignment_of_type(a_type *type);
a_target_size size_of_type(a_type *type);             // completes the size if it is known late
an_integer_kind int_kind_of_type(a_type *type);
a_float_kind float_kind_of_type(a_type *type);
a_type *f_underlying_type_of_derived_type(a_type *type, bool *found);
a_type *find_bottom_of_type(a_type *type);
a_type *f_implicit_this_param_type_of(a_type *routine_type);
a_type *underlying_type_of_enum(a_type *type);        // the integer type, for an enum

// ---- Relations ----

// Options of f_identical_types.
enum an_identity_option : unsigned {
  ido_none                       = 0,
  ido_ignore_reference_kind      = 1,
  ido_ignore_missing_this_class  = 2,
  ido_use_correspondence         = 4,
  ido_unknown_coordinates_equal  = 8,
  ido_unknown_coordinates_differ = 16,
  ido_ignore_top_qualifiers      = 32,
  ido_class_option_64            = 64,
  ido_see_through_typedef_refs   = 128,
  ido_original_param_arrays      = 256,
  ido_class_option_512           = 512
};
bool f_identical_types(a_type *a, a_type *b, unsigned options);
inline bool identical_types(a_type *a, a_type *b)
{
  return a == b || f_identical_types(a, b, ido_none);
}

// Options of f_types_are_compatible.
enum a_compatibility_option : unsigned {
  tco_none                        = 0,
  tco_error_types                 = 1,     // an error type on either side is compatible
  tco_ignore_top_qualifiers       = 2,
  tco_array_bounds                = 4,     // arrays with and without a bound
  tco_ignore_linkage              = 8,
  tco_allow_linkage_difference    = 16,
  tco_ptr_to_member_64            = 64,
  tco_ptr_to_member_128           = 128,
  tco_enum_as_integer             = 256,
  tco_ignore_return_qualifiers    = 1024,
  tco_see_through_typedef_refs    = 2048,
  tco_record_calling_conventions  = 16384
};
struct a_type_difference {   // out-parameter of the full test
  a_type *routine_type_a;    // pair whose calling conventions differ
  a_type *routine_type_b;
};
bool f_types_are_compatible(a_type *a, a_type *b, unsigned options);
bool f_types_are_compatible_full(a_type *a, a_type *b, unsigned options,
                                 a_type_difference *differences);
inline bool types_are_compatible(a_type *a, a_type *b)
{
  return a == b || f_types_are_compatible(a, b, tco_none);
}
// The parameter lists of two routine types; handles lists without prototype.
bool param_types_are_compatible_full(a_type *a, a_type *b, unsigned options,
                                     a_type_difference *differences);
bool prototype_matches_unprototyped(a_type *prototyped);   // C99 6.7.5.3p15, no list on the other side
a_type *composite_type(a_type *a, a_type *b);
a_type *multilevel_composite_pointer_type(a_type *a, a_type *b);
bool cast_identical_types(a_type *a, a_type *b);
bool equiv_class_types(a_type *a, a_type *b, unsigned options);
bool interchangeable_types(a_type *a, a_type *b);          // same representation and meaning in C
bool integral_types_the_same_except_for_signedness(a_type *a, a_type *b);
bool calling_conventions_are_compatible(a_type *a, a_type *b);
bool routine_linkages_are_compatible(a_type *a, a_type *b, unsigned options);
bool same_exception_spec(an_exception_specification *a, an_exception_specification *b);
bool exception_spec_is_less_restrictive(an_exception_specification *a,
                                        an_exception_specification *b);
bool exception_spec_conversion_possible(a_type *from, a_type *to);
bool cl_vectors_are_same_type(a_type *a, a_type *b);
// The hook of owners whose types correspond across translation units; null with one unit.
extern bool (*types_correspond_hook)(a_type *a, a_type *b);

// ---- Promotion ----

a_type *type_after_integral_promotion(a_type *type);
// The promoted type of a bit-field of `width` bits (C99 6.3.1.1); old C promotes the declared type.
a_type *type_after_bit_field_integral_promotion(a_type *type, unsigned width);
a_type *default_argument_promotion(a_type *type);
a_type *usual_arithmetic_conversions(a_type *a, a_type *b);
a_type *type_after_array_to_pointer_transformation(a_type *type);

// ---- Conversions ----

// A standard conversion, filled by impl_conversion_possible.
struct a_std_conv_descr {
  a_base_class *base_class;          // base class step of a derived-to-base conversion
  bool ptr_to_member_step;
  bool qualification_added;          // at the first level
  bool ref_qualification_added;
  bool to_void_or_null;              // null pointer constant, or to void *
  bool is_conversion;                // starts true; cleared when no value change is needed
  bool is_promotion;
  bool is_to_bool;
  bool exception_spec_mismatch;
  bool string_literal_to_nonconst;   // the deprecated conversion
  bool real_to_complex;
  unsigned diagnostic;               // an_error_code of a warning to give when it is done, 0 none
};
void clear_std_conv_descr(a_std_conv_descr *descr);

// What the conversion tests must know of the source beside its type.
struct a_conversion_source {
  a_type *type;
  bool is_lvalue;
  bool is_constant;
  bool is_null_pointer_constant;  // integer constant 0, or that cast to void * in C
  bool is_string_literal;
};
bool impl_conversion_possible(const a_conversion_source *source, a_type *dest_type,
                              a_std_conv_descr *descr);
bool impl_pointer_conversion(const a_conversion_source *source, a_type *dest_type,
                             a_std_conv_descr *descr);
bool impl_ptr_to_member_conversion(const a_conversion_source *source, a_type *dest_type,
                                   a_std_conv_descr *descr);
bool expl_conversion_possible(const a_conversion_source *source, a_type *dest_type,
                              a_std_conv_descr *descr);
bool reinterpret_cast_conversion_possible(a_type *source_type, a_type *dest_type);
bool qualification_conversion_possible(a_type *source_type, a_type *dest_type);
bool qualification_conversion_possible_full(a_type *source_type, a_type *dest_type,
                                            bool *qualification_added);
bool cast_removes_qualifiers(a_type *source_type, a_type *dest_type);
bool same_type_with_added_qualifiers(a_type *source_type, a_type *dest_type);
bool f_related_class_pointers(a_type *source_type, a_type *dest_type, a_base_class **base_class,
                              bool *to_derived);
bool f_rel_member_pointers(a_type *source_type, a_type *dest_type, a_base_class **base_class,
                           bool *to_derived);
bool type_masks_handler_param_type(a_type *thrown_type, a_type *handler_type);
a_base_class *find_base_class_of(a_type *class_type, a_type *base_type);
bool is_same_class_or_base_class_thereof(a_type *base_type, a_type *class_type);

// ---- Size ----

void set_type_size(a_type *type);
// `report`: too large an array is error array_size_too_large, and the size is clamped.
void set_array_type_size(a_type *type, bool report);
// Rounds up; false and no change on overflow of 64 bits.
bool align(a_target_size *value, a_target_alignment alignment);

// ---- Walk ----

enum a_type_walk_option : unsigned {
  two_return_types       = 1,
  two_param_types        = 2,
  two_this_class         = 4,
  two_skip_all_typerefs  = 16,
  two_stop_at_qualifiers = 32,
  two_exception_specs    = 64,
  two_stop_at_named      = 128,   // at a named typeref the walk returns 0
  two_template_args      = 512
};
// Calls test on the type and its parts; non-zero ends the walk with that value.  The test may
// set *stop_descent to leave out the parts of this type.
int traverse_type_tree(a_type *type, int (*test)(a_type *type, bool *stop_descent),
                       unsigned options);

void types_one_time_init();
void types_trans_unit_init();   // clears the caches of shared types
