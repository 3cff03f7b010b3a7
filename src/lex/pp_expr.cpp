// pp_expr.cpp - the controlling expression of #if and #elif.
// Uses:    tokens in the mode in_pp_if_expression (names are 0 already), target integers.
// Rule:    operands of an operator are brought to a common kind first; in an operand whose value isn't
//          required nothing is reported.
// Entry:   scan_pp_expression.
// See:     C99 6.10.1; K&R and C89 compute in long, C99 and GNU modes in the widest type.
#include "lex/pp_expr.h"
#include <cstdint>
#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/preproc.h"
#include "mem/mem_manage.h"

an_expr_stack_entry **pp_expr_stack_to_cut;

static constexpr int max_nesting = 4000; // of parentheses, "?:" and unary operators

static int nesting;
static bool syntax_fault; // reported; nothing more of the line is read

namespace {
struct a_pp_value {
  an_integer_value value;
  an_integer_kind kind;
  bool valid; // false after a fault in computing it
};
} // namespace

static a_pp_value scan_conditional(bool required);

//---------------------------------------------------------------------------------------------
// Values.

static a_pp_value invalid_value()
{
  a_pp_value v = {};
  v.kind = ik_long;
  return v;
}

static a_pp_value syntax_error_value(an_error_code code)
{
  if (!syntax_fault) syntax_error(code);
  syntax_fault = true;
  return invalid_value();
}

static a_pp_value small_value(int number)
{
  a_pp_value v = {};
  set_integer_value(&v.value, number);
  v.kind = c99_mode || gcc_mode || gpp_mode ? targ_intmax_kind : ik_long;
  v.valid = true;
  return v;
}

static inline bool is_signed(const a_pp_value &v)
{
  return int_kind_is_signed[v.kind];
}

static inline bool is_true(const a_pp_value &v)
{
  for (uint16_t digit : v.value.digit) {
    if (digit != 0) return true;
  }
  return false;
}

static unsigned width_of_kind(an_integer_kind kind)
{
  uint64_t size, precision;
  unsigned alignment;
  get_integer_size_and_alignment(kind, &size, &precision, &alignment);
  return (unsigned)precision;
}

static void report(bool required, an_error_severity severity, an_error_code code)
{
  if (required) diagnostic(severity, code);
}

static an_error_severity severity_of_overflow()
{
  return strict_ansi_mode ? strict_ansi_error_severity : es_warning;
}

// Brings a result into the range of its kind.  What is out of range in a signed one is reported.
static void fit_to_kind(a_pp_value *v, bool overflow, bool required)
{
  bool sign = is_signed(*v);
  if (sign &&
      (overflow || !le_max_integer_value_of_kind(&v->value, true, v->kind) ||
       cmp_integer_values(&v->value, true, &min_integer_value_of_kind[v->kind], true) < 0)) {
    report(required, severity_of_overflow(), ec_integer_overflow);
  }
  int width = (int)width_of_kind(v->kind);
  if (width >= 64) return;
  an_integer_value mask;
  make_integer_value_mask(&mask, width);
  and_integer_values(&v->value, &mask);
  if (sign) sign_extend_integer_value(&v->value, width);
}

// The usual arithmetic conversions.
static an_integer_kind common_kind(an_integer_kind a, an_integer_kind b)
{
  if (a == b) return a;
  bool a_signed = int_kind_is_signed[a], b_signed = int_kind_is_signed[b];
  if (a_signed == b_signed) return a > b ? a : b;
  an_integer_kind signed_kind = a_signed ? a : b;
  an_integer_kind unsigned_kind = a_signed ? b : a;
  if (unsigned_kind > signed_kind) return unsigned_kind;
  if (width_of_kind(signed_kind) > width_of_kind(unsigned_kind)) return signed_kind;
  return unsigned_int_kind_of[signed_kind];
}

static void convert_to_kind(a_pp_value *v, an_integer_kind kind)
{
  v->kind = kind;
  int width = (int)width_of_kind(kind);
  if (width >= 64) return;
  an_integer_value mask;
  make_integer_value_mask(&mask, width);
  and_integer_values(&v->value, &mask);
  if (int_kind_is_signed[kind]) sign_extend_integer_value(&v->value, width);
}

static an_integer_kind convert_to_common_kind(a_pp_value *left, a_pp_value *right)
{
  an_integer_kind kind = common_kind(left->kind, right->kind);
  convert_to_kind(left, kind);
  convert_to_kind(right, kind);
  return kind;
}

//---------------------------------------------------------------------------------------------
// Operators.

// Precedence of a binary operator, 0 for any other token.
static int precedence_of(a_token_kind token)
{
  switch (token) {
  case tok_or_or: return 1;
  case tok_and_and: return 2;
  case tok_or: return 3;
  case tok_excl_or: return 4;
  case tok_ampersand: return 5;
  case tok_eq:
  case tok_ne: return 6;
  case tok_lt:
  case tok_gt:
  case tok_le:
  case tok_ge: return 7;
  case tok_shift_left:
  case tok_shift_right: return 8;
  case tok_plus:
  case tok_minus: return 9;
  case tok_star:
  case tok_divide:
  case tok_remainder: return 10;
  default: return 0;
  }
}

