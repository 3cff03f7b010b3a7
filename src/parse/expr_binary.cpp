// expr_binary.cpp - binary operators, the conditional operator and the comma.
// Rule:    each handler scans its right operand at its own precedence, converts both, and leaves
//          folding and
//          node building to do_binary_operation.
// Entry:   the handlers of operators.def.
// See:     C99 6.5.5 to 6.5.15, 6.5.17.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Operators and tokens

an_expr_operator_kind which_binary_operator(unsigned token, a_type *type)
{
  bool is_pointer = is_pointer_type(type);
  switch (token) {
  case tok_plus: return is_pointer ? eok_pointer_add : eok_add;
  case tok_minus: return is_pointer ? eok_pointer_subtract : eok_subtract;
  case tok_star: return eok_multiply;
  case tok_divide: return eok_divide;
  case tok_remainder: return eok_remainder;
  case tok_shift_left: return eok_shift_left;
  case tok_shift_right: return eok_shift_right;
  case tok_ampersand: return eok_bit_and;
  case tok_or: return eok_bit_or;
  case tok_excl_or: return eok_bit_xor;
  case tok_eq: return eok_eq;
  case tok_ne: return eok_ne;
  case tok_lt: return eok_lt;
  case tok_gt: return eok_gt;
  case tok_le: return eok_le;
  case tok_ge: return eok_ge;
  case tok_gnu_min: return eok_min;
  case tok_gnu_max: return eok_max;
  case tok_and_and: return eok_land;
  case tok_or_or: return eok_lor;
  case tok_plus_assign: return is_pointer ? eok_pointer_add_assign : eok_add_assign;
  case tok_minus_assign: return is_pointer ? eok_pointer_subtract_assign : eok_subtract_assign;
  case tok_times_assign: return eok_multiply_assign;
  case tok_divide_assign: return eok_divide_assign;
  case tok_remainder_assign: return eok_remainder_assign;
  case tok_shift_left_assign: return eok_shift_left_assign;
  case tok_shift_right_assign: return eok_shift_right_assign;
  case tok_and_assign: return eok_bit_and_assign;
  case tok_or_assign: return eok_bit_or_assign;
  case tok_excl_or_assign: return eok_bit_xor_assign;
  case tok_assign: return assignment_operator_for_type(type);
  default: return eok_none;
  }
}

a_type *boolean_result_type()
{
  if (C_dialect == 2 && bool_is_keyword) return bool_type();
  return integer_type(ik_int);
}

// Steps over the operator and scans the right operand of a left-associative one.  True when an
// operator function does the rest.
static bool scan_right_operand(int precedence, a_token_kind *token, a_source_position *pos,
                               an_operand *left, an_operand *right, an_operand *result)
{
  *token = curr_token;
  *pos = pos_curr_token;
  get_token();
  scan_expression(right, nullptr, precedence, 0);
  return C_dialect == 2 && do_overloaded_operator(*token, pos, left, right, result);
}

static void transform_both(an_operand *left, an_operand *right)
{
  do_operand_transformations(left, 0);
  do_operand_transformations(right, 0);
}

static void make_failed_result(an_operand *left, an_operand *right, an_operand *result)
{
  change_operand_refs_to_error(left);
  change_operand_refs_to_error(right);
  make_error_operand(result);
}

// Applies a check of exprutil.h to both operands, so that each is reported; false leaves an error.
static bool check_both(bool (*check_operand)(an_operand *), an_operand *left, an_operand *right,
                       an_operand *result)
{
  bool left_ok = check_operand(left);
  bool right_ok = check_operand(right);
  if (left_ok && right_ok) return true;
  make_failed_result(left, right, result);
  return false;
}

static void report_incompatible(an_operand *left, an_operand *right, a_source_position *pos)
{
  if (left->kind == ok_error || right->kind == ok_error) return;
  if (is_error_type(left->type) || is_error_type(right->type)) return;
  expr_pos_ty2_diagnostic(es_error, ec_incompatible_operands, *pos, left->type, right->type);
}

// The operand stays real or imaginary.
static void change_float_kind(a_float_kind kind, an_operand *operand)
{
  do_operand_transformations(operand, 0);
  a_type *type = is_imaginary_type(operand->type) ? imaginary_type(kind) : float_type(kind);
  cast_operand(type, operand, false);
}

