// folding.cpp - values of operators on constants: the common head and end, integers, logic.
// Uses:  target integers (const_ints.h); folding_float.cpp and folding_pointer.cpp for the other
//        kinds.
// Rule:  one set of rules for all contexts: an operation only records a code and a severity, and
//        report_folding alone knows what the context makes of it.
// Entry: binary_operation, unary_operation.
// See:   C99 6.5, 6.6; differences of GNU C and old C are marked.
#include "consts/folding_private.h"

void record_fault(a_folding *folding, an_error_code code, an_error_severity severity)
{
  if (folding->code != ec_no_error) return;
  folding->code = code;
  folding->severity = severity;
}

static an_error_severity integer_overflow_severity()
{
  return strict_ansi_mode ? strict_ansi_error_severity : es_warning;
}

void record_integer_overflow(a_folding *folding)
{
  record_fault(folding, ec_integer_overflow, integer_overflow_severity());
}

void set_result_number(a_constant *result, long long number)
{
  an_integer_value value;
  set_integer_value(&value, number);
  set_result_value(result, &value);
}

// --- Integers ------------------------------------------------------------------------------------

void get_integer_attributes(a_type *type, unsigned *bits, bool *is_signed)
{
  type = skip_typerefs(type);
  if (type->kind == tk_integer) {
    an_integer_kind kind = as_integer(type).int_kind;
    a_target_size size, precision;
    a_target_alignment alignment;
    get_integer_size_and_alignment(kind, &size, &precision, &alignment);
    *bits = unsigned(precision);
    *is_signed = int_kind_is_signed[kind];
  } else {
    *bits = targ_sizeof_pointer * targ_char_bit;
    *is_signed = false;
  }
}

static void truncate_value(an_integer_value *value, unsigned bits, bool is_signed)
{
  if (bits >= 64) return;
  if (is_signed) {
    sign_extend_integer_value(value, int(bits));
  } else {
    an_integer_value mask;
    make_integer_value_mask(&mask, int(bits));
    and_integer_values(value, &mask);
  }
}

// A constant int expression whose value only a 64-bit int could hold.
static void check_int_portability(const an_integer_value *value, bool is_signed, a_constant *result,
                                  an_error_code *code, an_error_severity *severity)
{
  an_integer_kind kind = as_integer(skip_typerefs(result->type)).int_kind;
  if (!check_32bit_int_portability || (kind != ik_int && kind != ik_unsigned_int)) return;
  an_integer_value narrow = *value;
  truncate_value(&narrow, 32, int_kind_is_signed[kind]);
  if (cmp_integer_values(value, is_signed, &narrow, is_signed) != 0 &&
      le_max_integer_value_of_kind(value, is_signed, ik_long) && *code == ec_no_error) {
    *code = ec_folding_int;
    *severity = es_warning;
  }
}

void trunc_and_set_integer(const an_integer_value *value, a_constant *result, bool is_signed,
                           bool saturate, an_error_code *code, an_error_severity *severity)
{
  an_integer_value truncated = *value;
  unsigned bits;
  bool kind_is_signed;
  get_integer_attributes(result->type, &bits, &kind_is_signed);
  bool is_integer_type = skip_typerefs(result->type)->kind == tk_integer;
  if (code != nullptr && is_integer_type)
    check_int_portability(value, is_signed, result, code, severity);
  truncate_value(&truncated, bits, kind_is_signed);
  if (cmp_integer_values(value, is_signed, &truncated, kind_is_signed) != 0) {
    if (code != nullptr && is_signed && *code == ec_no_error) {
      *code = ec_integer_overflow;
      *severity = integer_overflow_severity();
    }
    if (saturate && is_integer_type) {
      an_integer_kind kind = as_integer(skip_typerefs(result->type)).int_kind;
      an_integer_value zero;
      set_integer_value(&zero, 0);
      bool negative = cmp_integer_values(value, is_signed, &zero, true) < 0;
      truncated = negative ? min_integer_value_of_kind[kind] : max_integer_value_of_kind[kind];
    }
  }
  set_result_value(result, &truncated);
}

