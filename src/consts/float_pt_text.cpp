// float_pt_text.cpp - text to wide values and back.
// Rule:  decimal text is converted with exact integers, so the result is correctly rounded whatever
//        the number of digits; the hexadecimal text written is exact.
// Entry: f_atof, f_ftoa.
#include <cstdio>
#include <cstring>
#include "consts/float_pt_wide.h"

namespace {
// A natural number of up to max_limbs limbs, least significant first; limbs from `count` on are
// unset.
constexpr int max_limbs = 176;
struct a_big_number {
  int count;
  uint32_t limb[max_limbs];
};

// The significant digits of a decimal number: 0.d1d2d3... times ten to `exponent`.
constexpr int max_decimal_digits = 800; // a tie of the widest target format has fewer than 770
struct a_decimal_number {
  int count;
  long exponent;
  char digit[max_decimal_digits + 1]; // one more for a digit that stands for all that were left out
};
} // namespace

// Beyond this decimal exponent every target format is infinite, or zero.
static constexpr long max_decimal_exponent = 600;
static constexpr long exponent_limit = 1000000; // written exponents are held to this

static void multiply_small(a_big_number *number, uint32_t factor, uint32_t addend)
{
  uint64_t carry = addend;
  for (int i = 0; i < number->count; i++) {
    carry += uint64_t(number->limb[i]) * factor;
    number->limb[i] = uint32_t(carry);
    carry >>= 32;
  }
  if (carry != 0) number->limb[number->count++] = uint32_t(carry);
}

static void multiply_by_power_of_ten(a_big_number *number, long power)
{
  for (; power >= 9; power -= 9)
    multiply_small(number, 1000000000, 0);
  uint32_t rest = 1;
  while (power-- > 0)
    rest *= 10;
  multiply_small(number, rest, 0);
}

static int bit_length(const a_big_number *number)
{
  return 32 * number->count - __builtin_clz(number->limb[number->count - 1]);
}

static void shift_left(a_big_number *number, int bits)
{
  int limbs = bits / 32, shift = bits % 32;
  memmove(number->limb + limbs, number->limb, number->count * sizeof(uint32_t));
  memset(number->limb, 0, limbs * sizeof(uint32_t));
  number->count += limbs;
  if (shift == 0) return;
  uint32_t carry = 0;
  for (int i = limbs; i < number->count; i++) {
    uint32_t limb = number->limb[i];
    number->limb[i] = limb << shift | carry;
    carry = limb >> (32 - shift);
  }
  if (carry != 0) number->limb[number->count++] = carry;
}

static bool less_than(const a_big_number *a, const a_big_number *b)
{
  if (a->count != b->count) return a->count < b->count;
  for (int i = a->count - 1; i >= 0; i--)
    if (a->limb[i] != b->limb[i]) return a->limb[i] < b->limb[i];
  return false;
}

// a := a - b; a is not the smaller one.
static void subtract(a_big_number *a, const a_big_number *b)
{
  int64_t borrow = 0;
  for (int i = 0; i < a->count; i++) {
    int64_t difference = int64_t(a->limb[i]) - (i < b->count ? b->limb[i] : 0) + borrow;
    a->limb[i] = uint32_t(difference);
    borrow = difference < 0 ? -1 : 0;
  }
  while (a->count > 0 && a->limb[a->count - 1] == 0)
    a->count--;
}