// Both arithmetic: converts to the common type and does the operation.
static void do_arithmetic(a_token_kind token, an_operand *left, an_operand *right,
                          a_source_position *pos, an_operand *result)
{
  if (check_misra_c_2004) misra_hooks.misra_check_binary_operands(left, right);
  a_type *type = determine_arithmetic_conversions(left, right);
  an_expr_operator_kind op = which_binary_operator(token, type);
  a_type *result_type = type;
  if (is_imaginary_type(left->type) || is_imaginary_type(right->type)) {
    result_type = determine_imaginary_operation_type(op, left->type, right->type, type);
    if (!is_complex_type(result_type)) {
      // A product of the parts: no operand becomes complex.
      change_float_kind(float_kind_of_type(type), left);
      change_float_kind(float_kind_of_type(type), right);
      do_binary_operation(op, left, right, result_type, result, pos, token);
      return;
    }
    type = result_type;
  }
  change_binary_operand_types(type, left, right);
  do_binary_operation(op, left, right, result_type, result, pos, token);
}

// -------------------------------------------------------------------------------------------------
// * / %

void scan_multiplicative_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token;
  a_source_position pos;
  an_operand right;
  if (scan_right_operand(prec_multiplicative, &token, &pos, left, &right, result)) return;
  transform_both(left, &right);
  bool integral_only = token == tok_remainder;
  bool left_ok =
      integral_only ? check_integral_or_enum_operand(left) : check_arithmetic_or_enum_operand(left);
  bool right_ok = integral_only ? check_integral_or_enum_operand(&right)
                                : check_arithmetic_or_enum_operand(&right);
  if (!left_ok || !right_ok) {
    make_failed_result(left, &right, result);
    return;
  }
  do_arithmetic(token, left, &right, &pos, result);
}

// -------------------------------------------------------------------------------------------------
// + -

// The index of pointer arithmetic keeps its own type after promotion.
static void do_pointer_and_integer(a_token_kind token, an_operand *pointer, an_operand *index,
                                   a_source_position *pos, an_operand *result)
{
  if (!check_object_pointer_operand(pointer) || !check_integral_or_enum_operand(index)) {
    make_failed_result(pointer, index, result);
    return;
  }
  promote_operand(index);
  an_expr_operator_kind op = token == tok_minus ? eok_pointer_subtract : eok_pointer_add;
  do_binary_operation(op, pointer, index, rvalue_type(pointer->type), result, pos, token);
  if (result->kind != ok_error) rule_out_expr_kinds(rule_out_integral_constant, result);
}

static void do_pointer_difference(an_operand *left, an_operand *right, a_source_position *pos,
                                  an_operand *result)
{
  if (!check_object_pointer_operand(left) || !check_object_pointer_operand(right)) {
    make_failed_result(left, right, result);
    return;
  }
  a_type *left_object = type_pointed_to(left->type), *right_object = type_pointed_to(right->type);
  if (!f_types_are_compatible(left_object, right_object, tco_ignore_top_qualifiers)) {
    bool same_size = !is_incomplete_type(left_object) && !is_incomplete_type(right_object) &&
                     size_of_type(left_object) == size_of_type(right_object);
    bool lax = C_dialect != 2 && !strict_ansi_mode && same_size;
    if (!lax) {
      report_incompatible(left, right, pos);
      make_failed_result(left, right, result);
      return;
    }
    expr_pos_ty2_diagnostic(es_warning, ec_nonstandard_ptr_minus_ptr, *pos, left->type,
                            right->type);
    cast_operand(rvalue_type(left->type), right, false);
  }
  do_binary_operation(eok_pointer_difference, left, right, ptrdiff_t_type(), result, pos,
                      tok_minus);
}

