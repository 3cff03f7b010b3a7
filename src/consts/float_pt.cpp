// float_pt.cpp - one operation per source-level need, rounded to the target format of the float
// kind.
// Owns:  the static text of fp_to_string.
// Uses:  the wide package (float_pt_wide.h).
// Rule:  a result that fails or is out of the kind's range sets `error`; the caller decides what
//        that means.
#include "consts/float_pt.h"
#include "consts/float_pt_wide.h"
#include <cstring>

static bool kind_is_double(a_float_kind kind)
{
  return kind != fk_float;
}

void float_pt_init()
{
  fp_error = 0;
}

// result := wide, rounded to the kind.  `failure` and fp_error come from the wide operation.
static void round_result(a_float_kind kind, int failure, const simul_fval *wide, simul_fval *result,
                         bool *error)
{
  if (failure != 0 || fp_error != 0) {
    *error = true;
    *result = *wide;
    return;
  }
  trg_fval target;
  f_cvt_stot(wide, &target, kind_is_double(kind));
  *error = (fp_error & (fpe_overflow | fpe_underflow)) != 0;
  f_cvt_ttos(&target, result, kind_is_double(kind));
}

static void binary(int (*operation)(const simul_fval *, const simul_fval *, simul_fval *),
                   a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
                   bool *error)
{
  simul_fval wide;
  fp_error = 0;
  int failure = operation(a, b, &wide);
  round_result(kind, failure, &wide, result, error);
}

void fp_add(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
            bool *error, bool *second)
{
  *second = false;
  binary(f_add, kind, a, b, result, error);
}

void fp_subtract(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
                 bool *error, bool *second)
{
  *second = false;
  binary(f_sub, kind, a, b, result, error);
}

void fp_multiply(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
                 bool *error, bool *second)
{
  *second = false;
  binary(f_mul, kind, a, b, result, error);
}

void fp_divide(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
               bool *error, bool *second)
{
  *second = false;
  binary(f_div, kind, a, b, result, error);
}

void fp_negate(a_float_kind kind, const simul_fval *a, simul_fval *result, bool *error,
               bool *second)
{
  simul_fval wide;
  *second = true;
  fp_error = 0;
  int failure = f_neg(a, &wide);
  round_result(kind, failure, &wide, result, error);
}

void fp_change_kind(const simul_fval *value, a_float_kind, simul_fval *result, a_float_kind to,
                    bool *error, bool *second)
{
  simul_fval wide = *value;
  *second = false;
  fp_error = 0;
  round_result(to, 0, &wide, result, error);
}

int fp_compare(a_float_kind, const simul_fval *a, const simul_fval *b, bool *unordered)
{
  *unordered = fp_is_nan(a) || fp_is_nan(b);
  if (*unordered) return 0;
  return f_lt(a, b) ? -1 : f_eq(a, b) ? 0 : 1;
}

bool fp_is_negative(const simul_fval *value)
{
  return f_lt(value, &pos_zero);
}

bool fp_is_zero_constant(const simul_fval *value)
{
  return wide_is_zero(value);
}

bool fp_is_infinity(const simul_fval *value)
{
  return wide_is_infinity(value);
}

bool fp_is_nan(const simul_fval *value)
{
  return wide_is_nan(value);
}

bool fp_is_normalized(a_float_kind kind, const simul_fval *value)
{
  if (fp_is_zero_constant(value) || fp_is_infinity(value) || fp_is_nan(value)) return false;
  int exponent;
  simul_fval fraction;
  f_frexp(value, &exponent, &fraction);
  return exponent >= (kind_is_double(kind) ? -1021 : -125);
}

bool fp_same_representation(a_float_kind, const simul_fval *a, const simul_fval *b)
{
  return memcmp(a->mantissa, b->mantissa, sizeof a->mantissa) == 0 && a->exponent == b->exponent &&
         a->sign == b->sign;
}

