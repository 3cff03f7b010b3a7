// misra_expr.cpp - the rules on operators and their operands, tested over a full expression.
// Rule:    one walk over the finished tree; each rule is reported once in an expression.  Folded
//          constants are seen as they were written.
// Entry:   misra_check_expr, is_operand_misra_primary_expr.
#include "check/misra_expr.h"
#include <cstring>
#include "consts/const_ints.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/types.h"
#include "mem/stack_limit.h"

//---------------------------------------------------------------------------------------------
// Reporting.

struct a_walk_rule_entry {
  an_error_code code;
  const an_error_severity *severity;
};

static const a_walk_rule_entry walk_rules[wr_last] = {
#define ROW(rule, rule_class) {ec_misra_c_2004_##rule, &misra_##rule_class##_severity},
    WALK_RULES(ROW)
#undef ROW
};

static bool is_first_report(a_misra_walk *walk, a_walk_rule rule)
{
  if (walk->is_reported[rule]) return false;
  walk->is_reported[rule] = true;
  return true;
}

void report_rule(a_misra_walk *walk, a_walk_rule rule, const an_expr_node *expr)
{
  if (!is_first_report(walk, rule)) return;
  pos_diagnostic(*walk_rules[rule].severity, walk_rules[rule].code, place_of_expr(expr));
}

void report_boolean_rule(a_misra_walk *walk, const char *text, const an_expr_node *expr)
{
  if (!is_first_report(walk, wr_12_6)) return;
  pos_st_diagnostic(misra_advisory_severity, ec_misra_c_2004_12_6, place_of_expr(expr), text);
}

//---------------------------------------------------------------------------------------------
// 12.1, 12.4, 12.5: operands that are operations.

static bool is_binary_operator(an_expr_operator_kind op)
{
  return op >= eok_add && op <= eok_max;
}

// a + b + c is plain without parentheses; a * b + c isn't, nor is a sum whose type changes on the
// way.
static void check_precedence(an_expr_node *expr, a_misra_walk *walk)
{
  an_expr_operator_kind op = op_of(expr);
  for (an_expr_node *node = first_operand_of(expr); node != nullptr; node = node->next) {
    an_expr_node *operand = written_expr(node);
    if (operand->kind != enk_operation || operand->is_parenthesized) continue;
    if (!is_binary_operator(op_of(operand))) continue;
    bool same =
        op_of(operand) == op && op <= eok_divide && identical_types(operand->type, expr->type);
    if (!same) report_rule(walk, wr_12_1, expr);
  }
}

bool is_operand_misra_primary_expr(an_expr_node *operand, an_expr_operator_kind op)
{
  operand = written_expr(operand);
  if (operand->is_parenthesized) return true;
  if (is_operation(operand, eok_array_to_pointer)) return true; // a name, a literal
  return operand->kind != enk_operation || op_of(operand) == op;
}

static void check_logical_operator(an_expr_node *expr, a_misra_walk *walk)
{
  an_expr_node *left = first_operand_of(expr), *right = second_operand_of(expr);
  if (!walk->is_reported[wr_12_4] && node_has_side_effects(right)) {
    report_rule(walk, wr_12_4, expr);
  }
  if (!is_operand_misra_primary_expr(left, op_of(expr)) ||
      !is_operand_misra_primary_expr(right, op_of(expr))) {
    report_rule(walk, wr_12_5, expr);
  }
}

//---------------------------------------------------------------------------------------------
// 10.5, 12.7, 12.9: signs and widths.

static bool is_integer(const a_fundamental_type &value)
{
  return is_integral_or_enum_type(value.type);
}

// A literal without suffix beside an unsigned operand is a matter of 10.6.
static void check_bitwise_operands(an_expr_node *expr, a_misra_walk *walk)
{
  a_fundamental_type left = fundamental_expr_type(first_operand_of(expr));
  a_fundamental_type right = fundamental_expr_type(second_operand_of(expr));
  bool left_counts =
      is_signed_integral_type(left.type) && !(left.adapts && !is_signed_integral_type(right.type));
  bool right_counts =
      is_signed_integral_type(right.type) && !(right.adapts && !is_signed_integral_type(left.type));
  if (left_counts || right_counts) report_rule(walk, wr_12_7, expr);
}

static void check_bitwise_operand(an_expr_node *expr, a_misra_walk *walk)
{
  if (is_expr_of_signed_integral_type(first_operand_of(expr))) report_rule(walk, wr_12_7, expr);
}

