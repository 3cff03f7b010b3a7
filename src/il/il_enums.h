// il_enums.h - the IL's public vocabulary: every enumeration that more than one module numbers.
// The numbers are part of the vocabulary: tables in other modules are indexed by them.
#pragma once

// Kinds of IL entries.  One row each, with record and fields, in il_entities.def.
enum an_il_entry_kind : unsigned char {
  iek_none,
  iek_source_file,
  iek_constant,
  iek_param_type,
  iek_routine_type_supplement,
  iek_based_type_list_member,
  iek_type,
  iek_variable,
  iek_field,
  iek_exception_specification,
  iek_exception_specification_type,
  iek_routine,
  iek_label,
  iek_expr_node,
  iek_for_supplement,
  iek_switch_case_entry,
  iek_switch_supplement,
  iek_handler,
  iek_try_supplement,
  iek_block_supplement,
  iek_statement,
  iek_object_lifetime,
  iek_scope,
  iek_name_text,
  iek_string_text,
  iek_other_text,
  iek_complex_value,
  iek_namespace,
  iek_using_decl,
  iek_dynamic_init,
  iek_local_static_variable_init,
  iek_vla_dimension,
  iek_vcall_offset_entry,
  iek_overriding_virtual_function,
  iek_derivation_step,
  iek_base_class_derivation,
  iek_base_class,
  iek_class_list_entry,
  iek_routine_list_entry,
  iek_class_type_supplement,
  iek_template_param_type_supplement,
  iek_constructor_init,
  iek_asm_entry,
  iek_asm_operand,
  iek_named_register_list,
  iek_template_arg,
  iek_new_delete_supplement,
  iek_throw_supplement,
  iek_condition_supplement,
  iek_lowered_eh_routine_ref,
  iek_scope_orphaned_list_header,
  iek_pragma,
  iek_template,
  iek_macro,
  iek_per_instantiation_needed_flags_entry,
  iek_decl_position_supplement,
  iek_template_decl,
  iek_template_param,
  iek_name_reference,
  iek_name_qualifier,
  iek_seq_number_lookup_entry,
  iek_local_expr_node_ref,
  iek_local_scope_ref,
  iek_il_entity_list_entry,
  iek_lambda,
  iek_lambda_capture,
  iek_attribute,
  iek_attribute_arg,
  iek_attribute_group,
  iek_typeref_supplement,
  iek_enum_type_supplement,
  iek_last
};

// --- Types ---------------------------------------------------------------------------------------

enum a_type_kind : unsigned char {
  tk_error,
  tk_void,
  tk_integer,
  tk_float,
  tk_imaginary,
  tk_complex,
  tk_pointer,
  tk_routine,
  tk_array,
  tk_class,
  tk_struct,
  tk_union,
  tk_typeref,
  tk_ptr_to_member,
  tk_template_param,
  tk_cl_vector,
  tk_nullptr,
  tk_unknown,
  tk_last
};

enum an_integer_kind : unsigned char {
  ik_char,
  ik_signed_char,
  ik_unsigned_char,
  ik_short,
  ik_unsigned_short,
  ik_int,
  ik_unsigned_int,
  ik_long,
  ik_unsigned_long,
  ik_int40,
  ik_unsigned_int40,
  ik_long_long,
  ik_unsigned_long_long,
  ik_none  // no kind; the number of kinds as well
};

enum a_float_kind : unsigned char { fk_float, fk_double, fk_long_double, fk_none };

// Bits of a qualifier word.
typedef unsigned a_type_qualifier_set;
enum : unsigned { tq_const = 1, tq_volatile = 2, tq_restrict = 4, tq_packed = 8 };

// Kinds of derived types on a base type's list.
enum a_based_type_kind : unsigned char {
  btk_qualified,
  btk_rvalue_reference,
  btk_reference,
  btk_tracking_reference,
  btk_ptr_to_member,
  btk_qualified_array,
  btk_pointer
};