// Sets the result from a value of the left operand's signedness.
static void set_integer_result(a_folding *folding, const an_integer_value *value, bool test_range)
{
  bool is_signed = int_constant_is_signed(folding->left);
  trunc_and_set_integer(value, folding->result, is_signed, false,
                        test_range ? &folding->code : nullptr, &folding->severity);
}

static bool integer_constant_is_zero(const a_constant *constant)
{
  return cmplit_integer_constant(constant, 0) == 0;
}

static void fold_integer_arithmetic(a_folding *folding)
{
  an_integer_value value = integer_of(folding->left);
  const an_integer_value *right = &integer_of(folding->right);
  bool is_signed = int_constant_is_signed(folding->left), overflow = false;
  bool divides = folding->op == eok_divide || folding->op == eok_remainder;
  if (divides && integer_constant_is_zero(folding->right)) {
    record_fault(folding, folding->op == eok_divide ? ec_divide_by_zero : ec_mod_by_zero, es_error);
    return;
  }
  switch (folding->op) {
  case eok_add: add_integer_values(&value, right, is_signed, &overflow); break;
  case eok_subtract: subtract_integer_values(&value, right, is_signed, &overflow); break;
  case eok_multiply: multiply_integer_values(&value, right, is_signed, &overflow); break;
  case eok_divide: divide_integer_values(&value, right, is_signed, &overflow); break;
  case eok_remainder: remainder_integer_values(&value, right, is_signed, &overflow); break;
  default: unexpected_kind("arithmetic operator");
  }
  if (overflow && is_signed) record_integer_overflow(folding);
  set_integer_result(folding, &value, is_signed);
}

static void fold_bitwise(a_folding *folding)
{
  an_integer_value value = integer_of(folding->left);
  const an_integer_value *right = &integer_of(folding->right);
  switch (folding->op) {
  case eok_bit_and: and_integer_values(&value, right); break;
  case eok_bit_or: or_integer_values(&value, right); break;
  case eok_bit_xor: xor_integer_values(&value, right); break;
  default: unexpected_kind("bitwise operator");
  }
  set_integer_result(folding, &value, false);
  folding->result->unsigned_op_result = true;
}

bool check_shift_count(const a_constant *count, a_type *type, an_error_code *code)
{
  *code = ec_no_error;
  if (count->kind != ck_integer) return true;
  unsigned bits;
  bool ignored;
  get_integer_attributes(type, &bits, &ignored);
  bool is_negative = int_constant_is_signed(count) && cmplit_integer_constant(count, 0) < 0;
  if (is_negative)
    *code = ec_negative_shift_count;
  else if (cmpulit_integer_constant(count, bits) >= 0)
    *code = ec_shift_count_too_large;
  return *code == ec_no_error || (*code == ec_shift_count_too_large && (gcc_mode || gpp_mode));
}

static void shift_value(a_folding *folding, an_integer_value *value, int count, unsigned bits)
{
  bool ignored;
  if (folding->op == eok_shift_left) {
    shift_left_integer_value(value, count, &ignored);
    return;
  }
  bool is_signed = int_constant_is_signed(folding->left);
  if (is_signed && !targ_right_shift_is_arithmetic) {
    // Bits of the sign extension are none of the operand's and must not come down.
    an_integer_value mask;
    make_integer_value_mask(&mask, int(bits));
    and_integer_values(value, &mask);
  }
  shift_right_integer_value(value, count, is_signed, targ_right_shift_is_arithmetic);
}