// ~ and << on a small type: the bits that promotion adds are to be cut off at once.  The cast may
// be one that an assignment makes.
static void check_small_operand(an_expr_node *expr, a_type *outer_type, a_misra_walk *walk)
{
  a_fundamental_type operand = fundamental_expr_type(first_operand_of(expr));
  if (!is_integer(operand) || is_bool_type(operand.type)) return;
  an_integer_kind kind = int_kind_of_type(operand.type);
  if (kind != ik_unsigned_char && kind != ik_unsigned_short) return;
  if (size_of_type(operand.type) >= targ_sizeof_int) return;
  if (written_expr(first_operand_of(expr))->kind == enk_constant) return; // it has no small type
  if (outer_type != nullptr && is_integral_or_enum_type(outer_type) &&
      int_kind_of_type(outer_type) == kind) {
    return;
  }
  report_rule(walk, wr_10_5, expr);
}

static void check_negation(an_expr_node *expr, a_misra_walk *walk)
{
  if (is_unsigned_integral_type(fundamental_expr_type(first_operand_of(expr)).type)) {
    report_rule(walk, wr_12_9, expr);
  }
}

//---------------------------------------------------------------------------------------------
// 17.4, 17.6: pointers.

static bool is_array_parameter(an_expr_node *pointer)
{
  if (pointer->kind != enk_variable) return false;
  const a_param_type *param = variable_of(pointer)->param_type;
  return param != nullptr && param->orig_type != nullptr && is_array_type(param->orig_type);
}

static bool is_address_of_array(const a_constant *constant)
{
  if (constant->kind == ck_string) return true;
  if (constant->kind != ck_address) return false;
  const a_constant_address &address = address_of(constant);
  if (address.kind == ack_constant) return true;
  return address.kind == ack_variable && is_array_type(((a_variable *)address.entity)->type);
}

// One operand of [] is the index, in whichever order they were written; the pointer comes first in
// the tree.
static void check_subscript(an_expr_node *expr, a_misra_walk *walk)
{
  an_expr_node *pointer = first_operand_of(expr);
  while (is_operation(pointer, eok_cast) && operation_of(pointer).is_implicit_cast)
    pointer = first_operand_of(pointer);
  if (is_operation(pointer, eok_array_to_pointer) || is_array_parameter(pointer)) return;
  if (pointer->kind == enk_constant && is_address_of_array(constant_of(pointer))) return;
  report_rule(walk, wr_17_4, expr);
}

// What the target may outlive the object by; where a pointer leads to the target, nothing is known
// of it.
static bool may_persist_longer(an_expr_node *target, const a_variable *object)
{
  a_variable *variable = variable_of_object(target);
  if (variable == nullptr) return true;
  bool is_automatic = variable->storage_class == sc_auto || variable->storage_class == sc_register;
  if (!is_automatic) return true;
  if (object == nullptr || variables_in_same_scope(variable, object)) return false;
  // Both are in scope here: the one that stands less deep is the one that lives longer.
  return variable->source_corresp.scope_depth < object->source_corresp.scope_depth;
}

static void check_stored_address(an_expr_node *expr, a_misra_walk *walk)
{
  a_variable *object;
  if (!is_pointer_type(expr->type)) return;
  if (!is_expr_ptr_to_nonstatic(second_operand_of(expr), &object)) return;
  if (may_persist_longer(first_operand_of(expr), object)) report_rule(walk, wr_17_6, expr);
}

//---------------------------------------------------------------------------------------------
// The walk.

struct a_walk_context {
  bool in_boolean;    // the value is a condition, or a part of one
  bool stands_alone;  // nothing else happens in the expression
  a_type *outer_type; // that the value is converted to directly
};

static void misra_walk_expr(an_expr_node *expr, const a_walk_context &context, a_misra_walk *walk);

static void check_unary_operator(an_expr_node *expr, const a_walk_context &context,
                                 a_misra_walk *walk)
{
  switch (op_of(expr)) {
  case eok_complement:
    check_bitwise_operand(expr, walk);
    check_small_operand(expr, context.outer_type, walk);
    break;
  case eok_negate: check_negation(expr, walk); break;
  case eok_pre_incr:
  case eok_pre_decr:
  case eok_post_incr:
  case eok_post_decr:
    if (!context.stands_alone) report_rule(walk, wr_12_13, expr);
    if (is_pointer_type(expr->type)) report_rule(walk, wr_17_4, expr);
    break;
  default: break;
  }
}

static void check_binary_operator(an_expr_node *expr, const a_walk_context &context,
                                  a_misra_walk *walk)
{
  check_precedence(expr, walk);
  switch (op_of(expr)) {
  case eok_shift_left:
    check_bitwise_operand(expr, walk);
    check_small_operand(expr, context.outer_type, walk);
    break;
  case eok_shift_right: check_bitwise_operand(expr, walk); break;
  case eok_bit_and:
  case eok_bit_or:
  case eok_bit_xor: check_bitwise_operands(expr, walk); break;
  case eok_eq:
  case eok_ne:
    if (is_floating_type(first_operand_of(expr)->type)) report_rule(walk, wr_13_3, expr);
    break;
  case eok_pointer_add:
  case eok_pointer_subtract:
  case eok_pointer_difference: report_rule(walk, wr_17_4, expr); break;
  default: break;
  }
}

