// folding.h - values of operators and casts on constants, with the target's arithmetic.
// A fault becomes a code and a severity first; the context (constant or not, value required or not,
// errors suppressed or not) then makes it a message, a stored code, or an operation that stays
// unfolded.
#pragma once
#include "consts/const_ints.h"
#include "consts/float_pt.h"
#include "errors/error.h"
#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

// result := left op right, of type result_type.  The operands are unchanged; `result` may not be
// one of them.  out_not_folded: no constant exists and the caller builds the expression;
// out_not_folded_by_template (may be null): because an operand depends on a template parameter.
// Issues 40, 62, 63, 64, 172, 177, 181, 224, 1101, 1371, 1407.
void binary_operation(an_expr_operator_kind op, const a_constant *left, const a_constant *right,
                      a_type *result_type, a_constant *result, bool is_constant_context,
                      bool value_required, bool *out_not_folded, bool *out_not_folded_by_template,
                      an_error_code *out_suppressed_error_code, const a_source_position *position);

// The same contract for one operand.
void unary_operation(an_expr_operator_kind op, const a_constant *operand, a_type *result_type,
                     a_constant *result, bool is_constant_context, bool value_required,
                     bool *out_not_folded, bool *out_not_folded_by_template,
                     an_error_code *out_suppressed_error_code, const a_source_position *position);

// Converts in place.  Issues 69, 70, 71, 175, 223, and those of class pointer casts.
void type_change_constant_full(a_constant *constant, a_type *new_type, bool is_implicit,
                               bool is_constant_context, bool value_required, bool favor_constant,
                               bool check_access, bool check_ambiguity, bool no_class_adjustment,
                               bool from_lvalue_conversion, bool *out_not_folded,
                               an_error_code *out_suppressed_error_code,
                               const a_source_position *position);
void type_change_constant(a_constant *constant, a_type *new_type, bool is_implicit,
                          bool *out_not_folded, const a_source_position *position);
// Never reports; false when the conversion isn't possible at translation time (constant unchanged).
bool implicit_cast(a_constant *constant, a_type *new_type);

// The address of an lvalue, or the value of a pointer expression, when it is a constant.
bool constant_lvalue_address(an_expr_node *expr, a_constant *constant, bool report,
                             bool *out_is_dependent);
bool constant_rvalue_pointer(an_expr_node *expr, a_constant *constant, bool report,
                             bool *out_is_dependent);

// Folds enk_builtin_operation nodes: type traits and __builtin_offsetof.  Issues 1331, 1700, 1714,
// 2051.
void fold_builtin_operation_if_possible(an_expr_node *node, a_constant *constant, unsigned flags,
                                        const a_source_position *position, bool *out_not_constant);
// Does a constant index of the designator lead beyond what the type of sizes can say?
bool offset_overflows(const an_expr_node *designator);

// The GNU built-in functions; true when the result was made.
bool fold_pow_if_possible(const a_constant *base, const a_constant *exponent, a_constant *result,
                          a_type *type);
bool fold_fptest_if_possible(const a_routine *routine, const a_constant *argument,
                             a_constant *result);
bool fold_bit_count_operation_if_possible(const a_routine *routine, const a_constant *argument,
                                          a_constant *result);
// Of a floating type: the value of __builtin_huge_val and __builtin_inf.
void make_huge_fp_val(a_constant *result, a_type *type);

// Tests.
bool is_null_pointer_constant(const a_constant *constant);
bool is_or_might_be_null_pointer_constant(const a_constant *constant);
bool constant_bool_value_known_at_compile_time(const a_constant *constant);
bool is_false_constant(const a_constant *constant); // only where the value is known
bool constant_is_pointer_to_string_literal(const a_constant *constant);
bool expr_is_pointer_to_string_literal(const an_expr_node *expr);
bool variable_has_non_null_address(const a_variable *variable);
bool routine_has_non_null_address(const a_routine *routine);
bool variable_has_constant_address(const a_variable *variable);

// Width and signedness in bits of an integer type (typerefs skipped; pointers as unsigned
// integers).
void get_integer_attributes(a_type *type, unsigned *bits, bool *is_signed);
// Tests a constant count; *code is ec_no_error when it is in range.  True when the shift has a
// value: a too large count is given one in GNU modes.
bool check_shift_count(const a_constant *count, a_type *type, an_error_code *code);
void conv_integer_to_integer(const a_constant *source, a_constant *result, bool report,
                             an_error_code *code, an_error_severity *severity);
// `code` null: no test of the range.  *code other than ec_no_error stays.
void trunc_and_set_integer(const an_integer_value *value, a_constant *result, bool is_signed,
                           bool saturate, an_error_code *code, an_error_severity *severity);
// Applies the conversion between related class pointers to a constant; false: it isn't constant, or
// *code.
bool fold_base_class_cast(a_constant *constant, a_type *new_type, bool check_access,
                          bool check_ambiguity, const a_source_position *position,
                          an_error_code *code);

void make_template_param_expr_constant(an_expr_node *expr, a_constant *result);
void make_template_param_cast_constant(const a_constant *source, a_type *new_type, bool is_implicit,
                                       a_constant *result);