void scan_additive_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token;
  a_source_position pos;
  an_operand right;
  if (scan_right_operand(prec_additive, &token, &pos, left, &right, result)) return;
  transform_both(left, &right);
  bool left_pointer = left->kind != ok_error && is_pointer_type(left->type);
  bool right_pointer = right.kind != ok_error && is_pointer_type(right.type);
  if (left_pointer && right_pointer && token == tok_minus) {
    do_pointer_difference(left, &right, &pos, result);
  } else if (left_pointer && !right_pointer) {
    do_pointer_and_integer(token, left, &right, &pos, result);
  } else if (right_pointer && !left_pointer && token == tok_plus) {
    a_source_position start = left->position, end = right.end_position;
    do_pointer_and_integer(token, &right, left, &pos, result);
    result->position = start;
    result->end_position = end;
  } else {
    bool left_ok = check_arithmetic_or_enum_operand(left);
    bool right_ok = check_arithmetic_or_enum_operand(&right);
    if (!left_ok || !right_ok) {
      make_failed_result(left, &right, result);
      return;
    }
    do_arithmetic(token, left, &right, &pos, result);
  }
}

// -------------------------------------------------------------------------------------------------
// << >> & | ^ <? >?

// A shift whose operands aren't both constants has its count checked here; folding checks the
// others.
void check_count_of_unfolded_shift(an_operand *left, an_operand *right)
{
  if (right->kind != ok_constant || left->kind == ok_constant || !expr_stack->value_required)
    return;
  an_error_code code = ec_no_error;
  check_shift_count(&right->value.constant, left->type, &code);
  if (code != ec_no_error) expr_pos_warning(code, right->position);
}

void scan_shift_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token;
  a_source_position pos;
  an_operand right;
  if (scan_right_operand(prec_shift, &token, &pos, left, &right, result)) return;
  transform_both(left, &right);
  if (!check_both(check_integral_or_enum_operand, left, &right, result)) return;
  if (C_dialect == 1) { // K&R: the usual arithmetic conversions apply to the left operand too
    a_type *type = determine_arithmetic_conversions(left, &right);
    cast_operand(type, left, false);
  }
  if (check_misra_c_2004) misra_hooks.misra_check_shift_count(left, &right);
  promote_operand(left);
  promote_operand(&right);
  check_count_of_unfolded_shift(left, &right);
  do_binary_operation(which_binary_operator(token, left->type), left, &right,
                      rvalue_type(left->type), result, &pos, token);
}

void scan_bit_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token;
  a_source_position pos;
  an_operand right;
  int precedence = curr_token == tok_ampersand ? prec_bit_and
                   : curr_token == tok_excl_or ? prec_bit_xor
                                               : prec_bit_or;
  if (scan_right_operand(precedence, &token, &pos, left, &right, result)) return;
  transform_both(left, &right);
  if (!check_both(check_integral_or_enum_operand, left, &right, result)) return;
  do_arithmetic(token, left, &right, &pos, result);
}

void scan_min_max_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token;
  a_source_position pos;
  an_operand right;
  if (scan_right_operand(prec_min_max, &token, &pos, left, &right, result)) return;
  transform_both(left, &right);
  bool pointers = is_pointer_type(left->type) && is_pointer_type(right.type);
  if (pointers) {
    a_type *type;
    if (!check_compatibility_of_pointer_operands(left, &right, token, &pos, &type)) {
      make_failed_result(left, &right, result);
      return;
    }
    change_binary_operand_types(type, left, &right);
    do_binary_operation(which_binary_operator(token, integer_type(ik_int)), left, &right, type,
                        result, &pos, token);
    return;
  }
  if (!check_both(check_arithmetic_or_enum_operand, left, &right, result)) return;
  do_arithmetic(token, left, &right, &pos, result);
}

// -------------------------------------------------------------------------------------------------
// Comparisons

// Unsigned against zero or a negative constant; the operands are not converted yet.
static void check_unsigned_comparison(a_token_kind token, an_operand *left, an_operand *right,
                                      a_source_position *pos)
{
  if (!expr_stack->value_required || expr_stack->expression_kind == ek_preprocessing) return;
  bool swapped = left->kind == ok_constant && right->kind != ok_constant;
  an_operand *value = swapped ? right : left, *constant = swapped ? left : right;
  if (constant->kind != ok_constant || value->kind == ok_constant) return;
  if (constant->value.constant.kind != ck_integer) return;
  if (!is_integral_or_enum_type(value->type)) return;
  a_type *promoted = determine_arithmetic_conversions(value, value); // a narrow bit-field is an int
  if (is_bool_type(value->type) || !is_unsigned_integral_type(promoted)) return;
  bool is_signed = !is_unsigned_integral_type(constant->type);
  int sign = is_signed ? cmplit_integer_constant(&constant->value.constant, 0)
                       : cmpulit_integer_constant(&constant->value.constant, 0);
  bool with_zero =
      swapped ? token == tok_gt || token == tok_le : token == tok_lt || token == tok_ge;
  if (sign == 0 && with_zero) {
    expr_pos_warning(ec_unsigned_compare_with_zero, *pos);
  } else if (sign < 0) {
    expr_pos_warning(ec_unsigned_compare_with_negative, *pos);
  }
}

