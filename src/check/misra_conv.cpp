// misra_conv.cpp - the rules on conversions of numbers: sections 6 and 10.
// Rule:    what counts is the type before promotion, on both sides.  A conversion is tested where
//          the parser makes it, so that each argument and each operand is reported at its own
//          place.
// Entry:   misra_check_conversion, misra_check_binary_operands, misra_check_is_conv_valid.
#include "check/misra_expr.h"
#include "consts/const_ints.h"
#include "consts/folding.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/types.h"
#include "parse/exprutil.h"

//---------------------------------------------------------------------------------------------
// Reporting.

static void report(an_error_code code, a_source_position pos)
{
  expr_pos_diagnostic(misra_required_severity, code, pos);
}

static void report_with_reason(an_error_code code, a_source_position pos, const char *reason)
{
  expr_pos_st_diagnostic(misra_required_severity, code, pos, reason);
}

//---------------------------------------------------------------------------------------------
// To an integer type.

// A literal as it was written, and without the suffix.  An enumerator holds the marks of its value,
// and so does a constant that was cast, which has an expression.
static bool lacks_unsigned_suffix(const a_constant *constant)
{
  return constant->kind == ck_integer && constant->from_literal && constant->expr == nullptr &&
         !constant->has_unsigned_suffix && !constant->from_character_constant &&
         !constant->is_true_false_keyword && constant->source_corresp.name == nullptr;
}

static bool constant_fits(const a_misra_conversion *conversion)
{
  const a_constant *constant = conversion->constant;
  if (constant == nullptr || constant->kind != ck_integer) return false;
  // In an operation it isn't the constant alone that is converted: the other operand becomes
  // unsigned.
  bool target_is_signed = is_signed_integral_type(conversion->target_type);
  if (conversion->is_compound && target_is_signed && !int_constant_is_signed(constant))
    return false;
  an_integer_kind kind = as_integer(skip_typerefs(conversion->target_type)).int_kind;
  return in_range_for_integer_kind(constant, constant, kind);
}

static const char *reason_for_integer(const a_misra_conversion *conversion)
{
  bool is_constant = conversion->constant != nullptr;
  if (conversion->is_complex) return "the expression is complex";
  if (conversion->is_return && !is_constant) {
    return "the expression is not constant and is a return expression";
  }
  if (conversion->is_argument && !is_constant) {
    return "the expression is not constant and is a function argument";
  }
  return nullptr;
}

static void check_integer_to_integer(const a_misra_conversion *conversion)
{
  a_type *target = conversion->target_type;
  int source_bits = conversion->precision, target_bits = value_bits_of_type(target);
  bool same_sign =
      is_signed_integral_type(conversion->source_type) == is_signed_integral_type(target);
  if (!conversion->is_implicit) {
    if (conversion->is_complex && (source_bits < target_bits || !same_sign)) {
      report(ec_misra_c_2004_10_3, conversion->position);
    }
    return;
  }
  if (same_sign && source_bits == target_bits) return;
  if (conversion->adapts && source_bits <= target_bits) return;
  const char *reason = reason_for_integer(conversion);
  if (reason == nullptr) {
    if (same_sign && source_bits < target_bits) return;
    reason = "it is not a conversion to a wider integer type of the same signedness";
  }
  report_with_reason(ec_misra_c_2004_10_1, conversion->position, reason);
}

static void check_to_integer(const a_misra_conversion *conversion)
{
  a_type *source = conversion->source_type, *target = conversion->target_type;
  if (is_floating_type(source)) {
    if (conversion->is_implicit) {
      report_with_reason(ec_misra_c_2004_10_2, conversion->position,
                         "it is not a conversion to a wider floating type");
    } else if (conversion->is_complex) {
      report(ec_misra_c_2004_10_4, conversion->position);
    }
    return;
  }
  if (!is_integral_or_enum_type(source)) return;
  const a_constant *constant = conversion->constant;
  if (constant != nullptr && conversion->is_implicit && !is_enum_type(target) &&
      !is_signed_integral_type(target) && lacks_unsigned_suffix(constant)) {
    report(ec_misra_c_2004_10_6, conversion->position);
  }
  if (conversion->is_implicit && constant_fits(conversion)) return;
  check_integer_to_integer(conversion);
}

