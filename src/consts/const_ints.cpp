// const_ints.cpp - arithmetic on target integer values.
// Uses: digit arrays (digits.h); the host's integer types only for single digits and final
//       conversions.
// Rule:  every operation works in place on its first operand and writes `overflow` whenever it has
//        one.
// See:   const_ints_kinds.cpp for kinds, limits, constants and text.
#include "consts/const_ints.h"
#include "consts/digits.h"

static constexpr int digit_count = 4;

static bool sign_bit_of(const an_integer_value *value)
{
  return (value->digit[0] & 0x8000) != 0;
}

static bool value_is_zero(const an_integer_value *value)
{
  return digits_are_zero(value->digit, digit_count);
}

static unsigned long long host_bits_of(const an_integer_value *value)
{
  unsigned long long bits = 0;
  for (int i = 0; i < digit_count; i++)
    bits = bits << 16 | value->digit[i];
  return bits;
}

void set_unsigned_integer_value(an_integer_value *value, unsigned long long number)
{
  for (int i = digit_count - 1; i >= 0; i--) {
    value->digit[i] = uint16_t(number);
    number >>= 16;
  }
}

void set_integer_value(an_integer_value *value, long long number)
{
  set_unsigned_integer_value(value, static_cast<unsigned long long>(number));
}

void conv_integer_value_to_host_large_integer(const an_integer_value *value, bool is_signed,
                                              long long *number, bool *overflow)
{
  *number = static_cast<long long>(host_bits_of(value));
  *overflow = is_signed && sign_bit_of(value) != (*number < 0);
}

long long value_of_integer_value(const an_integer_value *value, bool is_signed, bool *overflow)
{
  *overflow = !is_signed && sign_bit_of(value);
  return static_cast<long long>(host_bits_of(value));
}

int cmp_integer_values(const an_integer_value *a, bool a_is_signed, const an_integer_value *b,
                       bool b_is_signed)
{
  bool a_negative = a_is_signed && sign_bit_of(a);
  bool b_negative = b_is_signed && sign_bit_of(b);
  if (a_negative != b_negative) return a_negative ? -1 : 1;
  return compare_digits(a->digit, b->digit, digit_count);
}

// a := a + b; returns the carry out of the top.
static bool add_digits(an_integer_value *a, const an_integer_value *b)
{
  uint32_t carry = 0;
  for (int i = digit_count - 1; i >= 0; i--) {
    uint32_t sum = uint32_t(a->digit[i]) + b->digit[i] + carry;
    a->digit[i] = uint16_t(sum);
    carry = sum >> 16;
  }
  return carry != 0;
}

// a := a - b; returns the borrow into the top.
static bool subtract_digits(an_integer_value *a, const an_integer_value *b)
{
  uint32_t borrow = 0;
  for (int i = digit_count - 1; i >= 0; i--) {
    uint32_t difference = uint32_t(a->digit[i]) - b->digit[i] - borrow;
    a->digit[i] = uint16_t(difference);
    borrow = difference >> 31;
  }
  return borrow != 0;
}

void add_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                        bool *overflow)
{
  bool a_negative = sign_bit_of(a), b_negative = sign_bit_of(b);
  bool carry = add_digits(a, b);
  *overflow = is_signed ? a_negative == b_negative && sign_bit_of(a) != a_negative : carry;
}

void subtract_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                             bool *overflow)
{
  bool a_negative = sign_bit_of(a), b_negative = sign_bit_of(b);
  bool borrow = subtract_digits(a, b);
  *overflow = is_signed ? a_negative != b_negative && sign_bit_of(a) != a_negative : borrow;
}

void add_mixed_signed_integer_values(an_integer_value *a, bool a_is_signed,
                                     const an_integer_value *b, bool b_is_signed, bool *overflow)
{
  if (a_is_signed == b_is_signed) {
    add_integer_values(a, b, a_is_signed, overflow);
    return;
  }
  an_integer_value signed_operand = a_is_signed ? *a : *b;
  bool signed_is_negative = sign_bit_of(&signed_operand);
  add_digits(a, b);
  if (a_is_signed && sign_bit_of(a) != signed_is_negative)
    *overflow = !signed_is_negative;
  else if (!a_is_signed && signed_is_negative)
    *overflow = false;
  else
    *overflow = cmp_integer_values(&signed_operand, false, a, false) > 0;
}

void subtract_mixed_signed_integer_values(an_integer_value *a, bool a_is_signed,
                                          const an_integer_value *b, bool b_is_signed,
                                          bool *overflow)
{
  if (a_is_signed == b_is_signed) {
    subtract_integer_values(a, b, a_is_signed, overflow);
    return;
  }
  an_integer_value before = *a;
  an_integer_value subtrahend = *b;
  subtract_digits(a, &subtrahend);
  int change = cmp_integer_values(a, a_is_signed, &before, a_is_signed);
  if (value_is_zero(&subtrahend))
    *overflow = false;
  else if (b_is_signed && sign_bit_of(&subtrahend))
    *overflow = change <= 0;
  else
    *overflow = change > 0;
}