enum a_template_param_type_kind : unsigned char { tptk_param, tptk_member, tptk_unknown };

// --- Entities ------------------------------------------------------------------------------------

enum a_storage_class : unsigned char {
  sc_extern,
  sc_static,
  sc_auto,
  sc_unspecified,
  sc_typedef,
  sc_register
};

enum a_scope_kind : unsigned char {
  sck_file,
  sck_function_prototype,
  sck_block,
  sck_namespace,
  sck_namespace_extension,
  sck_namespace_reactivation,
  sck_class,
  sck_class_reactivation,
  sck_template_declaration,
  sck_template_instantiation,
  sck_instantiation_context,
  sck_pragma_rescan,
  sck_function_access,
  sck_condition,
  sck_enum,
  sck_function
};

// Values of name_linkage; the texts are name_linkage_kind_names.
enum a_name_linkage_kind : unsigned char { nlk_none, nlk_internal, nlk_cplusplus, nlk_c };

enum a_routine_special_kind : unsigned char {
  sfk_none,
  sfk_constructor,
  sfk_destructor,
  sfk_conversion,
  sfk_operator
};

enum an_access_specifier : unsigned char { as_public, as_protected, as_private, as_inaccessible };

// ELF visibility of variables, routines, classes and namespaces.
enum an_elf_visibility : unsigned char {
  vis_unspecified,
  vis_hidden,
  vis_protected,
  vis_internal,
  vis_default
};

// weak_state of variables and routines.
enum a_weak_state : unsigned char { ws_none, ws_weak, ws_weakref };

// Where the initial value of a variable stands.
enum an_init_kind : unsigned char {
  initk_none,
  initk_static,           // an a_constant
  initk_dynamic,          // an a_dynamic_init
  initk_zero,             // defined by zeroing
  initk_function_local    // on the local_static_inits of an enclosing scope
};

enum a_char_kind : unsigned char { chk_char, chk_wchar_t, chk_char16_t, chk_char32_t, chk_last };

// --- Constants -----------------------------------------------------------------------------------

enum a_constant_kind : unsigned char {
  ck_error,
  ck_integer,
  ck_string,
  ck_float,
  ck_complex,
  ck_imaginary,
  ck_address,
  ck_ptr_to_member,
  ck_address_difference,
  ck_dynamic_init,
  ck_aggregate,
  ck_init_repeat,
  ck_template_param,
  ck_designator,
  ck_last
};

enum an_address_constant_kind : unsigned char {
  ack_routine,
  ack_variable,
  ack_constant,
  ack_uuidof,
  ack_typeid,
  ack_label,
  ack_last
};

enum a_template_param_constant_kind : unsigned char {
  tpck_param,
  tpck_expression,
  tpck_unknown_function,
  tpck_address_of_unknown_function,
  tpck_cast,
  tpck_address_of_constant,
  tpck_sizeof,
  tpck_alignof,
  tpck_uuidof,
  tpck_typeid,
  tpck_unknown_function_with_args,
  tpck_last
};

// Bits of the options word of compare_constants.
enum : unsigned {
  cco_same_type = 1,             // types must be the same, and the integer forms too
  cco_no_template_params = 2,    // template parameter constants never match
  cco_param_matches_all = 8      // a tpck_param matches anything
};

// --- Expressions ---------------------------------------------------------------------------------

enum an_expr_node_kind : unsigned char {
  enk_error,
  enk_operation,
  enk_constant,
  enk_variable,
  enk_field,
  enk_temp_init,
  enk_new_delete,
  enk_lambda,
  enk_throw,
  enk_condition,
  enk_lifetime_wrapper,
  enk_typeid,
  enk_sizeof,
  enk_sizeof_pack,
  enk_address_of_ellipsis,
  enk_statement_expr,
  enk_temp_ref,
  enk_lowered_eh_construct,
  enk_wrapper_call,
  enk_routine,
  enk_variable_marker,
  enk_type_operand,
  enk_builtin_operation,
  enk_param_ref,
  enk_last
};