static void check_assignment(an_expr_node *expr, const a_walk_context &context, a_misra_walk *walk)
{
  if (context.in_boolean) report_rule(walk, wr_13_1, expr);
  switch (op_of(expr)) {
  case eok_assign: check_stored_address(expr, walk); break;
  case eok_shift_left_assign:
  case eok_shift_right_assign: check_bitwise_operand(expr, walk); break;
  case eok_bit_and_assign:
  case eok_bit_or_assign:
  case eok_bit_xor_assign: check_bitwise_operands(expr, walk); break;
  case eok_pointer_add_assign:
  case eok_pointer_subtract_assign: report_rule(walk, wr_17_4, expr); break;
  default: break;
  }
}

static void check_operation(an_expr_node *expr, const a_walk_context &context, a_misra_walk *walk)
{
  an_expr_operator_kind op = op_of(expr);
  if (is_binary_operator(op)) {
    check_binary_operator(expr, context, walk);
  } else if (is_assignment_operator(op)) {
    check_assignment(expr, context, walk);
  } else if (op == eok_land || op == eok_lor) {
    check_logical_operator(expr, walk);
  } else if (op == eok_comma) {
    report_rule(walk, wr_12_10, expr);
  } else if (op == eok_subscript) {
    check_subscript(expr, walk);
  } else {
    check_unary_operator(expr, context, walk);
  }
  check_boolean_use(expr, walk);
}

// How an operand stands to its operator.
static a_walk_context context_of_operand(an_expr_node *expr, an_expr_node *operand,
                                         const a_walk_context &context)
{
  an_expr_operator_kind op = op_of(expr);
  a_walk_context inner = {context.in_boolean, false, nullptr};
  bool is_first = operand == first_operand_of(expr);
  switch (op) {
  case eok_not:
  case eok_land:
  case eok_lor: inner.in_boolean = true; break;
  case eok_question: inner.in_boolean = context.in_boolean || is_first; break;
  case eok_comma:
    inner.in_boolean = context.in_boolean && !is_first;
    inner.stands_alone = context.stands_alone;
    break;
  case eok_cast:
  case eok_cast_to_bool:
    inner.outer_type = expr->type;
    inner.stands_alone = context.stands_alone && is_void_type(expr->type);
    break;
  case eok_call:
  case eok_subscript: inner.in_boolean = false; break;
  default:
    if (is_comparison_operator(op)) inner.in_boolean = true;
    if (is_assignment_operator(op) && !is_first) {
      inner.outer_type = fundamental_expr_type(first_operand_of(expr)).type;
    }
    break;
  }
  return inner;
}

static void walk_operands(an_expr_node *expr, const a_walk_context &context, a_misra_walk *walk)
{
  for (an_expr_node *operand = first_operand_of(expr); operand != nullptr; operand = operand->next)
    misra_walk_expr(operand, context_of_operand(expr, operand, context), walk);
}

static void misra_walk_expr(an_expr_node *expr, const a_walk_context &context, a_misra_walk *walk)
{
  check_recursion();
  switch (expr->kind) {
  case enk_operation:
    check_operation(expr, context, walk);
    walk_operands(expr, context, walk);
    break;
  case enk_constant:
    if (constant_of(expr)->expr != nullptr) misra_walk_expr(constant_of(expr)->expr, context, walk);
    break;
  case enk_builtin_operation:
    for (an_expr_node *operand = builtin_operation_of(expr).first_argument; operand != nullptr;
         operand = operand->next) {
      misra_walk_expr(operand, {false, false, nullptr}, walk);
    }
    break;
  default: break;
  }
}

void misra_check_expr(an_expr_node *expr, a_type *type, a_misra_expr_use use)
{
  misra_flush_diagnostics(expr->expr_range.start);
  if (expr->kind == enk_error) return;
  a_misra_walk walk = {};
  a_walk_context context = {};
  context.in_boolean = use == meu_condition;
  context.stands_alone = use == meu_condition || use == meu_statement;
  context.outer_type = type;
  a_variable *object;
  if (use == meu_return && is_expr_ptr_to_nonstatic(expr, &object)) {
    report_rule(&walk, wr_17_6, expr);
  }
  misra_walk_expr(expr, context, &walk);
  check_order_of_evaluation(expr, &walk);
}