// numerator / denominator as a wide value.  Both are positive; both are changed.
static int divide_to_wide(a_big_number *numerator, a_big_number *denominator, bool negative,
                          simul_fval *result)
{
  // Scale until numerator / denominator lies in one half to two; the quotient's bits follow one by
  // one.
  int scale = bit_length(numerator) - bit_length(denominator);
  shift_left(scale < 0 ? numerator : denominator, scale < 0 ? -scale : scale);
  simul_fval quotient = {{0}, 0, 0, 0};
  constexpr int quotient_bits = 16 * wide_digits;
  for (int bit = 0; bit < quotient_bits && numerator->count != 0; bit++) {
    if (!less_than(numerator, denominator)) {
      subtract(numerator, denominator);
      quotient.mantissa[bit / 16] |= uint16_t(0x8000 >> bit % 16);
    }
    if (numerator->count != 0) shift_left(numerator, 1);
  }
  if (numerator->count != 0) quotient.mantissa[wide_digits - 1] |= 1;
  // The first bit developed has the weight of one.
  quotient.sign = negative;
  f_left_justify(&quotient);
  quotient.exponent = int16_t(quotient.exponent + scale + 1);
  f_align_radix_pt(&quotient);
  *result = quotient;
  return 0;
}

static int decimal_to_wide(const a_decimal_number *decimal, bool negative, simul_fval *result)
{
  if (decimal->count == 0) {
    *result = signed_zero(negative);
    return 0;
  }
  if (decimal->exponent > max_decimal_exponent) {
    fp_error |= fpe_overflow;
    *result = signed_infinity(negative);
    return 1;
  }
  if (decimal->exponent < -max_decimal_exponent) {
    fp_error |= fpe_underflow;
    *result = signed_zero(negative);
    return 1;
  }
  a_big_number numerator, denominator;
  numerator.count = 0;
  for (int i = 0; i < decimal->count; i++)
    multiply_small(&numerator, 10, decimal->digit[i]);
  denominator.count = 1;
  denominator.limb[0] = 1;
  long power = decimal->exponent - decimal->count;
  if (power >= 0)
    multiply_by_power_of_ten(&numerator, power);
  else
    multiply_by_power_of_ten(&denominator, -power);
  return divide_to_wide(&numerator, &denominator, negative, result);
}

// Reads the signed decimal integer of an exponent part, held to a limit.
static bool read_exponent(const char *text, long *exponent)
{
  bool negative = *text == '-';
  if (*text == '-' || *text == '+') text++;
  if (*text < '0' || *text > '9') return false;
  long value = 0;
  for (; *text >= '0' && *text <= '9'; text++)
    if (value < exponent_limit) value = value * 10 + (*text - '0');
  *exponent = negative ? -value : value;
  return *text == '\0';
}

// Reads "digits.digits e exponent"; zeros at either end do not count as digits.
static bool read_decimal(const char *text, a_decimal_number *decimal)
{
  long point = 0, dropped_zeros = 0; // zeros that count only when another digit follows
  bool point_seen = false, nonzero_left_out = false, any_digit = false;
  decimal->count = 0;
  for (; (*text >= '0' && *text <= '9') || (*text == '.' && !point_seen); text++) {
    if (*text == '.') {
      point_seen = true;
      continue;
    }
    any_digit = true;
    int digit = *text - '0';
    bool leading = decimal->count == 0 && digit == 0;
    if (!point_seen && !leading) point++;
    if (point_seen && leading) point--;
    if (digit == 0) {
      if (!leading) dropped_zeros++;
      continue;
    }
    if (decimal->count + dropped_zeros >= max_decimal_digits) {
      nonzero_left_out = true;
      continue;
    }
    for (; dropped_zeros > 0; dropped_zeros--)
      decimal->digit[decimal->count++] = 0;
    decimal->digit[decimal->count++] = char(digit);
  }
  if (nonzero_left_out) {
    while (decimal->count < max_decimal_digits)
      decimal->digit[decimal->count++] = 0;
    decimal->digit[decimal->count++] = 1;
  }
  decimal->exponent = point;
  if (!any_digit) return false;
  if (*text == '\0') return true;
  long exponent;
  if ((*text != 'e' && *text != 'E') || !read_exponent(text + 1, &exponent)) return false;
  decimal->exponent += exponent;
  return true;
}

