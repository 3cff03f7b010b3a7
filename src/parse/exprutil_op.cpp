// exprutil_op.cpp - results of operators: folded where both operands are constants, IL nodes
// otherwise.
// Rule:    nothing is built twice; a folded constant in a function's code keeps the expression it
//          came from.
// Entry:   do_binary_operation, do_unary_operation, do_question_operation.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/exprutil.h"

// The constant needs no rescan and no message of its own when an operand is a literal of a huge
// table.
static an_expr_node *node_of_copy(an_operand *operand)
{
  an_operand copy = *operand;
  return make_node_from_operand(&copy);
}

static void set_result_positions(an_operand *result, const an_operand *left,
                                 const an_operand *right)
{
  result->position = left->position;
  result->end_position = right->end_position;
}

// -------------------------------------------------------------------------------------------------
// Binary

static an_expr_node *binary_node(an_expr_operator_kind op, an_expr_node *left, an_expr_node *right,
                                 a_type *type, a_source_position *pos)
{
  left->next = right;
  an_expr_node *node = make_operator_node(op, type, left);
  if (pos != nullptr) node->operator_position = *pos;
  node->expr_range.start = left->expr_range.start;
  node->expr_range.end = right->expr_range.end;
  return node;
}

void build_binary_result_operand(an_expr_operator_kind op, an_operand *left, an_operand *right,
                                 a_type *result_type, an_operand *result, a_source_position *pos,
                                 unsigned operator_token)
{
  (void)operator_token;
  if (left->kind == ok_error || right->kind == ok_error || is_error_type(result_type)) {
    make_error_operand(result);
    return;
  }
  an_operand saved_left = *left, saved_right = *right;
  an_expr_node *left_node = make_node_from_operand(left);
  an_expr_node *right_node = make_node_from_operand(right);
  make_expression_operand(binary_node(op, left_node, right_node, result_type, pos), result);
  set_result_positions(result, &saved_left, &saved_right);
}

// True: the result is in `result`, a constant or an error.
static bool fold_binary(an_expr_operator_kind op, an_operand *left, an_operand *right,
                        a_type *result_type, an_operand *result, a_source_position *pos)
{
  if (op == eok_none) {
    make_error_operand(result);
    return true;
  }
  a_constant constant;
  bool not_folded = false, by_template = false;
  an_error_code suppressed = ec_no_error;
  binary_operation(op, &left->value.constant, &right->value.constant, result_type, &constant,
                   in_constant_context(), expr_stack->value_required, &not_folded, &by_template,
                   expr_stack->suppress_errors ? &suppressed : nullptr, pos);
  if (suppressed != ec_no_error) expr_stack->error_was_suppressed = true;
  if (not_folded) return false;
  if (constant.kind != ck_error && constants_keep_their_expression()) {
    constant.expr = binary_node(op, node_of_copy(left), node_of_copy(right), result_type, pos);
  }
  make_constant_operand(&constant, result);
  return true;
}

static bool is_pointer_arithmetic(an_expr_operator_kind op)
{
  return op == eok_pointer_add || op == eok_pointer_subtract;
}