static a_pp_value shift(a_token_kind op, a_pp_value left, const a_pp_value &right, bool required)
{
  int width = (int)width_of_kind(left.kind);
  bool overflow;
  long long count = value_of_integer_value(&right.value, is_signed(right), &overflow);
  if (count < 0 && !overflow) {
    report(required, es_error, ec_negative_shift_count);
    return invalid_value();
  }
  if (overflow || count >= width) {
    bool is_gnu = gcc_mode || gpp_mode;
    report(required, is_gnu ? es_warning : es_error, ec_shift_count_too_large);
    if (!is_gnu) return invalid_value();
    // All bits go: zero, or copies of the sign.
    bool stays_negative = op == tok_shift_right && is_signed(left) &&
                          value_of_integer_value(&left.value, true, &overflow) < 0;
    set_integer_value(&left.value, stays_negative ? -1 : 0);
    return left;
  }
  if (op == tok_shift_left) {
    shift_left_integer_value(&left.value, (int)count, &overflow);
    convert_to_kind(&left, left.kind);
  } else {
    shift_right_integer_value(&left.value, (int)count, is_signed(left), true);
  }
  return left;
}

static a_pp_value divide(a_token_kind op, a_pp_value left, const a_pp_value &right, bool required)
{
  if (!is_true(right)) {
    report(required, es_error, op == tok_divide ? ec_divide_by_zero : ec_mod_by_zero);
    return invalid_value();
  }
  bool overflow;
  if (op == tok_divide) {
    divide_integer_values(&left.value, &right.value, is_signed(left), &overflow);
  } else {
    remainder_integer_values(&left.value, &right.value, is_signed(left), &overflow);
  }
  fit_to_kind(&left, overflow, required);
  return left;
}

static bool compare(a_token_kind op, const a_pp_value &left, const a_pp_value &right)
{
  bool sign = is_signed(left);
  int order = cmp_integer_values(&left.value, sign, &right.value, sign);
  switch (op) {
  case tok_eq: return order == 0;
  case tok_ne: return order != 0;
  case tok_lt: return order < 0;
  case tok_gt: return order > 0;
  case tok_le: return order <= 0;
  default: return order >= 0;
  }
}

static a_pp_value apply_binary(a_token_kind op, a_pp_value left, a_pp_value right, bool required)
{
  if (!left.valid || !right.valid) return invalid_value();
  if (op == tok_shift_left || op == tok_shift_right) return shift(op, left, right, required);
  convert_to_common_kind(&left, &right);
  bool overflow = false;
  switch (op) {
  case tok_or: or_integer_values(&left.value, &right.value); return left;
  case tok_excl_or: xor_integer_values(&left.value, &right.value); return left;
  case tok_ampersand: and_integer_values(&left.value, &right.value); return left;
  case tok_plus: add_integer_values(&left.value, &right.value, is_signed(left), &overflow); break;
  case tok_minus:
    subtract_integer_values(&left.value, &right.value, is_signed(left), &overflow);
    break;
  case tok_star:
    multiply_integer_values(&left.value, &right.value, is_signed(left), &overflow);
    break;
  case tok_divide:
  case tok_remainder: return divide(op, left, right, required);
  default: return small_value(compare(op, left, right));
  }
  fit_to_kind(&left, overflow, required);
  return left;
}

//---------------------------------------------------------------------------------------------
// Operands.

static bool is_operator_elsewhere(a_token_kind token)
{
  switch (token) {
  case tok_period:
  case tok_arrow:
  case tok_plus_plus:
  case tok_minus_minus:
  case tok_comma:
  case tok_colon_colon:
  case tok_dot_star:
  case tok_arrow_star:
  case tok_gnu_min:
  case tok_gnu_max:
  case tok_lbracket:
  case tok_star:
  case tok_ampersand: return true;
  default: return token >= tok_assign && token <= tok_or_assign;
  }
}

static void enter_nesting()
{
  if (++nesting > max_nesting) catastrophe(ec_program_too_large);
}

// The name of an identifier that counts as 0.
static void report_undefined_name()
{
  if (check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_19_11, misra_required_severity)) {
    diagnostic(misra_required_severity, ec_misra_c_2004_19_11);
    return;
  }
  char name[256];
  unsigned length = len_of_curr_token < sizeof name ? len_of_curr_token : sizeof name - 1;
  for (unsigned i = 0; i < length; ++i)
    name[i] = start_of_curr_token[i];
  name[length] = 0;
  str_remark(ec_undefined_preproc_id, name);
}