// Signed against unsigned, where the signed value may be negative.
static void check_mixed_comparison(an_operand *left, an_operand *right, a_source_position *pos)
{
  if (!expr_stack->value_required || expr_stack->expression_kind == ek_preprocessing) return;
  if (!is_integral_or_enum_type(left->type) || !is_integral_or_enum_type(right->type)) return;
  if (left->kind == ok_constant || right->kind == ok_constant) return;
  a_type *common = determine_arithmetic_conversions(left, right);
  if (!is_unsigned_integral_type(common)) return;
  a_type *left_type = type_after_integral_promotion(rvalue_type(left->type));
  a_type *right_type = type_after_integral_promotion(rvalue_type(right->type));
  if (is_unsigned_integral_type(left_type) == is_unsigned_integral_type(right_type)) return;
  expr_pos_diagnostic(es_remark, ec_signed_unsigned_comparison, *pos);
}

static void do_pointer_comparison(a_token_kind token, an_operand *left, an_operand *right,
                                  a_source_position *pos, an_operand *result)
{
  a_type *type;
  if (!check_compatibility_of_pointer_operands(left, right, token, pos, &type)) {
    make_failed_result(left, right, result);
    return;
  }
  change_binary_operand_types(type, left, right);
  do_binary_operation(which_binary_operator(token, integer_type(ik_int)), left, right,
                      boolean_result_type(), result, pos, token);
  if (result->kind != ok_error) rule_out_expr_kinds(rule_out_integral_constant, result);
}

// One side takes the other's type: a null pointer constant, a member of a base class.
bool check_ptr_to_member_operands_for_compatibility(an_operand *left, an_operand *right)
{
  an_error_code warning;
  an_error_severity severity;
  if (is_ptr_to_member_type(right->type) &&
      implicit_conversion_possible(left, right->type, &warning, &severity)) {
    cast_operand(right->type, left, false);
    return true;
  }
  if (is_ptr_to_member_type(left->type) &&
      implicit_conversion_possible(right, left->type, &warning, &severity)) {
    cast_operand(left->type, right, false);
    return true;
  }
  return false;
}

static void do_ptr_to_member_comparison(a_token_kind token, an_operand *left, an_operand *right,
                                        a_source_position *pos, an_operand *result)
{
  bool is_equality = token == tok_eq || token == tok_ne;
  if (!is_equality || !check_ptr_to_member_operands_for_compatibility(left, right)) {
    report_incompatible(left, right, pos);
    make_failed_result(left, right, result);
    return;
  }
  do_binary_operation(token == tok_eq ? eok_eq : eok_ne, left, right, boolean_result_type(), result,
                      pos, token);
  if (result->kind != ok_error) rule_out_expr_kinds(rule_out_integral_constant, result);
}

static void do_comparison(a_token_kind token, an_operand *left, an_operand *right,
                          a_source_position *pos, an_operand *result)
{
  transform_both(left, right);
  if (left->kind == ok_error || right->kind == ok_error) {
    make_failed_result(left, right, result);
    return;
  }
  if (is_ptr_to_member_type(left->type) || is_ptr_to_member_type(right->type)) {
    do_ptr_to_member_comparison(token, left, right, pos, result);
    return;
  }
  if (is_pointer_type(left->type) || is_pointer_type(right->type)) {
    bool scalars = is_scalar_type(left->type) && is_scalar_type(right->type);
    if (!scalars || is_floating_type(left->type) || is_floating_type(right->type)) {
      report_incompatible(left, right, pos);
      make_failed_result(left, right, result);
      return;
    }
    do_pointer_comparison(token, left, right, pos, result);
    return;
  }
  if (!check_both(check_arithmetic_or_enum_operand, left, right, result)) return;
  check_unsigned_comparison(token, left, right, pos);
  check_mixed_comparison(left, right, pos);
  if (check_misra_c_2004) misra_hooks.misra_check_binary_operands(left, right);
  a_type *type = determine_arithmetic_conversions(left, right);
  change_binary_operand_types(type, left, right);
  do_binary_operation(which_binary_operator(token, type), left, right, boolean_result_type(),
                      result, pos, token);
}