void do_binary_operation_full(an_expr_operator_kind op, an_operand *left, an_operand *right,
                              a_type *result_type, bool is_lvalue_result, an_operand *result,
                              a_source_position *pos, unsigned operator_token,
                              a_source_position *close_pos)
{
  an_operand saved_left = *left, saved_right = *right;
  if (left->kind == ok_error || right->kind == ok_error || is_error_type(result_type)) {
    change_operand_refs_to_error(left);
    change_operand_refs_to_error(right);
    make_error_operand(result);
    return;
  }
  bool folds = !is_lvalue_result;
  if (folds && (!is_pointer_arithmetic(op) || expr_stack->favor_constant_result)) {
    force_operand_to_constant_if_possible(left);
    force_operand_to_constant_if_possible(right);
  }
  if (folds && left->kind == ok_constant && right->kind == ok_constant &&
      fold_binary(op, left, right, result_type, result, pos)) {
    result->ruled_out_expr_kinds = 0;
  } else if (folds && in_constant_context() && expr_stack->value_required) {
    expr_pos_error(ec_expr_not_constant, saved_left.position);
    make_error_operand(result);
    return;
  } else {
    build_binary_result_operand(op, left, right, result_type, result, pos, operator_token);
    if (result->kind == ok_error) return;
    result->ruled_out_expr_kinds = 0;
    if (is_lvalue_result) {
      result->value.expr->is_lvalue = true;
      result->state = os_lvalue;
    }
    check_pointer_range(result, false);
  }
  set_result_positions(result, &saved_left, &saved_right);
  if (close_pos != nullptr && close_pos->seq != 0) result->end_position = *close_pos;
  result->ruled_out_expr_kinds |=
      saved_left.ruled_out_expr_kinds | saved_right.ruled_out_expr_kinds;
  if (result->kind == ok_expression) {
    result->value.expr->expr_range.start = result->position;
    result->value.expr->expr_range.end = result->end_position;
  }
}

void do_binary_operation(an_expr_operator_kind op, an_operand *left, an_operand *right,
                         a_type *result_type, an_operand *result, a_source_position *pos,
                         unsigned operator_token)
{
  do_binary_operation_full(op, left, right, result_type, false, result, pos, operator_token,
                           nullptr);
}

// -------------------------------------------------------------------------------------------------
// Unary

void build_unary_result_operand(an_expr_operator_kind op, an_operand *operand, a_type *result_type,
                                an_operand *result)
{
  an_operand saved = *operand;
  an_expr_node *node = make_operator_node(op, result_type, make_node_from_operand(operand));
  node->expr_range.start = saved.position;
  node->expr_range.end = saved.end_position;
  make_expression_operand(node, result);
  result->position = saved.position;
  result->end_position = saved.end_position;
}

// Constants: -, +, ~, !, and the parts of complex values.
static bool fold_unary(an_expr_operator_kind op, an_operand *operand, a_type *result_type,
                       an_operand *result, a_source_position *pos)
{
  a_constant constant;
  bool not_folded = false, by_template = false;
  an_error_code suppressed = ec_no_error;
  unary_operation(op, &operand->value.constant, result_type, &constant, in_constant_context(),
                  expr_stack->value_required, &not_folded, &by_template,
                  expr_stack->suppress_errors ? &suppressed : nullptr, pos);
  if (suppressed != ec_no_error) expr_stack->error_was_suppressed = true;
  if (not_folded) return false;
  if (constant.kind != ck_error && constants_keep_their_expression()) {
    constant.expr = make_operator_node(op, result_type, node_of_copy(operand));
    constant.expr->operator_position = *pos;
  }
  make_constant_operand(&constant, result);
  return true;
}

void do_unary_operation(an_expr_operator_kind op, an_operand *operand, a_type *result_type,
                        an_operand *result, a_source_position *pos, unsigned operator_token)
{
  (void)operator_token;
  an_operand saved = *operand;
  if (operand->kind == ok_error || is_error_type(result_type)) {
    make_error_operand(result);
    return;
  }
  if (op != eok_address_of) force_operand_to_constant_if_possible(operand);
  if (operand->kind == ok_constant && op != eok_address_of &&
      fold_unary(op, operand, result_type, result, pos)) {
    result->ruled_out_expr_kinds = 0;
  } else if (in_constant_context() && expr_stack->value_required) {
    expr_pos_error(ec_expr_not_constant, saved.position);
    make_error_operand(result);
    return;
  } else {
    build_unary_result_operand(op, operand, result_type, result);
    if (result->kind == ok_expression) result->value.expr->operator_position = *pos;
    result->ruled_out_expr_kinds = 0;
  }
  result->position = *pos;
  result->end_position = saved.end_position;
  result->ruled_out_expr_kinds |= saved.ruled_out_expr_kinds;
  if (result->kind == ok_expression) result->value.expr->expr_range.start = *pos;
}

