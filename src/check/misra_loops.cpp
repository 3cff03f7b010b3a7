// misra_loops.cpp - loop counters: which variables a for statement counts with, and while its body
// is read.
// Entry:   find_loop_condition_variable, misra_open_for_body, misra_close_for_body.
#include "check/misra_expr.h"
#include "il/il.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "mem/stack_limit.h"

// The variable on one side of a test.
static a_variable *tested_variable(an_expr_node *expr)
{
  expr = below_all_casts(expr);
  if (is_operation(expr, eok_comma)) return tested_variable(second_operand_of(expr));
  if (expr->kind == enk_operation &&
      (is_incr_decr_operator(op_of(expr)) || is_assignment_operator(op_of(expr)))) {
    return tested_variable(first_operand_of(expr));
  }
  return expr->kind == enk_variable ? variable_of(expr) : nullptr;
}

a_variable *find_loop_condition_variable(an_expr_node *expr)
{
  check_recursion();
  expr = below_all_casts(expr);
  if (expr->kind != enk_operation) return tested_variable(expr);
  an_expr_operator_kind op = op_of(expr);
  a_variable *variable = nullptr;
  if (op == eok_not) return find_loop_condition_variable(first_operand_of(expr));
  if (op == eok_land || op == eok_lor) {
    variable = find_loop_condition_variable(first_operand_of(expr));
    return variable != nullptr ? variable : find_loop_condition_variable(second_operand_of(expr));
  }
  if (!is_comparison_operator(op)) return tested_variable(expr);
  variable = tested_variable(first_operand_of(expr));
  return variable != nullptr ? variable : tested_variable(second_operand_of(expr));
}

//---------------------------------------------------------------------------------------------
// The counters of a for statement: what its condition tests and its third expression changes;
// without a third expression, what its first one sets.

static void look_for_variable(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  if (expr->kind != enk_variable || variable_of(expr) != block->data) return;
  block->result = true;
  block->stop = true;
}

static bool refers_to_variable(an_expr_node *expr, a_variable *variable)
{
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = look_for_variable;
  block.data = variable;
  traverse_expr(expr, &block);
  return block.result;
}

static void add_counter(a_variable *variable, an_expr_node *condition,
                        a_misra_loop_counters *counters)
{
  int room = sizeof counters->variables / sizeof *counters->variables;
  if (variable->is_loop_counter || counters->count == room) return;
  if (!is_arithmetic_or_enum_type(variable->type)) return;
  if (!refers_to_variable(condition, variable)) return;
  variable->is_loop_counter = true;
  counters->variables[counters->count++] = variable;
}

static void add_counters_that_change(an_expr_node *expr, an_expr_node *condition,
                                     a_misra_loop_counters *counters)
{
  check_recursion();
  if (expr->kind != enk_operation) return;
  an_expr_operator_kind op = op_of(expr);
  an_expr_node *target = first_operand_of(expr);
  bool changes = is_incr_decr_operator(op) || is_assignment_operator(op);
  if (changes && target->kind == enk_variable) {
    add_counter(variable_of(target), condition, counters);
  }
  if (op != eok_comma && op != eok_cast) return;
  for (an_expr_node *operand = target; operand != nullptr; operand = operand->next)
    add_counters_that_change(operand, condition, counters);
}

void misra_open_for_body(a_statement *statement, a_misra_loop_counters *counters)
{
  counters->count = 0;
  an_expr_node *condition = statement->expr;
  if (condition == nullptr) return;
  a_for_supplement *supplement = for_supplement_of(statement);
  if (supplement->increment_expr != nullptr) {
    add_counters_that_change(supplement->increment_expr, condition, counters);
    return;
  }
  a_statement *init = supplement->init_statement;
  if (init == nullptr) return;
  if (init->kind == stmk_expr) {
    add_counters_that_change(init->expr, condition, counters);
  } else {
    a_variable *variable = find_loop_condition_variable(condition);
    if (variable != nullptr) add_counter(variable, condition, counters);
  }
}

void misra_close_for_body(a_misra_loop_counters *counters)
{
  for (int i = 0; i < counters->count; ++i)
    counters->variables[i]->is_loop_counter = false;
}