static int hex_digit_value(char c)
{
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Reads what follows "0x".
static int hexadecimal_to_wide(const char *text, bool negative, simul_fval *result)
{
  constexpr int kept_digits = 4 * wide_digits + 4;
  uint16_t mantissa[wide_digits + 2] = {0}; // the last digit only takes the sticky bit
  int count = 0;
  long exponent = 0;
  bool point_seen = false, any_digit = false;
  for (;; text++) {
    if (*text == '.') {
      if (point_seen) return 1;
      point_seen = true;
      continue;
    }
    int digit = hex_digit_value(*text);
    if (digit < 0) break;
    any_digit = true;
    if (count == 0 && digit == 0) {
      if (point_seen) exponent -= 4;
      continue;
    }
    if (!point_seen) exponent += 4;
    if (count < kept_digits)
      mantissa[count / 4] |= uint16_t(digit << (12 - count % 4 * 4));
    else if (digit != 0)
      mantissa[wide_digits + 1] = 1;
    count++;
  }
  if (!any_digit) return 1;
  if (*text != '\0') {
    long written;
    if ((*text != 'p' && *text != 'P') || !read_exponent(text + 1, &written)) return 1;
    exponent += written;
  }
  if (exponent > exponent_limit) exponent = exponent_limit;
  if (exponent < -exponent_limit) exponent = -exponent_limit;
  simul_fval fraction;
  f_finish(negative, 0, mantissa, wide_digits + 2, &fraction);
  return f_ldexp(&fraction, int(exponent), result);
}

static bool text_is(const char *text, const char *lower)
{
  for (; *lower != '\0'; text++, lower++)
    if ((*text | 0x20) != *lower) return false;
  return *text == '\0';
}

int f_atof(const char *text, simul_fval *result)
{
  if (text_is(text, "nan")) {
    *result = a_nan;
    return 0;
  }
  bool negative = *text == '-';
  if (*text == '-' || *text == '+') text++;
  if (text_is(text, "inf")) {
    *result = signed_infinity(negative);
    return 0;
  }
  if (text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
    return hexadecimal_to_wide(text + 2, negative, result);
  a_decimal_number decimal;
  if (!read_decimal(text, &decimal)) {
    *result = pos_zero;
    return 1;
  }
  return decimal_to_wide(&decimal, negative, result);
}

// The hexadecimal form: "0x1.8p+1".  Returns the length.
static int write_hexadecimal(const simul_fval *value, char *text)
{
  static const char digits[] = "0123456789abcdef";
  char *at = text;
  if (value->sign) *at++ = '-';
  if (wide_is_zero(value)) {
    strcpy(at, "0x0p+0");
    return int(at - text) + 6;
  }
  simul_fval fraction;
  int exponent;
  f_frexp(value, &exponent, &fraction);
  // The top bit becomes the leading 1; behind it stand the other bits in groups of four.
  at = stpcpy(at, "0x1");
  int last = 16 * wide_digits - 1;
  while (last > 0 && (fraction.mantissa[last / 16] >> (15 - last % 16) & 1) == 0)
    last--;
  if (last > 0) *at++ = '.';
  for (int bit = 1; bit <= last; bit += 4) {
    int digit = 0;
    for (int i = bit; i < bit + 4; i++) {
      bool set = i <= last && (fraction.mantissa[i / 16] >> (15 - i % 16) & 1) != 0;
      digit = digit << 1 | set;
    }
    *at++ = digits[digit];
  }
  at += sprintf(at, "p%+ld", long(exponent - 1));
  return int(at - text);
}

int f_ftoa(const char *format, const simul_fval *value, char *text)
{
  char *at = text;
  for (; *format != '\0'; format++) {
    if (format[0] != '%' || (format[1] | 0x20) != 'a') {
      *at++ = *format;
      continue;
    }
    format++;
    if (wide_is_nan(value))
      at = stpcpy(at, "nan");
    else if (wide_is_infinity(value))
      at = stpcpy(at, value->sign ? "-inf" : "inf");
    else
      at += write_hexadecimal(value, at);
  }
  *at = '\0';
  return int(at - text);
}
