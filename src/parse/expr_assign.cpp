// expr_assign.cpp - assignments.
// Entry:   scan_assignment_operator, scan_compound_assignment_operator, process_simple_assignment.
// See:     C99 6.5.16.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"

static bool reject_in_constant_context(an_operand *left, an_operand *right, a_source_position *pos,
                                       an_operand *result)
{
  if (!in_constant_context()) return false;
  if (left->kind != ok_error && right->kind != ok_error)
    expr_pos_error(not_allowed_in_constant_code(), *pos);
  change_operand_refs_to_error(left);
  change_operand_refs_to_error(right);
  make_error_operand(result);
  return true;
}

static void make_failed_assignment(an_operand *left, an_operand *right, an_operand *result)
{
  change_operand_refs_to_error(left);
  change_operand_refs_to_error(right);
  make_error_operand(result);
}

static void build_assignment(an_expr_operator_kind op, an_operand *left, an_operand *right,
                             a_source_position *pos, unsigned token, an_operand *result)
{
  a_ref_entry *refs = left->ref_entries, *last_ref = left->last_ref_entry;
  build_binary_result_operand(op, left, right, rvalue_type(left->type), result, pos, token);
  if (C_dialect == 2 && result->kind != ok_error) {
    result->value.expr->is_lvalue = true;
    result->value.expr->type = left->type;
    result->type = left->type;
    result->state = os_lvalue;
    result->ref_entries = refs;
    result->last_ref_entry = last_ref;
  }
  rule_out_expr_kinds(rule_out_any_constant, result);
}

void process_simple_assignment(an_operand *left, an_operand *right, a_source_position *pos,
                               unsigned token, an_operand *result)
{
  do_operand_transformations(left, ot_keep_lvalues | ot_keep_arrays);
  if (left->kind == ok_error || !check_modifiable_lvalue_operand(left)) {
    do_operand_transformations(right, 0);
    make_failed_assignment(left, right, result);
    return;
  }
  modifying_lvalue(left, false);
  a_type *type = rvalue_type(left->type);
  prep_assignment_operand(right, type, ec_incompatible_assignment_operands, pos);
  if (right->kind == ok_error) {
    make_failed_assignment(left, right, result);
    return;
  }
  build_assignment(which_binary_operator(tok_assign, type), left, right, pos, token, result);
}

void scan_assignment_operator(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_operand right;
  get_token();
  scan_expression(&right, nullptr, prec_assignment, 0);
  if (reject_in_constant_context(left, &right, &pos, result)) return;
  if (C_dialect == 2 && do_overloaded_operator(tok_assign, &pos, left, &right, result)) return;
  process_simple_assignment(left, &right, &pos, tok_assign, result);
}

// -------------------------------------------------------------------------------------------------
// Compound assignments

static bool check_compound_operands(a_token_kind token, an_operand *left, an_operand *right)
{
  switch (token) {
  case tok_plus_assign:
  case tok_minus_assign:
    if (is_pointer_type(left->type)) {
      return check_object_pointer_operand(left) && check_integral_or_enum_operand(right);
    }
    [[fallthrough]];
  case tok_times_assign:
  case tok_divide_assign:
    return check_arithmetic_or_enum_operand(left) && check_arithmetic_or_enum_operand(right);
  default: return check_integral_or_enum_operand(left) && check_integral_or_enum_operand(right);
  }
}

static bool is_shift_assignment(a_token_kind token)
{
  return token == tok_shift_left_assign || token == tok_shift_right_assign;
}

// The type in which the operation of a compound assignment is done; the right operand is converted
// to it.
static void convert_right_of_compound(a_token_kind token, an_operand *left, an_operand *right)
{
  if (is_pointer_type(left->type)) {
    promote_operand(right);
    return;
  }
  if (is_shift_assignment(token)) {
    if (check_misra_c_2004) misra_hooks.misra_check_shift_count(left, right);
    an_operand left_value = *left;
    left_value.type = type_after_integral_promotion(rvalue_type(left->type));
    promote_operand(right);
    check_count_of_unfolded_shift(&left_value, right);
    return;
  }
  if (check_misra_c_2004) misra_hooks.misra_check_conversion(right, left->type, mcu_operation);
  an_operand left_value = *left;
  left_value.ref_entries = left_value.last_ref_entry = nullptr;
  a_type *type = determine_arithmetic_conversions(&left_value, right);
  bool is_product = token == tok_times_assign || token == tok_divide_assign;
  if (is_product && is_imaginary_type(left->type) && !is_nonreal_floating_type(right->type)) {
    type = float_type(float_kind_of_type(type));
  }
  if (!is_error_type(type)) cast_operand(type, right, false);
}

void scan_compound_assignment_operator(an_operand *left, a_rescan_control_block *,
                                       an_operand *result)
{
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token;
  an_operand right;
  get_token();
  scan_expression(&right, nullptr, prec_assignment, 0);
  if (reject_in_constant_context(left, &right, &pos, result)) return;
  if (C_dialect == 2 && do_overloaded_operator(token, &pos, left, &right, result)) return;
  do_operand_transformations(left, ot_keep_lvalues | ot_keep_arrays);
  do_operand_transformations(&right, 0);
  if (left->kind == ok_error || right.kind == ok_error || !check_modifiable_lvalue_operand(left) ||
      !check_compound_operands(token, left, &right)) {
    make_failed_assignment(left, &right, result);
    return;
  }
  if (C_dialect == 2 && is_enum_type(left->type) && !enum_type_is_integral) {
    expr_pos_error(ec_enum_type_not_allowed, pos);
    make_failed_assignment(left, &right, result);
    return;
  }
  if (token == tok_times_assign && is_imaginary_type(left->type) && is_imaginary_type(right.type)) {
    expr_pos_warning(ec_imaginary_times_assign, pos);
  }
  modifying_lvalue(left, true);
  convert_right_of_compound(token, left, &right);
  if (right.kind == ok_error) {
    make_failed_assignment(left, &right, result);
    return;
  }
  build_assignment(which_binary_operator(token, left->type), left, &right, &pos, token, result);
}
