// misra_types.cpp - the types that the rules of section 10 reason about, and forms of expressions.
// Rule:    what the compiler converts on its own doesn't count: the type of an operation is that of
//          its widest operand before promotion, and a constant is as narrow as its value.
// Entry:   fundamental_expr_type, fundamental_constant_type, fundamental_operand_type,
//          is_complex_expr.
#include "check/misra_expr.h"
#include "consts/const_ints.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "parse/exprutil.h"

//---------------------------------------------------------------------------------------------
// Operators and forms.

bool is_comparison_operator(an_expr_operator_kind op)
{
  return op >= eok_eq && op <= eok_le;
}

bool is_incr_decr_operator(an_expr_operator_kind op)
{
  return op >= eok_pre_incr && op <= eok_post_decr;
}

bool is_assignment_operator(an_expr_operator_kind op)
{
  return op >= eok_assign && op <= eok_struct_assign;
}

static bool is_cast(const an_expr_node *expr)
{
  return is_operation(expr, eok_cast) || is_operation(expr, eok_cast_to_bool) ||
         is_operation(expr, eok_lvalue_cast);
}

bool is_explicit_cast(const an_expr_node *expr)
{
  return is_cast(expr) && !operation_of(expr).is_implicit_cast;
}

static bool is_implicit_cast(const an_expr_node *expr)
{
  return is_cast(expr) && operation_of(expr).is_implicit_cast;
}

an_expr_node *written_expr(an_expr_node *expr)
{
  for (;;) {
    if (is_implicit_cast(expr)) {
      expr = first_operand_of(expr);
    } else if (expr->kind == enk_constant && constant_of(expr)->expr != nullptr) {
      expr = constant_of(expr)->expr;
    } else {
      return expr;
    }
  }
}

an_expr_node *below_all_casts(an_expr_node *expr)
{
  while (is_cast(expr))
    expr = first_operand_of(expr);
  return expr;
}

static bool is_constant_arm(an_expr_node *expr)
{
  while (is_implicit_cast(expr))
    expr = first_operand_of(expr);
  return expr->kind == enk_constant;
}

bool is_complex_expr(an_expr_node *expr)
{
  while (is_implicit_cast(expr))
    expr = first_operand_of(expr);
  if (expr->kind != enk_operation) return false;
  switch (op_of(expr)) {
  case eok_cast:
  case eok_cast_to_bool:
  case eok_lvalue_cast:
  case eok_indirection:
  case eok_subscript:
  case eok_dot_field:
  case eok_arrow_field:
  case eok_call:
  case eok_va_arg:
  case eok_address_of:
  case eok_array_to_pointer: return false;
  case eok_comma: return is_complex_expr(second_operand_of(expr));
  case eok_question:
    return !is_constant_arm(second_operand_of(expr)) || !is_constant_arm(third_operand_of(expr));
  default: return !is_assignment_operator(op_of(expr)) && !is_incr_decr_operator(op_of(expr));
  }
}

a_source_position place_of_expr(const an_expr_node *expr)
{
  return is_null_position(expr->operator_position) ? expr->expr_range.start
                                                   : expr->operator_position;
}

a_variable *variable_of_object(an_expr_node *lvalue)
{
  for (;;) {
    if (lvalue->kind == enk_variable) return variable_of(lvalue);
    if (lvalue->kind != enk_operation) return nullptr;
    switch (op_of(lvalue)) {
    case eok_dot_field:
    case eok_lvalue_cast:
    case eok_real:
    case eok_imag: lvalue = first_operand_of(lvalue); break;
    case eok_subscript:
    case eok_indirection:
      lvalue = first_operand_of(lvalue);
      if (!is_operation(lvalue, eok_array_to_pointer)) return nullptr;
      lvalue = first_operand_of(lvalue);
      break;
    default: return nullptr;
    }
  }
}

//---------------------------------------------------------------------------------------------
// Integer types by the number of bits.