// -------------------------------------------------------------------------------------------------
// Conditional

static bool contains_statement_expression(an_operand *operand)
{
  return operand->kind == ok_expression && has_statement_expression(operand->value.expr);
}

// Whether the arm that a known condition selects may stand for the whole.
static bool selected_arm_replaces_conditional(an_operand *selected, an_operand *dropped,
                                              a_type *result_type)
{
  if (!identical_types(rvalue_type(selected->type), rvalue_type(dropped->type))) return false;
  if (expr_stack->expression_kind < ek_normal) return true;
  // A label in the dropped arm can be jumped to.
  if (contains_statement_expression(selected) || contains_statement_expression(dropped))
    return false;
  bool not_constant = ((selected->ruled_out_expr_kinds | dropped->ruled_out_expr_kinds) &
                       rule_out_any_constant) != 0;
  if (!not_constant) return true;
  return !is_class_struct_union_type(result_type) && !strict_ansi_mode &&
         expr_stack->favor_constant_result;
}

static void take_selected_arm(an_operand *condition, an_operand *selected, an_operand *result)
{
  unsigned ruled_out = condition->ruled_out_expr_kinds | selected->ruled_out_expr_kinds;
  a_source_position start = condition->position;
  *result = *selected;
  result->ruled_out_expr_kinds = ruled_out;
  result->position = start;
  result->is_id_expression = false;
  result->is_string_literal = false;
}

static an_expr_node *question_node(an_operand *condition, an_operand *second, an_operand *third,
                                   a_type *type, a_source_position *pos)
{
  an_expr_node *first_node = make_node_from_operand(condition);
  an_expr_node *second_node = make_node_from_operand(second);
  an_expr_node *third_node = make_node_from_operand(third);
  first_node->next = second_node;
  second_node->next = third_node;
  an_expr_node *node = make_operator_node(eok_question, type, first_node);
  node->operator_position = *pos;
  node->expr_range.start = condition->position;
  node->expr_range.end = third->end_position;
  return node;
}

void do_question_operation(an_operand *condition, an_operand *second, an_operand *third,
                           a_type *result_type, bool is_void, bool is_lvalue_result,
                           an_operand *result, a_source_position *pos)
{
  if (condition->kind == ok_error || second->kind == ok_error || third->kind == ok_error ||
      is_error_type(result_type)) {
    change_operand_refs_to_error(second);
    change_operand_refs_to_error(third);
    make_error_operand(result);
    return;
  }
  bool known = condition->kind == ok_constant &&
               constant_bool_value_known_at_compile_time(&condition->value.constant);
  if (known && !is_void) {
    bool is_false = is_false_constant(&condition->value.constant);
    an_operand *selected = is_false ? third : second;
    if (selected_arm_replaces_conditional(selected, is_false ? second : third, result_type)) {
      take_selected_arm(condition, selected, result);
      return;
    }
  }
  if (in_constant_context() && expr_stack->value_required) {
    expr_pos_error(known ? ec_expr_not_constant : ec_constant_value_not_known, condition->position);
    make_error_operand(result);
    return;
  }
  unsigned ruled_out =
      condition->ruled_out_expr_kinds | second->ruled_out_expr_kinds | third->ruled_out_expr_kinds;
  an_operand saved_condition = *condition, saved_third = *third;
  an_expr_node *node = question_node(condition, second, third, result_type, pos);
  if (is_lvalue_result) {
    node->is_lvalue = true;
    make_lvalue_expression_operand(node, result);
  } else {
    make_expression_operand(node, result);
  }
  set_result_positions(result, &saved_condition, &saved_third);
  result->ruled_out_expr_kinds = ruled_out;
}