void scan_relational_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token;
  a_source_position pos;
  an_operand right;
  if (scan_right_operand(prec_relational, &token, &pos, left, &right, result)) return;
  transform_both(left, &right);
  bool complex = (left->kind != ok_error && is_nonreal_floating_type(left->type)) ||
                 (right.kind != ok_error && is_nonreal_floating_type(right.type));
  if (complex) {
    expr_pos_error(ec_complex_type_not_allowed,
                   is_nonreal_floating_type(left->type) ? left->position : right.position);
    make_failed_result(left, &right, result);
    return;
  }
  do_comparison(token, left, &right, &pos, result);
}

void scan_equality_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token;
  a_source_position pos;
  an_operand right;
  if (scan_right_operand(prec_equality, &token, &pos, left, &right, result)) return;
  do_comparison(token, left, &right, &pos, result);
}

// -------------------------------------------------------------------------------------------------
// && ||

// True when the left operand is known to decide the result.
static bool left_decides(an_operand *left, bool is_and)
{
  if (left->kind != ok_constant ||
      !constant_bool_value_known_at_compile_time(&left->value.constant))
    return false;
  return is_false_constant(&left->value.constant) == is_and;
}

static void scan_conditionally(an_operand *operand, int precedence, unsigned flags, bool is_dead)
{
  bool saved_conditional = expr_stack->conditionally_evaluated;
  bool saved_required = expr_stack->value_required;
  expr_stack->conditionally_evaluated = true;
  if (is_dead) expr_stack->value_required = false;
  scan_expression(operand, nullptr, precedence, flags);
  expr_stack->value_required = saved_required;
  expr_stack->conditionally_evaluated = saved_conditional;
}

// C++: a class operand was converted to a built-in type once both operands were known.
static void finish_logical_operator(a_token_kind token, an_operand *left, an_operand *right,
                                    a_source_position *pos, an_operand *result)
{
  transform_both(left, right);
  if (!check_both(check_scalar_operand, left, right, result)) return;
  do_binary_operation(token == tok_and_and ? eok_land : eok_lor, left, right, boolean_result_type(),
                      result, pos, token);
}

void scan_logical_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token;
  bool is_and = token == tok_and_and;
  an_operand right;
  if (C_dialect == 2 && is_class_struct_union_type(left->type)) {
    get_token();
    scan_expression(&right, nullptr, is_and ? prec_logical_and : prec_logical_or, 0);
    if (do_overloaded_operator(token, &pos, left, &right, result)) return;
    finish_logical_operator(token, left, &right, &pos, result);
    return;
  }
  do_operand_transformations(left, 0);
  bool left_ok = check_scalar_operand(left);
  flush_ref_entries_except(nullptr, nullptr);
  left->ref_entries = left->last_ref_entry = nullptr;
  bool dead = left_ok && left_decides(left, is_and);
  get_token();
  scan_conditionally(&right, is_and ? prec_logical_and : prec_logical_or, 0, dead);
  if (C_dialect == 2 && do_overloaded_operator(token, &pos, left, &right, result)) return;
  bool saved_required = expr_stack->value_required;
  if (dead) expr_stack->value_required = false;
  do_operand_transformations(&right, 0);
  bool right_ok = check_scalar_operand(&right);
  expr_stack->value_required = saved_required;
  if (!left_ok || !right_ok) {
    make_failed_result(left, &right, result);
    return;
  }
  a_type *type = boolean_result_type();
  if (dead && right.kind != ok_constant &&
      !(right.kind == ok_expression && has_statement_expression(right.value.expr))) {
    a_source_position start = left->position, end = right.end_position;
    unsigned ruled_out = left->ruled_out_expr_kinds | right.ruled_out_expr_kinds;
    make_integer_constant_operand(is_and ? 0 : 1, type, result);
    result->position = start;
    result->end_position = end;
    result->ruled_out_expr_kinds = (unsigned char)ruled_out;
    return;
  }
  do_binary_operation(is_and ? eok_land : eok_lor, left, &right, type, result, &pos, token);
}

