// misra_boolean.cpp - rule 12.6: what is effectively Boolean, and where that may stand.
// Rule:    a variable is Boolean or a number by its first use that tells; a use that says otherwise
//          is a violation.
// Entry:   classify_as_boolean, check_boolean_use, is_expr_effectively_boolean.
#include "check/misra_expr.h"
#include "consts/const_ints.h"
#include "il/il.h"
#include "il/types.h"

static const char *const text_of_logical =
    "The operands of logical operators (&&, || and !) should be effectively Boolean";
static const char *const text_of_mixture =
    "Expressions that are effectively Boolean should not be used in operations with expressions "
    "that are not effectively Boolean";
static const char *const text_of_operator =
    "Expressions that are effectively Boolean should not be used as operands to operators other "
    "than (&&, ||, !, =, ==, != and ?:)";

//---------------------------------------------------------------------------------------------
// What is known of an expression.

// 0 and 1 may stand for either; any other number is one.
static a_boolean_use classify_constant(const a_constant *constant)
{
  if (is_bool_type(constant->type) || constant->is_true_false_keyword) return bu_boolean;
  if (constant->kind != ck_integer || !is_integral_or_enum_type(constant->type)) {
    return bu_not_boolean;
  }
  if (constant->from_character_constant) return bu_not_boolean;
  return cmpulit_integer_constant(constant, 1) > 0 ? bu_not_boolean : bu_unknown;
}

static a_boolean_use classify_object(an_expr_node *expr)
{
  if (is_bool_type(expr->type)) return bu_boolean;
  if (!is_integral_or_enum_type(expr->type)) return bu_not_boolean;
  if (expr->kind == enk_variable) return a_boolean_use(variable_of(expr)->boolean_use);
  return bu_unknown;
}

// Below so many operators nothing is known: each level of a long expression asks for all below.
static constexpr int deepest_level = 64;

static a_boolean_use classify_at_level(an_expr_node *expr, int level);

static a_boolean_use classify_operation(an_expr_node *expr, int level)
{
  if (level > deepest_level) return bu_unknown;
  an_expr_operator_kind op = op_of(expr);
  if (is_bool_type(expr->type) || is_comparison_operator(op)) return bu_boolean;
  switch (op) {
  case eok_not:
  case eok_land:
  case eok_lor:
  case eok_cast_to_bool: return bu_boolean;
  case eok_cast:
    if (!is_integral_or_enum_type(expr->type)) return bu_not_boolean;
    return classify_at_level(first_operand_of(expr), level + 1);
  case eok_assign: return classify_at_level(second_operand_of(expr), level + 1);
  case eok_comma: return classify_at_level(second_operand_of(expr), level + 1);
  case eok_question: {
    a_boolean_use second = classify_at_level(second_operand_of(expr), level + 1);
    a_boolean_use third = classify_at_level(third_operand_of(expr), level + 1);
    if (second == bu_not_boolean || third == bu_not_boolean) return bu_not_boolean;
    return second == bu_boolean && third == bu_boolean ? bu_boolean : bu_unknown;
  }
  case eok_bit_and: // of two conditions: the operator is wrong, the value still is a truth value
  case eok_bit_or:
  case eok_bit_xor: {
    bool both = classify_at_level(first_operand_of(expr), level + 1) == bu_boolean &&
                classify_at_level(second_operand_of(expr), level + 1) == bu_boolean;
    return both ? bu_unknown : bu_not_boolean;
  }
  case eok_call:
  case eok_va_arg:
  case eok_indirection:
  case eok_subscript:
  case eok_dot_field:
  case eok_arrow_field: return classify_object(expr);
  default: return bu_not_boolean;
  }
}

static a_boolean_use classify_at_level(an_expr_node *expr, int level)
{
  expr = written_expr(expr);
  switch (expr->kind) {
  case enk_operation: return classify_operation(expr, level);
  case enk_constant: return classify_constant(constant_of(expr));
  case enk_variable: return classify_object(expr);
  case enk_error:
  case enk_statement_expr: return bu_unknown;
  default: return bu_not_boolean;
  }
}

a_boolean_use classify_as_boolean(an_expr_node *expr)
{
  return classify_at_level(expr, 0);
}

bool is_expr_effectively_boolean(an_expr_node *expr, bool known_only)
{
  a_boolean_use use = classify_as_boolean(expr);
  return use == bu_boolean || (use == bu_unknown && !known_only);
}

//---------------------------------------------------------------------------------------------
// What the operators make of their operands.

static void note_use(an_expr_node *expr, a_boolean_use use)
{
  expr = written_expr(expr);
  if (expr->kind != enk_variable) return;
  a_variable *variable = variable_of(expr);
  if (variable->boolean_use == bu_unknown && !is_bool_type(variable->type)) {
    variable->boolean_use = use;
  }
}

static void check_logical_operand(an_expr_node *operand, an_expr_node *expr, a_misra_walk *walk)
{
  if (classify_as_boolean(operand) == bu_not_boolean) {
    report_boolean_rule(walk, text_of_logical, expr);
  } else {
    note_use(operand, bu_boolean);
  }
}

static void check_numeric_operand(an_expr_node *operand, an_expr_node *expr, a_misra_walk *walk)
{
  if (classify_as_boolean(operand) == bu_boolean) {
    report_boolean_rule(walk, text_of_operator, expr);
  } else {
    note_use(operand, bu_not_boolean);
  }
}

// == and !=, and the assignment: both sides are Boolean, or neither is.
static void check_same_use(an_expr_node *expr, a_misra_walk *walk)
{
  an_expr_node *left = first_operand_of(expr), *right = second_operand_of(expr);
  if (!is_integral_or_enum_type(left->type)) return;
  a_boolean_use left_use = classify_as_boolean(left), right_use = classify_as_boolean(right);
  if (left_use == bu_unknown && right_use != bu_unknown) {
    note_use(left, right_use);
  } else if (right_use == bu_unknown && left_use != bu_unknown) {
    if (op_of(expr) != eok_assign) note_use(right, left_use);
  } else if (left_use != right_use) {
    report_boolean_rule(walk, text_of_mixture, expr);
  }
}

static bool is_numeric_operator(an_expr_operator_kind op)
{
  if (op >= eok_add && op <= eok_remainder) return true;
  if (op >= eok_shift_left && op <= eok_bit_xor) return true;
  if (op >= eok_gt && op <= eok_le) return true;
  return op == eok_negate || op == eok_plus || op == eok_complement || is_incr_decr_operator(op) ||
         (op >= eok_add_assign && op <= eok_bit_xor_assign);
}

void check_boolean_use(an_expr_node *expr, a_misra_walk *walk)
{
  switch (op_of(expr)) {
  case eok_land:
  case eok_lor: check_logical_operand(second_operand_of(expr), expr, walk); [[fallthrough]];
  case eok_not:
  case eok_question: check_logical_operand(first_operand_of(expr), expr, walk); return;
  case eok_eq:
  case eok_ne:
  case eok_assign: check_same_use(expr, walk); return;
  default: break;
  }
  if (!is_numeric_operator(op_of(expr))) return;
  for (an_expr_node *operand = first_operand_of(expr); operand != nullptr; operand = operand->next)
    check_numeric_operand(operand, expr, walk);
}
