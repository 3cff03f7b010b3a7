// float_pt_arith.cpp - the wide package: sums, products, quotients, comparisons, integers.
// Owns:  fp_error and the constants of the wide format.
// Rule:  bits that leave the six digits are not rounded but kept as one sticky bit (rounding to
//        odd).  The wide format has at least 81 significant bits, so the later rounding to a target
//        format sees on which side of a tie the exact result lies, and rounds once, correctly.
#include <cstdio>
#include <cstdlib>
#include "consts/digits.h"
#include "consts/float_pt_wide.h"

int fp_error;

const simul_fval pos_zero = {{0}, zero_exponent, 0, 0};
const simul_fval neg_zero = {{0}, zero_exponent, 1, 0};
const simul_fval pos_infin = {{0}, special_exponent, 0, 0};
const simul_fval neg_infin = {{0}, special_exponent, 1, 0};
const simul_fval a_nan = {{1}, special_exponent, 0, 0};
const simul_fval one_q = {{0x4000}, 0, 0, 0};
const simul_fval one_half = {{0x8000}, 0, 0, 0};
const simul_fval three_q = {{0xc000}, 0, 0, 0};
const simul_fval one = {{1}, 16, 0, 0};
const simul_fval neg_one = {{1}, 16, 1, 0};
const simul_fval one_p_five = {{1, 0x8000}, 16, 0, 0};
const simul_fval two = {{2}, 16, 0, 0};
const simul_fval neg_two = {{2}, 16, 1, 0};
const simul_fval four = {{4}, 16, 0, 0};
const simul_fval ten = {{10}, 16, 0, 0};
const simul_fval sixteen = {{16}, 16, 0, 0};

int f_finish(bool negative, int exponent, const uint16_t *digits, int count, simul_fval *result)
{
  int leading = 0;
  while (leading < count && digits[leading] == 0)
    leading++;
  if (leading == count) {
    *result = signed_zero(negative);
    return 0;
  }
  exponent -= 16 * leading;
  if (exponent < -32752) {
    fp_error |= fpe_underflow;
    *result = signed_zero(negative);
    return 1;
  }
  if (exponent > max_wide_exponent) {
    fp_error |= fpe_overflow;
    *result = signed_infinity(negative);
    return 1;
  }
  int kept = count - leading < wide_digits ? count - leading : wide_digits;
  simul_fval value = {{0}, int16_t(exponent), negative, 0};
  for (int i = 0; i < kept; i++)
    value.mantissa[i] = digits[leading + i];
  if (!digits_are_zero(digits + leading + kept, count - leading - kept))
    value.mantissa[wide_digits - 1] |= 1;
  *result = value;
  return 0;
}

void f_left_justify(simul_fval *value)
{
  if (digits_are_zero(value->mantissa, wide_digits - 1)) {
    fputs(">>>Internal Error: Illegal float representation!\n", stderr);
    exit(1);
  }
  while (value->mantissa[0] == 0) {
    for (int i = 0; i + 1 < wide_digits; i++)
      value->mantissa[i] = value->mantissa[i + 1];
    value->mantissa[wide_digits - 1] = 0;
    value->exponent -= 16;
  }
  int shift = __builtin_clz(value->mantissa[0]) - 16;
  if (shift == 0) return;
  for (int i = 0; i < wide_digits; i++) {
    unsigned below = i + 1 < wide_digits ? value->mantissa[i + 1] : 0;
    value->mantissa[i] = uint16_t(value->mantissa[i] << shift | below >> (16 - shift));
  }
  value->exponent = int16_t(value->exponent - shift);
}

void f_align_radix_pt(simul_fval *value)
{
  int shift = -value->exponent & 15;
  if (shift == 0) return;
  unsigned lost = value->mantissa[wide_digits - 1] << (16 - shift) & 0xffff;
  for (int i = wide_digits - 1; i >= 0; i--) {
    unsigned above = i > 0 ? value->mantissa[i - 1] : 0;
    value->mantissa[i] = uint16_t(value->mantissa[i] >> shift | above << (16 - shift));
  }
  if (lost != 0) value->mantissa[wide_digits - 1] |= 1;
  value->exponent = int16_t(value->exponent + shift);
}

static int compare_magnitudes(const simul_fval *a, const simul_fval *b)
{
  if (a->exponent != b->exponent) return a->exponent < b->exponent ? -1 : 1;
  return compare_digits(a->mantissa, b->mantissa, wide_digits);
}

// The sum of a NaN, an infinity or a zero with anything; false when both are finite and not zero.
static bool add_special(const simul_fval *a, const simul_fval *b, simul_fval *result, int *failure)
{
  *failure = 0;
  if (wide_is_nan(a) || wide_is_nan(b)) {
    *result = wide_is_nan(a) ? *a : *b;
  } else if (wide_is_infinity(a) && wide_is_infinity(b) && a->sign != b->sign) {
    fp_error |= fpe_invalid;
    *result = a_nan;
    *failure = 1;
  } else if (wide_is_infinity(a) || wide_is_infinity(b)) {
    *result = wide_is_infinity(a) ? *a : *b;
  } else if (wide_is_zero(a) && wide_is_zero(b)) {
    *result = signed_zero(a->sign && b->sign);
  } else if (wide_is_zero(a) || wide_is_zero(b)) {
    *result = wide_is_zero(a) ? *b : *a;
  } else {
    return false;
  }
  return true;
}