// -------------------------------------------------------------------------------------------------
// ?:

static bool both_are(bool (*test)(a_type *), an_operand *a, an_operand *b)
{
  return test(a->type) && test(b->type);
}

static bool is_null_constant_operand(an_operand *operand)
{
  return operand->kind == ok_constant && is_null_pointer_constant(&operand->value.constant);
}

static bool is_void_operand(an_operand *operand)
{
  return is_void_type(operand->type);
}

static bool is_throw_operand(const an_operand *operand)
{
  return operand->kind == ok_expression && operand->value.expr->kind == enk_throw;
}

// The pointed-to types' composite with the qualifiers of both sides; false after error 43.
static a_type *type_of_conditional_with_pointers(an_operand *second, an_operand *third,
                                                 a_source_position *pos)
{
  a_type *type;
  if (!check_compatibility_of_pointer_operands(second, third, tok_quest_mark, pos, &type))
    return nullptr;
  return type;
}

// The result type of the two arms, converting both to it; null after an error.
static a_type *convert_arms(an_operand *second, an_operand *third, bool *is_void,
                            a_source_position *pos)
{
  *is_void = false;
  if (is_throw_operand(second) && !is_void_operand(third)) return rvalue_type(third->type);
  if (is_throw_operand(third) && !is_void_operand(second)) return rvalue_type(second->type);
  if (is_void_operand(second) || is_void_operand(third)) {
    bool both = both_are(is_void_type, second, third);
    if (!both && strict_ansi_mode && C_dialect != 2) {
      expr_pos_ty2_diagnostic(strict_ansi_error_severity, ec_incompatible_operands, *pos,
                              second->type, third->type);
      if (strict_ansi_error_severity >= es_error) return nullptr;
    }
    *is_void = true;
    return void_type();
  }
  if (both_are(is_arithmetic_or_enum_type, second, third)) {
    if (check_misra_c_2004) misra_hooks.misra_check_binary_operands(second, third);
    a_type *type = rvalue_type(second->type);
    bool same = identical_types(type, rvalue_type(third->type)) &&
                (C_dialect == 2 || is_floating_type(type));
    if (!same) type = determine_arithmetic_conversions(second, third);
    change_binary_operand_types(type, second, third);
    return type;
  }
  if (both_are(is_class_struct_union_type, second, third)) {
    if (f_types_are_compatible(second->type, third->type, tco_ignore_top_qualifiers))
      return rvalue_type(second->type);
    report_incompatible(second, third, pos);
    return nullptr;
  }
  if (is_ptr_to_member_type(second->type) || is_ptr_to_member_type(third->type)) {
    if (check_ptr_to_member_operands_for_compatibility(second, third)) return second->type;
    report_incompatible(second, third, pos);
    return nullptr;
  }
  bool pointer = is_pointer_type(second->type) || is_pointer_type(third->type);
  bool scalars = both_are(is_scalar_type, second, third);
  if (!pointer || !scalars || is_floating_type(second->type) || is_floating_type(third->type)) {
    report_incompatible(second, third, pos);
    return nullptr;
  }
  a_type *type = type_of_conditional_with_pointers(second, third, pos);
  if (type == nullptr) return nullptr;
  change_binary_operand_types(type, second, third);
  return type;
}

// The middle operand, or with GNU's `a ?: b` the value of the condition itself.
static void scan_second_operand(an_operand *condition, an_operand *second, bool is_dead)
{
  if (curr_token == tok_colon && (gcc_mode || gpp_mode)) {
    clone_operand(condition, second);
    return;
  }
  ++expr_stack->paren_depth;
  add_stop_token(tok_colon);
  scan_conditionally(second, prec_lowest, 0, is_dead);
  remove_stop_token(tok_colon);
  --expr_stack->paren_depth;
}

static void transform_arm(an_operand *arm, bool is_dead)
{
  bool saved = expr_stack->value_required;
  if (is_dead) expr_stack->value_required = false;
  do_operand_transformations(arm, 0);
  expr_stack->value_required = saved;
}

