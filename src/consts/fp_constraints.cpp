// fp_constraints.cpp - an observer of the IL that reports floating-point operations which are not
// allowed.
// Entry: FP_OPERATION_CONSTRAINTS_FACTORY.
#include "consts/fp_constraints.h"
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_hooks.h"

namespace {
enum : int { fp_none = 0, fp_all = 1, fp_only_32 = 2, fp_only_64 = 3 };

class FP_OPERATION_CONSTRAINTS final : public IL_HOOKS {
public:
  void expression(an_expr_node *node) override;
  void dynamic_variable_initialization(a_dynamic_init *init) override;
  void routine_definition(a_routine *routine) override;

private:
  static bool float_type_allowed(a_type *type);
  static void issue_floating_point_diag(a_source_position position);
  static void check_type(a_type *type, a_source_position position);
  static void check_call(an_expr_node *node);
};
} // namespace

bool FP_OPERATION_CONSTRAINTS::float_type_allowed(a_type *type)
{
  if (!is_floating_type(type) || legal_float_precision == fp_all) return true;
  if (legal_float_precision == fp_none) return false;
  bool is_32_bits = float_kind_of_type(type) == fk_float;
  return is_32_bits == (legal_float_precision == fp_only_32);
}

void FP_OPERATION_CONSTRAINTS::issue_floating_point_diag(a_source_position position)
{
  const char *which = legal_float_precision == fp_only_64   ? "32-bit "
                      : legal_float_precision == fp_only_32 ? "64-bit "
                                                            : "";
  pos_st_diagnostic(es_discretionary_error, ec_float_support_disabled, position, which);
}

void FP_OPERATION_CONSTRAINTS::check_type(a_type *type, a_source_position position)
{
  if (!float_type_allowed(type)) issue_floating_point_diag(position);
}

void FP_OPERATION_CONSTRAINTS::check_call(an_expr_node *node)
{
  check_type(node->type, node->operator_position);
  for (an_expr_node *argument = first_operand_of(node)->next; argument != nullptr;
       argument = argument->next)
    check_type(argument->type, argument->expr_range.start);
}

void FP_OPERATION_CONSTRAINTS::expression(an_expr_node *node)
{
  if (node->kind != enk_operation) return;
  a_source_position position =
      is_null_position(node->operator_position) ? node->expr_range.start : node->operator_position;
  an_expr_operator_kind op = op_of(node);
  if (op == eok_cast) {
    check_type(node->type, position);
    check_type(first_operand_of(node)->type, position);
  } else if (op == eok_call) {
    check_call(node);
  } else if (op >= eok_eq && op <= eok_le) {
    a_type *left = first_operand_of(node)->type, *right = second_operand_of(node)->type;
    if (!is_floating_type(left) || !is_floating_type(right)) return;
    if (!float_type_allowed(left) || !float_type_allowed(right))
      issue_floating_point_diag(position);
  } else if ((op >= eok_negate && op <= eok_subtract_complex_2) ||
             (op >= eok_min && op <= eok_divide_assign)) {
    check_type(node->type, position);
  }
}

void FP_OPERATION_CONSTRAINTS::dynamic_variable_initialization(a_dynamic_init *init)
{
  bool has_value = init->kind == dik_constant || init->kind == dik_expression;
  if (has_value && init->variable != nullptr) check_type(init->variable->type, init->position);
}

void FP_OPERATION_CONSTRAINTS::routine_definition(a_routine *routine)
{
  a_source_position position = routine->source_corresp.decl_position;
  check_type(return_type_of(routine->type), position);
  for (a_param_type *param = param_types_of(routine->type); param != nullptr; param = param->next)
    check_type(param->type, position);
}

void FP_OPERATION_CONSTRAINTS_FACTORY()
{
  static FP_OPERATION_CONSTRAINTS constraints;
  if (legal_float_precision != fp_all) il_hooks.add(&constraints);
}
