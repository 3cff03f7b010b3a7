// fp_constraints.cpp - floating-point operations that the target doesn't have.
// Rule:    declaring, storing in memory and passing around costs nothing of its own; what is computed, converted,
//          compared, passed or returned in a type that is ruled out is reported.
// Entry:   check_float_operations_in_expr, check_float_types_of_routine, check_float_initialization.
#include "parse/fp_constraints.h"

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "parse/exprutil.h"

// float counts 32 bits, double and long double 64.
static bool float_type_allowed(a_type *type)
{
  if (!is_floating_type(type) || legal_float_precision == 1) return true;
  if (legal_float_precision == 0) return false;
  bool is_narrow = float_kind_of_type(type) == fk_float;
  return is_narrow == (legal_float_precision == 2);
}

static void issue_floating_point_diag(const a_source_position *position)
{
  const char *size = legal_float_precision == 3 ? "32-bit " : legal_float_precision == 2 ? "64-bit " : "";
  pos_st_diagnostic(es_discretionary_error, ec_float_support_disabled, *position, size);
}

static void check_float_type(a_type *type, const a_source_position *position)
{
  if (!float_type_allowed(type)) issue_floating_point_diag(position);
}

static bool call_is_allowed(an_expr_node *call)
{
  if (!float_type_allowed(call->type)) return false;
  for (an_expr_node *argument = first_operand_of(call)->next; argument != nullptr; argument = argument->next) {
    if (!float_type_allowed(argument->type)) return false;
  }
  return true;
}

static bool comparison_is_allowed(an_expr_node *node)
{
  an_expr_node *left = first_operand_of(node), *right = second_operand_of(node);
  if (!is_floating_type(left->type) || !is_floating_type(right->type)) return true;
  return float_type_allowed(left->type) && float_type_allowed(right->type);
}

static bool operation_is_allowed(an_expr_node *node)
{
  an_expr_operator_kind op = op_of(node);
  switch (op) {
  case eok_cast:
  case eok_cast_to_bool:
    return float_type_allowed(node->type) && float_type_allowed(first_operand_of(node)->type);
  case eok_eq: case eok_ne: case eok_gt: case eok_lt: case eok_ge: case eok_le:
    return comparison_is_allowed(node);
  case eok_call:
  case eok_virtual_call:
  case eok_ptr_to_member_call: return call_is_allowed(node);
  case eok_negate: case eok_plus: case eok_conj: case eok_real: case eok_imag:
  case eok_pre_incr: case eok_pre_decr: case eok_post_incr: case eok_post_decr:
  case eok_assign: return float_type_allowed(node->type);
  default: break;
  }
  bool is_arithmetic = (op >= eok_add && op <= eok_subtract_complex_2) || op == eok_min || op == eok_max ||
                       is_compound_assignment_operator(op);
  return !is_arithmetic || float_type_allowed(node->type);
}

static void check_node(an_expr_node *node, an_expr_or_stmt_traversal_block *block)
{
  if (node->kind == enk_statement_expr) block->skip_subtree = true;  // its expressions were full ones
  if (node->kind != enk_operation || operation_is_allowed(node)) return;
  const a_source_position *position =
      node->operator_position.seq != 0 ? &node->operator_position : &node->expr_range.start;
  issue_floating_point_diag(position);
}

void check_float_operations_in_expr(an_expr_node *node)
{
  if (legal_float_precision == 1) return;
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = check_node;
  traverse_expr(node, &block);
}

void check_float_types_of_routine(a_routine *routine, const a_source_position *position)
{
  if (legal_float_precision == 1 || is_error_type(routine->type)) return;
  check_float_type(return_type_of(routine->type), position);
  for (a_param_type *param = param_types_of(routine->type); param != nullptr; param = param->next) {
    check_float_type(param->type, position);
  }
}

void check_float_initialization(a_type *type, const a_source_position *position)
{
  if (legal_float_precision != 1) check_float_type(type, position);
}