enum a_lowered_eh_kind : unsigned char {
  lek_caught_object_address,
  lek_thrown_object_address,
  lek_cleanup_state,
  lek_unreachable_cleanup_state,
  lek_function_prologue,
  lek_function_epilogue,
  lek_catch_epilogue,
  lek_try_epilogue,
  lek_exception_caught,
  lek_exception_started,
  lek_initialization_completed,
  lek_internal_try,
  lek_last
};

// Operators of enk_operation.  Numbers without a name are free.
enum an_expr_operator_kind : unsigned char {
  eok_address_of = 0,
  eok_reference_to = 1,
  eok_indirection = 3,
  eok_ref_indirection = 4,
  eok_cast = 5,
  eok_lvalue_cast = 6,
  eok_reference_cast = 7,
  eok_cast_to_lvalue = 8,
  eok_rvalue_class_adjust = 9,
  eok_derived_to_base = 14,
  eok_base_to_derived = 15,
  eok_ptr_to_member_base_cast = 16,
  eok_ptr_to_member_derived_cast = 17,
  eok_dynamic_cast = 18,
  eok_dynamic_cast_lvalue = 19,
  eok_cast_to_bool = 20,
  eok_array_to_pointer = 21,
  eok_rvalue_cast = 22,            // becomes eok_cast in lowering, as does the next
  eok_rvalue_qualifier_cast = 23,
  eok_negate = 25,
  eok_plus = 26,
  eok_complement = 27,
  eok_not = 28,
  eok_conj = 29,
  eok_real = 30,
  eok_imag = 31,
  eok_pre_incr = 32,
  eok_pre_decr = 33,
  eok_post_incr = 34,
  eok_post_decr = 35,
  eok_add = 36,
  eok_subtract = 37,
  eok_multiply = 38,
  eok_divide = 39,
  eok_remainder = 40,
  eok_multiply_complex = 41,
  eok_divide_complex = 42,
  eok_add_complex_1 = 43,
  eok_add_complex_2 = 44,
  eok_subtract_complex_1 = 45,
  eok_subtract_complex_2 = 46,
  eok_pointer_add = 47,
  eok_pointer_subtract = 48,
  eok_pointer_difference = 49,
  eok_shift_left = 50,
  eok_shift_right = 51,
  eok_bit_and = 52,
  eok_bit_or = 53,
  eok_bit_xor = 54,
  eok_eq = 55,
  eok_ne = 56,
  eok_gt = 57,
  eok_lt = 58,
  eok_ge = 59,
  eok_le = 60,
  eok_min = 61,
  eok_max = 62,
  eok_assign = 63,
  eok_add_assign = 64,
  eok_subtract_assign = 65,
  eok_multiply_assign = 66,
  eok_divide_assign = 67,
  eok_remainder_assign = 68,
  eok_shift_left_assign = 69,
  eok_shift_right_assign = 70,
  eok_bit_and_assign = 71,
  eok_bit_or_assign = 72,
  eok_bit_xor_assign = 73,
  eok_pointer_add_assign = 74,
  eok_pointer_subtract_assign = 75,
  eok_struct_assign = 76,
  eok_land = 77,
  eok_lor = 78,
  eok_comma = 79,
  eok_subscript = 80,
  eok_dot_field = 81,
  eok_arrow_field = 82,
  eok_dot_member = 83,
  eok_arrow_member = 84,
  eok_dot_bound_function = 85,      // pm functions bound to an object
  eok_arrow_bound_function = 86,
  eok_dot_static = 87,              // a static member selected through an object
  eok_arrow_static = 88,
  eok_virtual_function = 89,        // the virtual function of an object, as a value
  eok_question = 90,
  eok_call = 91,
  eok_virtual_call = 92,
  eok_ptr_to_member_call = 93,
  eok_va_start = 97,
  eok_va_arg = 98,
  eok_va_end = 99,
  eok_va_copy = 100,
  eok_varargs_start = 101,
  eok_va_parmadr = 102,
  eok_cl_widen = 103,
  eok_cl_vector_element = 104,
  eok_cl_vector_literal = 105,
  eok_cl_select = 106,
  eok_cl_convert = 107,
  eok_cl_as = 108,
  eok_cl_vector_compare_first = 109,
  eok_cl_vector_compare = 111,
  eok_cl_vector_compare_last = 114,
  eok_cl_multiply = 120,
  eok_cl_divide = 121,
  eok_cl_pre_incr = 131,
  eok_cl_pre_decr = 132,
  eok_cl_post_incr = 133,
  eok_cl_post_decr = 134,
  eok_cl_assign = 135,
  eok_cl_add_assign = 136,
  eok_cl_subtract_assign = 137,
  eok_cl_multiply_assign = 138,
  eok_cl_divide_assign = 139,
  eok_cl_assign_last = 145,
  eok_generic = 146,                // operation of a template-dependent expression
  eok_none = 147,                   // no valid operator
  eok_last = 148                    // end mark; what a cleared operation node holds
};