void scan_conditional_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_operand second, third;
  check_boolean_controlling_expr(left);
  flush_ref_entries_except(nullptr, nullptr);
  left->ref_entries = left->last_ref_entry = nullptr;
  bool known =
      left->kind == ok_constant && constant_bool_value_known_at_compile_time(&left->value.constant);
  bool is_false = known && is_false_constant(&left->value.constant);
  get_token();
  scan_second_operand(left, &second, known && is_false);
  flush_ref_entries_except(second.ref_entries, nullptr);
  required_token(tok_colon, ec_exp_colon);
  int minimum =
      C_dialect == 2 && !cfront_2_1_mode && !cfront_3_0_mode ? prec_assignment : prec_question;
  scan_conditionally(&third, minimum, 0, known && !is_false);
  if (C_dialect == 2 && do_cplusplus_conditional(left, &second, &third, &pos, result)) return;
  transform_arm(&second, known && is_false);
  transform_arm(&third, known && !is_false);
  normalize_error_operand(&second);
  normalize_error_operand(&third);
  if (left->kind == ok_error || second.kind == ok_error || third.kind == ok_error) {
    make_failed_result(&second, &third, result);
    return;
  }
  bool is_void;
  a_type *type = convert_arms(&second, &third, &is_void, &pos);
  if (type == nullptr) {
    make_failed_result(&second, &third, result);
    return;
  }
  if (is_void) {
    if (second.kind == ok_expression) set_expr_result_not_used(second.value.expr);
    if (third.kind == ok_expression) set_expr_result_not_used(third.value.expr);
    cast_operand(type, &second, false);
    cast_operand(type, &third, false);
  }
  a_source_position start = left->position, end = third.end_position;
  do_question_operation(left, &second, &third, type, is_void, false, result, &pos);
  result->position = start;
  result->end_position = end;
  if (is_null_constant_operand(result)) rule_out_expr_kinds(0, result);
}

// -------------------------------------------------------------------------------------------------
// Comma

void scan_comma_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_source_position pos = pos_curr_token;
  bool dead_constants = c99_mode && !expr_stack->value_required;
  bool forbidden = in_constant_context() && !dead_constants;
  check_for_no_effect(left, false);
  check_for_unused_result(left);
  discard_operand(left);
  if (is_array_type(left->type) || left->state == os_function_designator)
    do_operand_transformations(left, 0);
  flush_ref_entries_except(nullptr, nullptr);
  left->ref_entries = left->last_ref_entry = nullptr;
  an_operand right;
  get_token();
  scan_expression(&right, nullptr, prec_comma, 0);
  if (forbidden) {
    if (left->kind != ok_error && right.kind != ok_error)
      expr_pos_error(not_allowed_in_constant_code(), pos);
    make_failed_result(left, &right, result);
    return;
  }
  bool keeps_lvalue = C_dialect == 2 || (gcc_mode && gnu_version < 40000);
  do_operand_transformations(&right, keeps_lvalue ? ot_keep_lvalues | ot_keep_arrays : 0u);
  if (left->kind == ok_error || right.kind == ok_error) {
    make_failed_result(left, &right, result);
    return;
  }
  if (left->kind == ok_constant && right.kind == ok_constant && dead_constants) {
    *result = right;
    preserve_ruled_out_expr_kinds_from_discarded_operand(result, left);
    result->position = left->position;
    return;
  }
  an_operand saved_left = *left, saved_right = right;
  an_expr_node *left_node = make_node_from_operand(left);
  an_expr_node *node = make_comma_node(left_node, make_node_from_operand(&right));
  node->operator_position = pos;
  make_lvalue_or_rvalue_expression_operand(node, result);
  result->type = saved_right.type;
  result->ref_entries = saved_right.ref_entries;
  result->last_ref_entry = saved_right.last_ref_entry;
  result->position = saved_left.position;
  result->end_position = saved_right.end_position;
  node->expr_range.start = result->position;
  node->expr_range.end = result->end_position;
  result->ruled_out_expr_kinds = saved_left.ruled_out_expr_kinds | saved_right.ruled_out_expr_kinds;
  rule_out_expr_kinds(rule_out_integral_constant, result);
}