unsigned fp_hash(const simul_fval *value)
{
  const unsigned char *byte = reinterpret_cast<const unsigned char *>(value);
  unsigned sum = 0;
  for (unsigned i = 0; i < sizeof *value; i++)
    sum += byte[i];
  return sum;
}

void fp_string_to_float(a_float_kind kind, const char *text, simul_fval *result, bool *error)
{
  simul_fval wide;
  fp_error = 0;
  int failure = f_atof(text, &wide);
  round_result(kind, failure, &wide, result, error);
}

void fp_hex_string_to_float(a_float_kind kind, const char *text, simul_fval *result, bool *error,
                            bool *inexact)
{
  simul_fval wide;
  fp_error = 0;
  int failure = f_atof(text, &wide);
  round_result(kind, failure, &wide, result, error);
  *inexact = !*error && !fp_same_representation(kind, &wide, result);
}

const char *fp_to_string(a_float_kind, const simul_fval *value, bool *is_nan,
                         bool *is_positive_infinity, bool *is_negative_infinity)
{
  static char text[64];
  if (is_nan != nullptr) *is_nan = false;
  if (is_positive_infinity != nullptr) *is_positive_infinity = false;
  if (is_negative_infinity != nullptr) *is_negative_infinity = false;
  f_ftoa("%a", value, text);
  return text;
}

// A mangled floating template argument has no form of its own yet.
const char *fp_to_hex_string(a_float_kind, const simul_fval *)
{
  static char text[1];
  return text;
}

void fp_host_large_integer_to_float(a_float_kind kind, long long number, simul_fval *result,
                                    bool *error)
{
  simul_fval wide;
  fp_error = 0;
  f_itof(number, &wide);
  round_result(kind, 0, &wide, result, error);
}

void fp_host_large_unsigned_to_float(a_float_kind kind, unsigned long long number,
                                     simul_fval *result, bool *error)
{
  simul_fval wide;
  fp_error = 0;
  f_utof(number, &wide);
  round_result(kind, 0, &wide, result, error);
}

void fp_to_host_large_integer(a_float_kind kind, const simul_fval *value, long long *number,
                              bool *error, bool *second)
{
  static const simul_fval limit = {{0x8000}, 64, 0, 0}; // 2 to the 63
  static const simul_fval neg_limit = {{0x8000}, 64, 1, 0};
  simul_fval rounded;
  fp_change_kind(value, kind, &rounded, kind, error, second);
  *number = f_ftoi(&rounded);
  *error = !(f_lt(&rounded, &limit) && f_ge(&rounded, &neg_limit));
}

void fp_to_host_large_unsigned(a_float_kind kind, const simul_fval *value,
                               unsigned long long *number, bool *error, bool *second)
{
  static const simul_fval limit = {{1}, 80, 0, 0}; // 2 to the 64
  simul_fval rounded;
  fp_change_kind(value, kind, &rounded, kind, error, second);
  *number = f_ftou(&rounded);
  *error = !(f_lt(&rounded, &limit) && f_gt(&rounded, &neg_one));
}

bool make_fp_infinity(simul_fval *result, a_float_kind kind)
{
  bool error = false, second;
  *result = pos_infin;
  if (kind != fk_float) fp_change_kind(&pos_infin, kind, result, kind, &error, &second);
  return fp_is_infinity(result);
}

bool make_fp_nan(simul_fval *result, a_float_kind kind)
{
  bool error = false, second;
  *result = a_nan;
  if (kind != fk_float) fp_change_kind(&a_nan, kind, result, kind, &error, &second);
  return fp_is_nan(result);
}

void make_fp_max(simul_fval *result, a_float_kind kind)
{
  static const trg_fval largest_single = {{0x7f7fffff, 0}};
  static const trg_fval largest_double = {{0x7fefffff, 0xffffffff}};
  bool is_double = kind_is_double(kind);
  f_cvt_ttos(is_double ? &largest_double : &largest_single, result, is_double);
}