// Operators of enk_builtin_operation; the texts are builtin_operation_names.
enum a_builtin_operation_kind : unsigned char {
#define BUILTIN_OPERATION(kind, number, spelling) kind = number,
#include "il/builtin_operations.def"
  bok_last = 40
};

// --- Statements ----------------------------------------------------------------------------------

enum a_statement_kind : unsigned char {
  stmk_expr,
  stmk_if,
  stmk_while,
  stmk_goto,
  stmk_label,
  stmk_return,
  stmk_block,
  stmk_do,
  stmk_for,
  stmk_case,
  stmk_switch,
  stmk_init,
  stmk_asm,
  stmk_try,
  stmk_decl_entities,
  stmk_vla_decl,
  stmk_type_or_var_decl,
  stmk_computed_goto,     // GNU: goto *expr
  stmk_vla_dealloc,       // end of a VLA's life; prints as an empty statement
  stmk_last
};

// --- Initialization and lifetimes ----------------------------------------------------------------

enum a_dynamic_init_kind : unsigned char {
  dik_none,
  dik_zero,
  dik_constant,
  dik_expression,
  dik_call_returning_class,
  dik_constructor,
  dik_constant_via_temp,
  dik_bitwise_copy,
  dik_last
};

enum an_object_lifetime_kind : unsigned char {
  olk_global,             // root of a namespace or file scope
  olk_block,              // block or function body
  olk_expression,         // temporaries of a full expression
  olk_function,           // outermost of a function
  olk_useless             // nothing to do
};

enum a_constructor_init_kind : unsigned char { cik_virtual_base, cik_direct_base, cik_field };

// What an a_local_expr_node_ref stands for.
enum a_local_expr_use : unsigned char {
  leu_array_bound = 1,
  leu_default_arg = 2,
  leu_decl_expr = 3,
  leu_other = 4
};

// --- Templates, attributes -----------------------------------------------------------------------

enum a_template_arg_kind : unsigned char { tak_type, tak_constant, tak_template, tak_pack_start };

enum a_template_kind : unsigned char {
  templk_none,
  templk_class,
  templk_function,
  templk_member_function,
  templk_static_data_member,
  templk_member_class,
  templk_template_template_param
};

enum an_attribute_syntax : unsigned char { asy_none, asy_standard, asy_gnu, asy_declspec };

enum an_attribute_arg_kind : unsigned char {
  aak_none,
  aak_empty,
  aak_tokens,
  aak_constant,
  aak_expression,
  aak_name,
  aak_type
};

// Values of curr_fp_contract_state and its kin.
enum an_stdc_pragma_state : unsigned char { sps_none, sps_off, sps_on, sps_default };