//---------------------------------------------------------------------------------------------
// To a floating type.

static const char *reason_for_float(const a_misra_conversion *conversion)
{
  if (conversion->is_return) return "the expression is a return expression";
  if (conversion->is_argument) return "the expression is a function argument";
  if (conversion->is_complex) return "the expression is complex";
  return nullptr;
}

static a_target_size size_of_float_kind(a_float_kind kind)
{
  switch (kind) {
  case fk_float: return targ_sizeof_float;
  case fk_double: return targ_sizeof_double;
  default: return targ_sizeof_long_double;
  }
}

static void check_to_float(const a_misra_conversion *conversion)
{
  a_type *source = conversion->source_type, *target = conversion->target_type;
  bool source_floats = is_floating_type(source);
  if (!source_floats && !is_integral_or_enum_type(source)) return;
  a_float_kind target_kind = float_kind_of_type(target);
  if (source_floats && float_kind_of_type(source) == target_kind) return;
  a_target_size source_size = source_floats ? size_of_float_kind(float_kind_of_type(source)) : 0;
  a_target_size target_size = size_of_float_kind(target_kind);
  if (!conversion->is_implicit) {
    if (!conversion->is_complex) return;
    if (!source_floats) {
      report(ec_misra_c_2004_10_3, conversion->position);
    } else if (source_size < target_size) {
      report(ec_misra_c_2004_10_4, conversion->position);
    }
    return;
  }
  const char *reason = reason_for_float(conversion);
  if (reason == nullptr && source_floats && source_size <= target_size) return;
  if (reason == nullptr) reason = "it is not a conversion to a wider floating type";
  report_with_reason(ec_misra_c_2004_10_2, conversion->position, reason);
}

void misra_check_is_conv_valid(const a_misra_conversion *conversion)
{
  a_type *target = conversion->target_type;
  if (is_error_type(conversion->source_type) || is_error_type(target)) return;
  if (is_bool_type(target)) return; // no number is stored, but whether there is one
  if (is_integral_type(target)) {
    check_to_integer(conversion);
  } else if (is_floating_type(target)) {
    check_to_float(conversion);
  }
}

//---------------------------------------------------------------------------------------------
// Operands.

// The result of a comparison or of a logical operator: 0 or 1, which every integer type holds.
static bool is_truth_value(an_operand *operand)
{
  if (is_bool_type(operand->type)) return true;
  an_expr_node *expr = nullptr;
  if (operand->kind == ok_expression) expr = expr_of_operand(operand);
  if (operand->kind == ok_constant) expr = constant_of_operand(operand)->expr;
  if (expr == nullptr) return false;
  expr = written_expr(expr);
  return expr->kind == enk_operation && !is_explicit_cast(expr) &&
         is_integral_or_enum_type(expr->type) && classify_as_boolean(expr) == bu_boolean;
}

static void describe_operand(an_operand *operand, a_misra_conversion *conversion)
{
  a_fundamental_type source = fundamental_operand_type(operand);
  conversion->constant = operand->kind == ok_constant ? constant_of_operand(operand) : nullptr;
  conversion->source_type = source.type;
  conversion->precision = source.precision;
  conversion->adapts = source.adapts && operand->kind == ok_expression;
  conversion->position = operand->position;
  if (operand->kind == ok_expression && is_complex_expr(expr_of_operand(operand))) {
    conversion->is_complex = true;
  }
}

void misra_check_is_oper_conv_valid(an_operand *operand, a_misra_conversion_use use,
                                    a_type *target_type)
{
  if (is_integral_or_enum_type(target_type) && is_truth_value(operand)) return;
  a_misra_conversion conversion = {};
  conversion.is_argument = use == mcu_argument;
  conversion.is_return = use == mcu_return;
  conversion.is_compound = use == mcu_operation;
  conversion.is_implicit = true;
  conversion.target_type = target_type;
  describe_operand(operand, &conversion);
  misra_check_is_conv_valid(&conversion);
}