static a_pp_value scan_constant(bool required)
{
  a_pp_value v = {};
  v.value = integer_of(&const_for_curr_token);
  v.kind = int_kind_of_type(const_for_curr_token.type);
  v.valid = true;
  if (required && const_for_curr_token.from_pp_identifier) report_undefined_name();
  a_pp_value widened = small_value(0);
  if (!int_kind_is_signed[v.kind]) widened.kind = unsigned_int_kind_of[widened.kind];
  if (v.kind < widened.kind) convert_to_kind(&v, widened.kind);
  get_token();
  return v;
}

static a_pp_value scan_parenthesized(bool required)
{
  enter_nesting();
  get_token();
  a_pp_value v = scan_conditional(required);
  --nesting;
  if (curr_token != tok_rparen || syntax_fault) return syntax_error_value(ec_exp_rparen);
  get_token();
  return v;
}

static a_pp_value scan_primary(bool required)
{
  switch (curr_token) {
  case tok_int_constant:
  case tok_char_constant:
  case tok_true:
  case tok_false:
    if (const_for_curr_token.kind == ck_integer) return scan_constant(required);
    get_token(); // its fault was reported
    return invalid_value();
  case tok_identifier: // a macro that isn't expanded here
    if (required) report_undefined_name();
    get_token();
    return small_value(0);
  case tok_lparen: return scan_parenthesized(required);
  case tok_float_constant:
  case tok_fixed_point_constant:
  case tok_string_literal: return syntax_error_value(ec_expr_not_integral);
  default:
    return syntax_error_value(is_operator_elsewhere(curr_token) ? ec_bad_pp_operator
                                                                : ec_exp_primary_expr);
  }
}

static a_pp_value scan_unary(bool required)
{
  a_token_kind op = curr_token;
  if (op != tok_plus && op != tok_minus && op != tok_compl && op != tok_not) {
    return scan_primary(required);
  }
  enter_nesting();
  get_token();
  a_pp_value v = scan_unary(required);
  --nesting;
  if (!v.valid || op == tok_plus) return v;
  if (op == tok_not) return small_value(!is_true(v));
  bool overflow = false;
  if (op == tok_minus) {
    negate_integer_value(&v.value, &overflow);
  } else {
    complement_integer_value(&v.value);
  }
  fit_to_kind(&v, overflow, required);
  return v;
}

//---------------------------------------------------------------------------------------------
// Expressions.

// Operators that bind at least as tightly as `min_precedence`.
static a_pp_value scan_binary(int min_precedence, bool required)
{
  a_pp_value left = scan_unary(required);
  for (;;) {
    a_token_kind op = curr_token;
    int precedence = precedence_of(op);
    if (precedence == 0 || precedence < min_precedence || syntax_fault) return left;
    get_token();
    if (op != tok_or_or && op != tok_and_and) {
      left = apply_binary(op, left, scan_binary(precedence + 1, required), required);
      continue;
    }
    bool decided = left.valid && is_true(left) == (op == tok_or_or);
    a_pp_value right = scan_binary(precedence + 1, required && left.valid && !decided);
    if (!left.valid || syntax_fault) {
      left = invalid_value();
    } else if (decided) { // the right operand was read for its form only
      left = small_value(op == tok_or_or);
    } else {
      left = right.valid ? small_value(is_true(right)) : right;
    }
  }
}

static a_pp_value scan_conditional(bool required)
{
  a_pp_value condition = scan_binary(1, required);
  if (curr_token != tok_quest_mark || syntax_fault) return condition;
  enter_nesting();
  required = required && condition.valid;
  bool takes_first = is_true(condition);
  get_token();
  a_pp_value first = scan_conditional(required && takes_first);
  if (curr_token != tok_colon || syntax_fault) return syntax_error_value(ec_exp_colon);
  get_token();
  a_pp_value second = scan_conditional(required && !takes_first);
  --nesting;
  if (!condition.valid) return condition;
  // The result has the type common to both, even if only one is computed: 1 ? -1 : 0u is unsigned.
  if (first.valid && second.valid) convert_to_common_kind(&first, &second);
  return takes_first ? first : second;
}

void scan_pp_expression(a_constant *result)
{
  an_expr_stack_entry *outer = nullptr;
  if (pp_expr_stack_to_cut != nullptr) {
    outer = *pp_expr_stack_to_cut;
    *pp_expr_stack_to_cut = nullptr;
  }
  int outer_nesting = nesting;
  nesting = 0;
  syntax_fault = false;
  a_pp_value v = scan_conditional(true);
  if (!syntax_fault && is_operator_elsewhere(curr_token)) {
    v = syntax_error_value(ec_bad_pp_operator);
  }
  nesting = outer_nesting;
  if (pp_expr_stack_to_cut != nullptr) *pp_expr_stack_to_cut = outer;
  if (v.valid && !syntax_fault) {
    set_integer_constant(result, 0, v.kind);
    integer_of(result) = v.value;
  } else {
    set_error_constant(result);
  }
}