static void fold_shift(a_folding *folding)
{
  an_error_code code;
  bool has_value =
      check_shift_count(folding->right, folding->left->type, &code);
  if (code != ec_no_error)
    record_fault(folding, code, has_value ? es_warning : es_error);
  if (!has_value) return;
  unsigned bits;
  bool ignored;
  get_integer_attributes(folding->left->type, &bits, &ignored);
  an_integer_value value = integer_of(folding->left);
  if (code != ec_shift_count_too_large) {
    shift_value(folding, &value, int(unsigned_value_of_integer_constant(folding->right, &ignored)),
                bits);
  } else if (targ_too_large_shift_count_is_taken_modulo_size) {
    unsigned long long count = unsigned_value_of_integer_constant(folding->right, &ignored);
    shift_value(folding, &value, int(count % bits), bits);
  } else {
    shift_value(folding, &value, int(bits) - 1, bits);
    shift_value(folding, &value, 1, bits);
  }
  set_integer_result(folding, &value, false);
}

bool order_satisfies(an_expr_operator_kind op, int order)
{
  switch (op) {
  case eok_eq: return order == 0;
  case eok_ne: return order != 0;
  case eok_gt: return order > 0;
  case eok_lt: return order < 0;
  case eok_ge: return order >= 0;
  case eok_le: return order <= 0;
  default: unexpected_kind("comparison operator");
  }
}

static void fold_min_max(a_folding *folding)
{
  int order = cmp_integer_constants(folding->left, folding->right);
  bool takes_left = folding->op == eok_min ? order <= 0 : order >= 0;
  set_result_value(folding->result, &integer_of(takes_left ? folding->left : folding->right));
}

static bool is_comparison(an_expr_operator_kind op)
{
  return op >= eok_eq && op <= eok_le;
}

static void fold_integer_operation(a_folding *folding)
{
  switch (folding->op) {
  case eok_add:
  case eok_subtract:
  case eok_multiply:
  case eok_divide:
  case eok_remainder: fold_integer_arithmetic(folding); return;
  case eok_shift_left:
  case eok_shift_right: fold_shift(folding); return;
  case eok_bit_and:
  case eok_bit_or:
  case eok_bit_xor: fold_bitwise(folding); return;
  case eok_min:
  case eok_max: fold_min_max(folding); return;
  default:
    if (is_comparison(folding->op))
      set_result_number(
          folding->result,
          order_satisfies(folding->op, cmp_integer_constants(folding->left, folding->right)));
    else
      folding->not_folded = true;
  }
}

// --- Truth values --------------------------------------------------------------------------------

static void fold_logical(a_folding *folding)
{
  bool decided_by = folding->op == eok_lor;
  bool left_known = constant_bool_value_known_at_compile_time(folding->left);
  if (left_known && !is_false_constant(folding->left) == decided_by) {
    set_result_number(folding->result, decided_by);
  } else if (left_known && constant_bool_value_known_at_compile_time(folding->right)) {
    set_result_number(folding->result, !is_false_constant(folding->right));
  } else {
    folding->not_folded = true;
  }
}

// --- The common head -----------------------------------------------------------------------------

static bool is_dependent(const a_constant *constant)
{
  return constant->kind == ck_template_param;
}

static bool is_dependent_folding(const a_constant *left, const a_constant *right, a_type *type)
{
  if (C_dialect != 2) return false;
  return is_dependent(left) || (right != nullptr && is_dependent(right)) ||
         (!il_lowering_underway && is_template_dependent_type(type));
}

static bool is_punned_address(const a_constant *constant)
{
  return constant->kind == ck_address && constant->value_is_punned &&
         is_integral_or_enum_type(constant->type);
}