void complement_integer_value(an_integer_value *a)
{
  for (uint16_t &digit : a->digit)
    digit = uint16_t(~digit);
}

void or_integer_values(an_integer_value *a, const an_integer_value *b)
{
  for (int i = 0; i < digit_count; i++)
    a->digit[i] |= b->digit[i];
}

void and_integer_values(an_integer_value *a, const an_integer_value *b)
{
  for (int i = 0; i < digit_count; i++)
    a->digit[i] &= b->digit[i];
}

void xor_integer_values(an_integer_value *a, const an_integer_value *b)
{
  for (int i = 0; i < digit_count; i++)
    a->digit[i] ^= b->digit[i];
}

void incr_integer_value(an_integer_value *a)
{
  for (int i = digit_count - 1; i >= 0; i--)
    if (++a->digit[i] != 0) return;
}

void negate_integer_value(an_integer_value *a, bool *overflow)
{
  bool was_negative = sign_bit_of(a);
  complement_integer_value(a);
  incr_integer_value(a);
  *overflow = was_negative && sign_bit_of(a);
}

// Replaces a negative signed value by its magnitude; true when it was negative.
static bool take_magnitude(an_integer_value *value, bool is_signed)
{
  if (!is_signed || !sign_bit_of(value)) return false;
  bool ignored;
  negate_integer_value(value, &ignored);
  return true;
}

// Gives a magnitude its sign; true when the signed result lacks the sign that it should have.
static bool give_sign(an_integer_value *magnitude, bool negative)
{
  if (!negative) return sign_bit_of(magnitude);
  bool ignored;
  negate_integer_value(magnitude, &ignored);
  return !sign_bit_of(magnitude) && !value_is_zero(magnitude);
}

void multiply_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                             bool *overflow)
{
  an_integer_value factor = *b;
  bool negative = take_magnitude(a, is_signed) != take_magnitude(&factor, is_signed);
  uint16_t product[2 * digit_count];
  multiply_digits(a->digit, digit_count, factor.digit, digit_count, product);
  for (int i = 0; i < digit_count; i++)
    a->digit[i] = product[digit_count + i];
  *overflow = !digits_are_zero(product, digit_count);
  if (is_signed && give_sign(a, negative)) *overflow = true;
}

void divide_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                           bool *overflow)
{
  an_integer_value divisor = *b, quotient, remainder;
  bool negative = take_magnitude(a, is_signed) != take_magnitude(&divisor, is_signed);
  divide_digits(a->digit, digit_count, divisor.digit, digit_count, quotient.digit, remainder.digit);
  *a = quotient;
  *overflow = is_signed && give_sign(a, negative);
}

void remainder_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                              bool *overflow)
{
  an_integer_value divisor = *b, quotient, remainder;
  bool dividend_negative = take_magnitude(a, is_signed);
  take_magnitude(&divisor, is_signed);
  // A divisor of -1 needs no case of its own: the remainder is taken of magnitudes.
  divide_digits(a->digit, digit_count, divisor.digit, digit_count, quotient.digit, remainder.digit);
  *a = remainder;
  if (is_signed) give_sign(a, dividend_negative);
  *overflow = false;
}

void shift_left_integer_value(an_integer_value *a, int count, bool *overflow)
{
  if (count <= 0) {
    *overflow = false;
    return;
  }
  unsigned long long bits = host_bits_of(a);
  *overflow = count >= 64 ? bits != 0 : bits >> (64 - count) != 0;
  set_unsigned_integer_value(a, count >= 64 ? 0 : bits << count);
}

void shift_right_integer_value(an_integer_value *a, int count, bool is_signed, bool arithmetic)
{
  if (count <= 0) return;
  unsigned long long bits = host_bits_of(a);
  unsigned long long fill = is_signed && arithmetic && sign_bit_of(a) ? ~0ULL : 0;
  set_unsigned_integer_value(a, count >= 64 ? fill : bits >> count | fill << (64 - count));
}

void make_integer_value_mask(an_integer_value *a, int bits)
{
  set_unsigned_integer_value(a, bits <= 0 ? 0 : bits >= 64 ? ~0ULL : ~(~0ULL << bits));
}

void sign_extend_integer_value(an_integer_value *a, int bits)
{
  bool ignored;
  shift_left_integer_value(a, 64 - bits, &ignored);
  shift_right_integer_value(a, 64 - bits, true, true);
}