int value_bits_of_type(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind != tk_integer) return int(type->size * targ_char_bit);
  if (as_integer(type).is_bool) return 1;
  a_target_size size, precision;
  a_target_alignment alignment;
  get_integer_size_and_alignment(as_integer(type).int_kind, &size, &precision, &alignment);
  return int(precision) - (int_kind_is_signed[as_integer(type).int_kind] ? 1 : 0);
}

// The narrowest integer type with so many value bits.
static a_type *narrowest_type(int bits, bool is_signed)
{
  static const an_integer_kind kinds[] = {ik_signed_char, ik_short, ik_int, ik_long, ik_long_long};
  for (an_integer_kind kind : kinds) {
    a_type *type = integer_type(is_signed ? kind : unsigned_int_kind_of[kind]);
    if (bits <= value_bits_of_type(type)) return type;
  }
  return integer_type(is_signed ? ik_long_long : ik_unsigned_long_long);
}

static a_fundamental_type of_whole_type(a_type *type)
{
  type = make_unqualified_type(type);
  return {type, value_bits_of_type(type), false};
}

//---------------------------------------------------------------------------------------------
// Constants.

static bool keeps_its_type(const a_constant *constant)
{
  if (is_bool_type(constant->type)) return true;
  if (constant->expr != nullptr && is_explicit_cast(constant->expr)) return true;
  return size_of_type(constant->type) < size_of_type(integer_type(ik_int));
}

a_fundamental_type fundamental_constant_type(a_constant *constant)
{
  a_type *type = constant->type;
  if (constant->kind != ck_integer || !is_integral_or_enum_type(type)) return of_whole_type(type);
  if (constant->expr != nullptr && is_implicit_cast(constant->expr)) {
    return fundamental_expr_type(written_expr(constant->expr));
  }
  bool negative = int_constant_is_signed(constant) && cmplit_integer_constant(constant, 0) < 0;
  int bits = bits_required_to_represent_integer_constant(constant) - (negative ? 1 : 0);
  if (constant->from_character_constant && constant->char_kind == chk_char) {
    a_type *plain_char = integer_type(ik_char);
    if (bits <= value_bits_of_type(plain_char)) return of_whole_type(plain_char);
  }
  if (keeps_its_type(constant)) return {make_unqualified_type(type), bits, false};
  bool has_sign = int_constant_is_signed(constant);
  return {narrowest_type(bits, has_sign), bits, has_sign && !negative};
}

//---------------------------------------------------------------------------------------------
// Two values that meet in an operator.

static a_fundamental_type adapted_constant(const a_fundamental_type &constant,
                                           const a_fundamental_type &other)
{
  if (constant.precision <= other.precision) return {other.type, other.precision, false};
  return of_whole_type(narrowest_type(constant.precision, is_signed_integral_type(other.type)));
}

// Of two integers the wider, of two that are as wide the signed one.
static a_fundamental_type balanced_integers(const a_fundamental_type &left,
                                            const a_fundamental_type &right)
{
  if (left.adapts && right.adapts) return left.precision >= right.precision ? left : right;
  if (left.adapts) return adapted_constant(left, right);
  if (right.adapts) return adapted_constant(right, left);
  int left_width = left.precision + (is_signed_integral_type(left.type) ? 1 : 0);
  int right_width = right.precision + (is_signed_integral_type(right.type) ? 1 : 0);
  if (left_width != right_width) return left_width > right_width ? left : right;
  return is_signed_integral_type(left.type) ? left : right;
}

a_fundamental_type balanced_type(const a_fundamental_type &left, const a_fundamental_type &right)
{
  bool left_floats = is_floating_type(left.type), right_floats = is_floating_type(right.type);
  if (left_floats && right_floats) {
    return size_of_type(left.type) >= size_of_type(right.type) ? left : right;
  }
  if (left_floats || right_floats) return left_floats ? left : right;
  if (!is_integral_or_enum_type(left.type)) return left;
  if (!is_integral_or_enum_type(right.type)) return right;
  return balanced_integers(left, right);
}