// An address cast to an integer, and an operation that it allows; false: nothing of the kind.
static bool fold_punned_address(a_folding *folding)
{
  bool left = is_punned_address(folding->left), right = is_punned_address(folding->right);
  if (!left && !right) return false;
  const a_constant *address = left ? folding->left : folding->right;
  const a_constant *other = left ? folding->right : folding->left;
  bool gnu = gcc_mode || gpp_mode;
  bool adds = folding->op == eok_add || (left && folding->op == eok_subtract);
  if (adds && other->kind == ck_integer) {
    a_type *type = folding->result->type;
    copy_constant(address, folding->result);
    folding->result->type = type;
    folding->result->expr = nullptr;
    folding->not_folded = !add_to_pointer_constant(folding->result, other,
                                                   folding->op == eok_subtract, false, folding);
  } else if (left && right && folding->op == eok_subtract &&
             (gcc_mode || (gpp_mode && gnu_version <= 39999))) {
    fold_pointer_difference(folding);
  } else if (gnu && folding->op == eok_bit_and && other->kind == ck_integer &&
             integer_constant_is_zero(other)) {
    set_result_number(folding->result, 0);
  } else {
    folding->not_folded = true;
  }
  return true;
}

static bool is_integral_constant_operand(const a_constant *constant)
{
  return constant->kind == ck_integer && !constant->not_integral_constant_expr &&
         (!constant->value_is_punned || is_nullptr_type(constant->type));
}

static void fold_pointer_kind(a_folding *folding)
{
  switch (folding->op) {
  case eok_pointer_add:
  case eok_pointer_subtract:
  case eok_subscript:
  case eok_add:
  case eok_subtract: fold_pointer_operation(folding); return;
  case eok_pointer_difference: fold_pointer_difference(folding); return;
  default:
    if (is_comparison(folding->op))
      fold_pointer_comparison(folding);
    else
      folding->not_folded = true;
  }
}

// A pointer is known by its operator too: its integer may be a plain null pointer constant.
static bool is_pointer_operator(an_expr_operator_kind op)
{
  return op == eok_pointer_add || op == eok_pointer_subtract || op == eok_pointer_difference ||
         op == eok_subscript;
}

static void fold_by_kind(a_folding *folding)
{
  if (folding->op == eok_land || folding->op == eok_lor) {
    fold_logical(folding);
    return;
  }
  a_type_kind kind =
      is_pointer_operator(folding->op)
          ? tk_pointer
          : binary_operation_type_kind(folding->op, folding->left->type, folding->right->type);
  switch (kind) {
  case tk_integer:
    if (folding->left->kind == ck_integer && folding->right->kind == ck_integer)
      fold_integer_operation(folding);
    else
      folding->not_folded = true;
    return;
  case tk_float:
  case tk_imaginary:
  case tk_complex: fold_float_operation(folding, kind); return;
  case tk_pointer:
  case tk_nullptr: fold_pointer_kind(folding); return;
  case tk_ptr_to_member: fold_ptr_to_member_comparison(folding); return;
  default: folding->not_folded = true; return;
  }
}

// --- The common end ------------------------------------------------------------------------------

bool report_folding(a_folding *folding, bool is_constant_context, bool value_required,
                    an_error_code *suppressed, const a_source_position *position)
{
  if (folding->code == ec_no_error) return folding->not_folded;
  if (!value_required) return true;
  bool has_value = !folding->not_folded && folding->severity < es_error;
  if (!is_constant_context) {
    if (folding->severity >= es_error) {
      // The operation stays, and what it does is left to the run.
      folding->severity = es_warning;
      has_value = false;
    }
  } else if (folding->severity >= es_error ||
             is_effective_error(folding->code, folding->severity, *position)) {
    if (suppressed != nullptr)
      *suppressed = folding->code;
    else
      pos_error(folding->code, *position);
    set_error_constant(folding->result);
    return false;
  }
  if (suppressed == nullptr) pos_diagnostic(folding->severity, folding->code, *position);
  return !has_value;
}

static void start_result(a_constant *result, a_type *result_type)
{
  clear_constant(result, ck_integer);
  result->type = result_type;
}

