// type_evaluation.cpp - what the names of variably modified types evaluate.
// Owns:    type_evaluation of the expression entries.
// Entry:   add_type_evaluation, begin_type_evaluation, put_type_evaluation_before.
// See:     C99 6.7.5.2p5; GNU: an operand of typeof is evaluated if its type is variably modified.
#include "parse/type_evaluation.h"

#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "parse/statements.h"

void add_type_evaluation(an_expr_node *expr, a_source_position position)
{
  if (expr_stack == nullptr) {
    if (!in_statement_context()) return;
    expr = add_cast(expr, void_type());
    set_vla_size_statement(make_vla_dimension(nullptr, expr, false, &position), &position);
    return;
  }
  an_expr_node *&collected = expr_stack->type_evaluation;
  collected = collected == nullptr ? expr : make_comma_node(collected, expr);
}

void evaluate_dimension_with_type(a_vla_dimension *dimension)
{
  an_expr_node *bound = dimension->expr;
  dimension->variable = make_expression_temporary(rvalue_type(bound->type));
  dimension->expr = nullptr;
  an_expr_node *target = var_lvalue_expr(dimension->variable);
  target->next = bound;
  add_type_evaluation(make_operator_node(eok_assign, rvalue_type(bound->type), target),
                      dimension->position);
}

an_expr_node *begin_type_evaluation()
{
  if (expr_stack == nullptr) return nullptr;
  an_expr_node *outer = expr_stack->type_evaluation;
  expr_stack->type_evaluation = nullptr;
  return outer;
}

an_expr_node *end_type_evaluation(an_expr_node *outer)
{
  if (expr_stack == nullptr) return nullptr;
  an_expr_node *evaluation = expr_stack->type_evaluation;
  expr_stack->type_evaluation = outer;
  return evaluation;
}

void put_type_evaluation_before(an_expr_node *evaluation, an_operand *operand)
{
  if (evaluation == nullptr || operand->kind == ok_error) return;
  an_operand saved = *operand;
  bool is_lvalue = is_lvalue_operand(operand);
  an_expr_node *node = make_node_from_operand(operand);
  if (is_lvalue) {
    // A comma is no lvalue in C.
    node = make_comma_node(evaluation, add_address_of_to_node(node));
    make_lvalue_expression_operand(add_indirection_to_node(node), operand);
  } else {
    make_expression_operand(make_comma_node(evaluation, node), operand);
  }
  restore_operand_details_incl_ref(operand, &saved);
}