//---------------------------------------------------------------------------------------------
// Expressions.

static a_fundamental_type fundamental_type_of_field(an_expr_node *selection)
{
  an_expr_node *node = second_operand_of(selection);
  if (node->kind != enk_field) return of_whole_type(selection->type);
  const a_field *field = field_of(node);
  if (!field->is_bit_field || !is_integral_or_enum_type(selection->type) ||
      is_bool_type(selection->type)) {
    return of_whole_type(selection->type);
  }
  int bits = field->bit_size - (field->bit_field_is_signed ? 1 : 0);
  return {narrowest_type(bits, field->bit_field_is_signed), bits, false};
}

// Below so many operators an operation counts as what it was promoted to: each level of a long sum
// asks for all below.
static constexpr int deepest_level = 64;

static a_fundamental_type fundamental_type_at_level(an_expr_node *expr, int level);

static a_fundamental_type fundamental_type_of_operation(an_expr_node *expr, int level)
{
  if (level > deepest_level) return of_whole_type(expr->type);
  an_expr_operator_kind op = op_of(expr);
  switch (op) {
  case eok_cast:
  case eok_cast_to_bool:
    if (operation_of(expr).is_implicit_cast) break;
    return of_whole_type(expr->type);
  case eok_dot_field:
  case eok_arrow_field: return fundamental_type_of_field(expr);
  case eok_negate:
  case eok_plus:
  case eok_complement:
  case eok_shift_left:
  case eok_shift_right: {
    a_fundamental_type type = fundamental_type_at_level(first_operand_of(expr), level + 1);
    return of_whole_type(type.type);
  }
  case eok_comma: return fundamental_type_at_level(second_operand_of(expr), level + 1);
  case eok_question:
    return balanced_type(fundamental_type_at_level(second_operand_of(expr), level + 1),
                         fundamental_type_at_level(third_operand_of(expr), level + 1));
  case eok_not:
  case eok_land:
  case eok_lor: return {expr->type, 1, true};
  case eok_add:
  case eok_subtract:
  case eok_multiply:
  case eok_divide:
  case eok_remainder:
  case eok_bit_and:
  case eok_bit_or:
  case eok_bit_xor:
  case eok_min:
  case eok_max:
    return balanced_type(fundamental_type_at_level(first_operand_of(expr), level + 1),
                         fundamental_type_at_level(second_operand_of(expr), level + 1));
  default:
    if (is_comparison_operator(op)) return {expr->type, 1, true};
    if (!is_assignment_operator(op) && !is_incr_decr_operator(op)) return of_whole_type(expr->type);
    break;
  }
  return fundamental_type_at_level(first_operand_of(expr), level + 1);
}

static a_fundamental_type fundamental_type_at_level(an_expr_node *expr, int level)
{
  switch (expr->kind) {
  case enk_operation: return fundamental_type_of_operation(expr, level);
  case enk_constant: return fundamental_constant_type(constant_of(expr));
  case enk_routine: return of_whole_type(return_type_of(routine_of(expr)->type));
  default: return of_whole_type(expr->type);
  }
}

a_fundamental_type fundamental_expr_type(an_expr_node *expr)
{
  return fundamental_type_at_level(expr, 0);
}

a_fundamental_type fundamental_operand_type(an_operand *operand)
{
  switch (operand->kind) {
  case ok_constant: return fundamental_constant_type(constant_of_operand(operand));
  case ok_expression: return fundamental_expr_type(expr_of_operand(operand));
  default: return {error_type(), 0, false};
  }
}

bool is_expr_of_signed_integral_type(an_expr_node *expr)
{
  return is_signed_integral_type(fundamental_expr_type(expr).type);
}

static void look_for_floating_type(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  if (expr->type == nullptr || !is_floating_type(expr->type)) return;
  block->result = true;
  block->stop = true;
}

bool expr_refers_to_floating_type(an_expr_node *expr)
{
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = look_for_floating_type;
  traverse_expr(expr, &block);
  return block.result;
}
