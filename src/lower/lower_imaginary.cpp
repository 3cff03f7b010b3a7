// lower_imaginary.cpp - values of imaginary type, which the generated C doesn't have: it holds their
// imaginary part in an object of the real type of the same kind.
// Rule:    nodes keep their imaginary types, which the writer prints as the real ones; what the
//          unit i would change is rewritten.
// Entry:   lower_imaginary_operator, rewrite_imaginary_assignment.
// See:     C99 G.4, G.5.
#include "lower/lower_c99.h"

static a_type *real_type_like(a_type *type)
{
  return float_type(float_kind_of_type(type));
}

static void overwrite_value(an_expr_node *expr, an_expr_node *value)
{
  bool not_used = expr->result_not_used;
  value->expr_range = expr->expr_range;
  overwrite_node(expr, value);
  expr->result_not_used = not_used;
}

// Imaginary and real values have no part in common: what is left is a zero, and the effects.
static void make_zero_part(an_expr_node *cast)
{
  an_expr_node *operand = first_operand_of(cast);
  an_expr_node *zero = node_for_zero_of_type(real_type_like(operand->type));
  zero->type = operand->type;
  first_operand_of(cast) = make_comma_node(operand, zero);
}

// x becomes the complex value 0 + xi.  A product with the unit would spoil infinities and zeros.
static void make_complex_value(an_expr_node *cast)
{
  an_expr_node *operand = first_operand_of(cast);
  a_type *part_type = real_type_like(cast->type);
  a_variable *variable = make_lowered_temporary(rvalue_type(cast->type));
  an_expr_node *real = make_lvalue_operator_node(eok_real, part_type, var_lvalue_expr(variable));
  an_expr_node *imag = make_lvalue_operator_node(eok_imag, part_type, var_lvalue_expr(variable));
  operand = add_cast(operand, part_type);
  an_expr_node *zero = node_for_zero_of_type(part_type);
  an_expr_node *parts = make_comma_node(make_binary_node(eok_assign, part_type, real, zero),
                                        make_binary_node(eok_assign, part_type, imag, operand));
  overwrite_value(cast, make_comma_node(parts, var_rvalue_expr(variable)));
}

static void take_imaginary_part(an_expr_node *cast)
{
  an_expr_node *operand = first_operand_of(cast);
  first_operand_of(cast) = make_operator_node(eok_imag, real_type_like(operand->type), operand);
}

static void lower_imaginary_cast(an_expr_node *cast)
{
  a_type *target = skip_typerefs(cast->type), *source = skip_typerefs(first_operand_of(cast)->type);
  if (source->kind == tk_imaginary) {
    if (target->kind == tk_complex) {
      make_complex_value(cast);
    } else if (target->kind != tk_imaginary && target->kind != tk_void && !is_bool_type(target)) {
      make_zero_part(cast);
    }
  } else if (target->kind == tk_imaginary) {
    if (source->kind == tk_complex) {
      take_imaginary_part(cast);
    } else if (source->kind == tk_float) {
      make_zero_part(cast);
    } else {
      first_operand_of(cast) = add_cast(first_operand_of(cast), real_type_like(target));
      make_zero_part(cast);
    }
  }
}

// i times i, and 1 over i, are negative.
static void negate_product(an_expr_node *expr)
{
  an_expr_node *product = copy_node(expr);
  product->next = nullptr;
  overwrite_value(expr, make_operator_node(eok_negate, expr->type, product));
}

void lower_imaginary_operator(an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  if (operand == nullptr) return;
  switch (op_of(expr)) {
  case eok_cast: lower_imaginary_cast(expr); break;
  case eok_multiply:
    if (is_imaginary_type(operand->type) && is_imaginary_type(operand->next->type)) {
      negate_product(expr);
    }
    break;
  case eok_divide:
    if (!is_imaginary_type(operand->type) && is_imaginary_type(operand->next->type)) {
      negate_product(expr);
    }
    break;
  case eok_pre_incr:
  case eok_pre_decr:
  case eok_post_incr:
  case eok_post_decr:
    // The real part that changes isn't kept.
    if (is_imaginary_type(operand->type)) overwrite_value(expr, rvalue_expr_for_lvalue(operand));
    break;
  default: break;
  }
}

static bool is_product_assignment(an_expr_operator_kind op)
{
  return op == eok_multiply_assign || op == eok_divide_assign;
}

bool rewrite_imaginary_assignment(an_expr_node *expr)
{
  if (!is_compound_assignment_operator(op_of(expr))) return false;
  an_expr_node *left = first_operand_of(expr);
  if (!is_imaginary_type(left->type)) return false;
  a_type *right = left->next->type;
  bool is_direct = is_product_assignment(op_of(expr)) ? !is_nonreal_floating_type(right)
                                                      : is_imaginary_type(right);
  if (is_direct) return false;
  rewrite_compound_assignment(expr);
  return true;
}