static void check_number_cast(an_operand *operand, a_type *type)
{
  if (operand->kind != ok_expression) return;
  if (is_integral_or_enum_type(type) && is_truth_value(operand)) return;
  a_misra_conversion conversion = {};
  conversion.target_type = type;
  describe_operand(operand, &conversion);
  misra_check_is_conv_valid(&conversion);
}

//---------------------------------------------------------------------------------------------
// Plain char, and the char types of numbers.

void ensure_types_both_plain_or_unplain_char(a_source_position pos, a_type *type1, a_type *type2)
{
  if (!is_character_type(type1) || !is_character_type(type2)) return;
  bool first_is_plain = int_kind_of_type(type1) == ik_char;
  bool second_is_plain = int_kind_of_type(type2) == ik_char;
  if (first_is_plain == second_is_plain) return;
  report(first_is_plain ? ec_misra_c_2004_6_1 : ec_misra_c_2004_6_2, pos);
}

// 0 is the null character as well as a number.
static bool is_literal_zero(an_operand *operand)
{
  return operand->kind == ok_constant && constant_of_operand(operand)->is_literal_zero;
}

static void check_char_types(a_type *type, an_operand *other)
{
  if (!is_character_type(type) || is_literal_zero(other)) return;
  ensure_types_both_plain_or_unplain_char(other->position, type,
                                          fundamental_operand_type(other).type);
}

//---------------------------------------------------------------------------------------------
// Where the parser converts.

static bool is_unchecked(an_operand *operand)
{
  return operand->kind == ok_error || is_error_type(operand->type) ||
         (operand->kind != ok_expression && operand->kind != ok_constant) ||
         (expr_stack != nullptr && !expr_stack->code_is_generated);
}

void misra_check_conversion(an_operand *operand, a_type *type, a_misra_conversion_use use)
{
  if (is_unchecked(operand)) return;
  if (is_arithmetic_or_enum_type(type) && is_arithmetic_or_enum_type(operand->type)) {
    misra_check_is_oper_conv_valid(operand, use, type);
    check_char_types(type, operand);
  } else if (is_pointer_type(type) || is_pointer_type(operand->type)) {
    misra_set_diagnostic_pos(operand->position);
    push_pointer_conversion_rules(operand, type);
  }
}

void misra_check_binary_operands(an_operand *left, an_operand *right)
{
  if (is_unchecked(left) || is_unchecked(right)) return;
  a_fundamental_type left_type = fundamental_operand_type(left);
  a_fundamental_type right_type = fundamental_operand_type(right);
  a_type *common = balanced_type(left_type, right_type).type;
  misra_check_is_oper_conv_valid(left, mcu_operation, common);
  misra_check_is_oper_conv_valid(right, mcu_operation, common);
  // The variable says what is meant, not the constant.
  if (left->kind == ok_constant) {
    check_char_types(right_type.type, left);
  } else {
    check_char_types(left_type.type, right);
  }
}

void check_cast_for_misra(an_operand *operand, a_type *type)
{
  if (is_unchecked(operand) || is_void_type(type)) return;
  check_number_cast(operand, type);
  push_pointer_conversion_rules(operand, type);
}

//---------------------------------------------------------------------------------------------
// Shifts.

void misra_check_shift_count(an_operand *value, an_operand *count)
{
  if (is_unchecked(value) || count->kind != ok_constant || !expr_stack->value_required) return;
  const a_constant *constant = constant_of_operand(count);
  if (constant->kind != ck_integer || !is_integral_or_enum_type(value->type)) return;
  // A constant is as wide as the type that it has.
  bool is_constant = value->kind == ok_constant;
  a_type *type = is_constant ? value->type : fundamental_operand_type(value).type;
  unsigned bits;
  bool is_signed;
  get_integer_attributes(type, &bits, &is_signed);
  bool is_negative = int_constant_is_signed(constant) && cmplit_integer_constant(constant, 0) < 0;
  if (is_negative || cmpulit_integer_constant(constant, bits) >= 0) {
    report(ec_misra_c_2004_12_8, count->position);
  }
}