int f_add(const simul_fval *a, const simul_fval *b, simul_fval *result)
{
  constexpr int max_distance = 8;
  constexpr int buffer_digits = wide_digits + max_distance;
  int failure;
  if (add_special(a, b, result, &failure)) return failure;
  const simul_fval *larger = a, *smaller = b;
  if (compare_magnitudes(a, b) < 0) {
    larger = b;
    smaller = a;
  }
  int distance = (larger->exponent - smaller->exponent) / 16;
  if (distance > max_distance) {
    *result = *larger;
    return 0;
  }
  // One digit in front takes the carry.
  uint16_t sum[1 + buffer_digits] = {0}, term[1 + buffer_digits] = {0};
  for (int i = 0; i < wide_digits; i++) {
    sum[1 + i] = larger->mantissa[i];
    term[1 + i + distance] = smaller->mantissa[i];
  }
  bool subtract = a->sign != b->sign;
  int carry = 0;
  for (int i = buffer_digits; i >= 0; i--) {
    int digit = subtract ? sum[i] - term[i] - carry : sum[i] + term[i] + carry;
    sum[i] = uint16_t(digit);
    carry = subtract ? digit < 0 : digit >> 16;
  }
  if (digits_are_zero(sum, 1 + buffer_digits)) {
    *result = pos_zero;
    return 0;
  }
  return f_finish(larger->sign, larger->exponent + 16, sum, 1 + buffer_digits, result);
}

int f_neg(const simul_fval *a, simul_fval *result)
{
  simul_fval value = *a;
  if (!wide_is_nan(a)) value.sign = !value.sign;
  *result = value;
  return 0;
}

int f_abs(const simul_fval *a, simul_fval *result)
{
  simul_fval value = *a;
  value.sign = 0;
  *result = value;
  return 0;
}

int f_sub(const simul_fval *a, const simul_fval *b, simul_fval *result)
{
  simul_fval negated;
  f_neg(b, &negated);
  return f_add(a, &negated, result);
}

int f_mul(const simul_fval *a, const simul_fval *b, simul_fval *result)
{
  bool negative = a->sign != b->sign;
  if (wide_is_nan(a) || wide_is_nan(b)) {
    *result = wide_is_nan(a) ? *a : *b;
    return 0;
  }
  if (wide_is_infinity(a) || wide_is_infinity(b)) {
    if (wide_is_zero(a) || wide_is_zero(b)) {
      fp_error |= fpe_invalid;
      *result = a_nan;
      return 1;
    }
    *result = signed_infinity(negative);
    return 0;
  }
  if (wide_is_zero(a) || wide_is_zero(b)) {
    *result = signed_zero(negative);
    return 0;
  }
  uint16_t product[2 * wide_digits];
  multiply_digits(a->mantissa, wide_digits, b->mantissa, wide_digits, product);
  return f_finish(negative, a->exponent + b->exponent, product, 2 * wide_digits, result);
}

// Quotients with a NaN, an infinity or a zero; false when both operands are finite and not zero.
static bool divide_special(const simul_fval *a, const simul_fval *b, simul_fval *result,
                           int *failure)
{
  bool negative = a->sign != b->sign;
  *failure = 0;
  if (wide_is_nan(a) || wide_is_nan(b)) {
    *result = wide_is_nan(a) ? *a : *b;
  } else if ((wide_is_zero(a) && wide_is_zero(b)) || (wide_is_infinity(a) && wide_is_infinity(b))) {
    fp_error |= fpe_invalid;
    *result = a_nan;
    *failure = 1;
  } else if (wide_is_infinity(b) || wide_is_zero(a)) {
    *result = signed_zero(negative);
  } else if (wide_is_infinity(a)) {
    *result = signed_infinity(negative);
  } else if (wide_is_zero(b)) {
    fp_error |= fpe_divide_by_zero;
    *result = signed_infinity(negative);
    *failure = 1;
  } else {
    return false;
  }
  return true;
}

int f_div(const simul_fval *a, const simul_fval *b, simul_fval *result)
{
  // The dividend gets so many zero digits that the quotient has at least six significant ones.
  constexpr int extra = wide_digits + 1;
  constexpr int count = wide_digits + extra;
  int failure;
  if (divide_special(a, b, result, &failure)) return failure;
  uint16_t dividend[count] = {0}, remainder[wide_digits];
  uint16_t quotient[count + 1];
  for (int i = 0; i < wide_digits; i++)
    dividend[i] = a->mantissa[i];
  divide_digits(dividend, count, b->mantissa, wide_digits, quotient, remainder);
  quotient[count] = !digits_are_zero(remainder, wide_digits);
  // As an integer the quotient is a / b times 65536 to the `extra`: its point stands `extra` from
  // the end.
  int exponent = a->exponent - b->exponent + 16 * (count - extra);
  return f_finish(a->sign != b->sign, exponent, quotient, count + 1, result);
}

