// misra_pending.cpp - checks that are not part of the system yet.  They are weak: the file that brings a check
// replaces it, and its row here goes.
#include "check/misra.h"

#pragma GCC diagnostic ignored "-Wunused-parameter"
#define PENDING __attribute__((weak))

PENDING void misra_check_expr(an_expr_node *expr, a_type *type)
{
}
PENDING bool is_operand_misra_primary_expr(an_operand *operand, an_expr_operator_kind op)
{
  return true;
}
PENDING bool is_expr_effectively_boolean(an_expr_node *expr, bool known_only)
{
  return false;
}
PENDING bool expr_refers_to_floating_type(an_expr_node *expr)
{
  return false;
}
PENDING bool is_expr_of_signed_integral_type(an_expr_node *expr)
{
  return false;
}
PENDING bool is_expr_ptr_to_nonstatic(an_expr_node *expr, a_variable **variable)
{
  return false;
}
PENDING bool is_operand_ptr_to_nonstatic(an_operand *operand, a_variable **variable)
{
  return false;
}
PENDING a_variable *find_loop_condition_variable(an_expr_node *expr)
{
  return nullptr;
}
PENDING bool oper_nodes_are_same_arg(an_expr_node *a, an_expr_node *b)
{
  return false;
}
PENDING a_type *fundamental_expr_type(an_expr_node *expr, int *precision)
{
  return nullptr;
}
PENDING a_type *fundamental_constant_type(a_constant *constant, int *precision)
{
  return nullptr;
}
PENDING a_type *fundamental_operand_type(an_operand *operand, int *precision)
{
  return nullptr;
}
PENDING void misra_check_is_oper_conv_valid(an_operand *operand, bool is_complex, bool is_argument,
                                            bool is_return, bool is_compound, a_type *target_type)
{
}
PENDING void ensure_types_both_plain_or_unplain_char(a_source_position pos, a_type *type1,
                                                     a_type *type2)
{
}