void binary_operation(an_expr_operator_kind op, const a_constant *left, const a_constant *right,
                      a_type *result_type, a_constant *result, bool is_constant_context,
                      bool value_required, bool *out_not_folded, bool *out_not_folded_by_template,
                      an_error_code *out_suppressed_error_code, const a_source_position *position)
{
  *out_not_folded = false;
  if (out_not_folded_by_template != nullptr) *out_not_folded_by_template = false;
  if (left->kind == ck_error || right->kind == ck_error) {
    set_error_constant(result);
    return;
  }
  start_result(result, result_type);
  if (is_dependent_folding(left, right, result_type)) {
    *out_not_folded = true;
    if (out_not_folded_by_template != nullptr) *out_not_folded_by_template = true;
    return;
  }
  if ((left->kind == ck_address_difference || right->kind == ck_address_difference) &&
      op != eok_land && op != eok_lor) {
    *out_not_folded = true;
    return;
  }
  a_folding folding = {op, left, right, result};
  if (!fold_punned_address(&folding)) fold_by_kind(&folding);
  result->not_integral_constant_expr =
      !is_integral_constant_operand(left) || !is_integral_constant_operand(right);
  *out_not_folded = report_folding(&folding, is_constant_context, value_required,
                                   out_suppressed_error_code, position);
}

// --- One operand ---------------------------------------------------------------------------------

static void fold_integer_negate(a_folding *folding)
{
  const a_constant *operand = folding->left;
  bool is_signed = int_constant_is_signed(operand), overflow;
  an_integer_value value;
  set_integer_value(&value, 0);
  subtract_integer_values(&value, &integer_of(operand), is_signed, &overflow);
  // Old C: what came out of a bitwise or unsigned operation is negated as bits.
  bool test_range = is_signed && !(C_dialect == 1 && operand->unsigned_op_result);
  if (overflow && test_range) record_integer_overflow(folding);
  set_integer_result(folding, &value, test_range);
  if (!is_signed) folding->result->unsigned_op_result = true;
}

static void fold_integer_unary(a_folding *folding)
{
  an_integer_value value = integer_of(folding->left);
  switch (folding->op) {
  case eok_negate: fold_integer_negate(folding); return;
  case eok_complement:
    complement_integer_value(&value);
    set_integer_result(folding, &value, false);
    folding->result->unsigned_op_result = true;
    return;
  case eok_plus:
  case eok_real:
  case eok_conj: set_integer_result(folding, &value, false); return;
  case eok_imag: set_result_number(folding->result, 0); return;
  default: folding->not_folded = true; return;
  }
}

static void fold_unary_by_kind(a_folding *folding)
{
  if (folding->op == eok_not || folding->op == eok_cast_to_bool) {
    if (!constant_bool_value_known_at_compile_time(folding->left))
      folding->not_folded = true;
    else
      set_result_number(folding->result,
                        is_false_constant(folding->left) == (folding->op == eok_not));
    return;
  }
  switch (folding->left->kind) {
  case ck_integer: fold_integer_unary(folding); return;
  case ck_float:
  case ck_complex:
  case ck_imaginary: fold_float_unary(folding); return;
  default: folding->not_folded = true; return;
  }
}

void unary_operation(an_expr_operator_kind op, const a_constant *operand, a_type *result_type,
                     a_constant *result, bool is_constant_context, bool value_required,
                     bool *out_not_folded, bool *out_not_folded_by_template,
                     an_error_code *out_suppressed_error_code, const a_source_position *position)
{
  *out_not_folded = false;
  if (out_not_folded_by_template != nullptr) *out_not_folded_by_template = false;
  if (operand->kind == ck_error) {
    set_error_constant(result);
    return;
  }
  start_result(result, result_type);
  if (is_dependent_folding(operand, nullptr, result_type)) {
    *out_not_folded = true;
    if (out_not_folded_by_template != nullptr) *out_not_folded_by_template = true;
    return;
  }
  a_folding folding = {op, operand, nullptr, result};
  fold_unary_by_kind(&folding);
  result->not_integral_constant_expr = !is_integral_constant_operand(operand);
  *out_not_folded = report_folding(&folding, is_constant_context, value_required,
                                   out_suppressed_error_code, position);
}