// -1, 0 or 1 for operands that are no NaN.
static int compare_wide(const simul_fval *a, const simul_fval *b)
{
  if (wide_is_zero(a) && wide_is_zero(b)) return 0;
  if (wide_is_zero(a)) return b->sign ? 1 : -1;
  if (wide_is_zero(b)) return a->sign ? -1 : 1;
  if (a->sign != b->sign) return a->sign ? -1 : 1;
  int order = compare_magnitudes(a, b);
  return a->sign ? -order : order;
}

static bool is_unordered(const simul_fval *a, const simul_fval *b)
{
  return wide_is_nan(a) || wide_is_nan(b);
}

bool f_eq(const simul_fval *a, const simul_fval *b)
{
  return !is_unordered(a, b) && compare_wide(a, b) == 0;
}

bool f_ne(const simul_fval *a, const simul_fval *b)
{
  return !f_eq(a, b);
}

bool f_lt(const simul_fval *a, const simul_fval *b)
{
  return !is_unordered(a, b) && compare_wide(a, b) < 0;
}

bool f_le(const simul_fval *a, const simul_fval *b)
{
  return !is_unordered(a, b) && compare_wide(a, b) <= 0;
}

bool f_gt(const simul_fval *a, const simul_fval *b)
{
  return f_lt(b, a);
}

bool f_ge(const simul_fval *a, const simul_fval *b)
{
  return f_le(b, a);
}

static bool is_finite_nonzero(const simul_fval *a)
{
  return a->exponent != special_exponent && !wide_is_zero(a);
}

int f_ldexp(const simul_fval *a, int exponent, simul_fval *result)
{
  simul_fval value = *a;
  if (!is_finite_nonzero(a)) {
    *result = value;
    return 0;
  }
  constexpr int limit = 200000;
  exponent = exponent > limit ? limit : exponent < -limit ? -limit : exponent;
  // Shifting right within seven digits makes the new exponent a multiple of 16 without losing a
  // bit.
  int sum = value.exponent + exponent;
  int shift = -sum & 15;
  uint16_t digits[wide_digits + 1];
  for (int i = 0; i <= wide_digits; i++) {
    unsigned here = i < wide_digits ? value.mantissa[i] : 0;
    unsigned above = i > 0 ? value.mantissa[i - 1] : 0;
    digits[i] = uint16_t(here >> shift | above << (16 - shift));
  }
  return f_finish(value.sign, sum + shift, digits, wide_digits + 1, result);
}

int f_frexp(const simul_fval *a, int *exponent, simul_fval *result)
{
  simul_fval value = *a;
  *exponent = 0;
  if (is_finite_nonzero(a)) {
    f_left_justify(&value);
    *exponent = value.exponent;
    value.exponent = 0;
  }
  *result = value;
  return 0;
}

// The top 64 bits of the mantissa.
static unsigned long long top_bits(const simul_fval *value)
{
  unsigned long long bits = 0;
  for (int i = 0; i < 4; i++)
    bits = bits << 16 | value->mantissa[i];
  return bits;
}

long long f_ftoi(const simul_fval *a)
{
  if (wide_is_zero(a) || wide_is_nan(a)) return 0;
  constexpr long long largest = 9223372036854775807LL;
  simul_fval value = *a;
  if (!wide_is_infinity(a)) {
    f_left_justify(&value);
    if (value.exponent < 1) return 0;
    if (value.exponent < 64) {
      long long number = static_cast<long long>(top_bits(&value) >> (64 - value.exponent));
      return value.sign ? -number : number;
    }
    if (value.sign && value.exponent == 64 && top_bits(&value) == 1ULL << 63) return -largest - 1;
  }
  return value.sign ? -largest : largest;
}

unsigned long long f_ftou(const simul_fval *a)
{
  if (a->sign || wide_is_zero(a) || wide_is_nan(a))
    return static_cast<unsigned long long>(f_ftoi(a));
  if (wide_is_infinity(a)) return ~0ULL;
  simul_fval value = *a;
  f_left_justify(&value);
  if (value.exponent < 1) return 0;
  return value.exponent > 64 ? ~0ULL : top_bits(&value) >> (64 - value.exponent);
}

void f_utof(unsigned long long number, simul_fval *result)
{
  if (number == 0) {
    *result = pos_zero;
    return;
  }
  int shift = __builtin_clzll(number);
  number <<= shift;
  simul_fval value = {{0}, int16_t(64 - shift), 0, 0};
  for (int i = 0; i < 4; i++)
    value.mantissa[i] = uint16_t(number >> (48 - 16 * i));
  f_align_radix_pt(&value);
  *result = value;
}

void f_itof(long long number, simul_fval *result)
{
  unsigned long long magnitude = static_cast<unsigned long long>(number);
  f_utof(number < 0 ? 0 - magnitude : magnitude, result);
  if (number < 0) result->sign = 1;
}
