// digits.cpp - multiplication and division of 16-bit digit arrays for integers and floating
// mantissas.
// Uses: nothing but 32-bit host arithmetic on single digits.
#include "consts/digits.h"
#include "mem/check.h"

static constexpr uint32_t digit_base = 65536;
static constexpr int max_dividend_digits = 16;
static constexpr int max_divisor_digits = 8;

bool digits_are_zero(const uint16_t *digits, int count)
{
  for (int i = 0; i < count; i++)
    if (digits[i] != 0) return false;
  return true;
}

int compare_digits(const uint16_t *a, const uint16_t *b, int count)
{
  for (int i = 0; i < count; i++)
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
  return 0;
}

void multiply_digits(const uint16_t *a, int a_count, const uint16_t *b, int b_count,
                     uint16_t *product)
{
  for (int i = 0; i < a_count + b_count; i++)
    product[i] = 0;
  for (int i = a_count - 1; i >= 0; i--) {
    uint32_t carry = 0;
    for (int j = b_count - 1; j >= 0; j--) {
      uint32_t sum = uint32_t(a[i]) * b[j] + product[i + j + 1] + carry;
      product[i + j + 1] = uint16_t(sum);
      carry = sum >> 16;
    }
    product[i] = uint16_t(carry);
  }
}

// The short path: one significant digit in the divisor.  Returns the remainder.
static uint16_t divide_by_digit(const uint16_t *dividend, int count, uint16_t divisor,
                                uint16_t *quotient)
{
  uint32_t rest = 0;
  for (int i = 0; i < count; i++) {
    uint32_t part = rest << 16 | dividend[i];
    quotient[i] = uint16_t(part / divisor);
    rest = part % divisor;
  }
  return uint16_t(rest);
}

// digits[0 .. count) *= factor; returns the carry out of the top.
static uint16_t scale_digits(uint16_t *digits, int count, uint32_t factor)
{
  uint32_t carry = 0;
  for (int i = count - 1; i >= 0; i--) {
    uint32_t part = digits[i] * factor + carry;
    digits[i] = uint16_t(part);
    carry = part >> 16;
  }
  return uint16_t(carry);
}

// Estimates one quotient digit from the top three digits of the rest and the top two of the
// divisor; at most one too large.
static uint32_t estimate_digit(const uint16_t *rest, const uint16_t *divisor)
{
  uint32_t top = uint32_t(rest[0]) << 16 | rest[1];
  uint32_t estimate = rest[0] >= divisor[0] ? digit_base - 1 : top / divisor[0];
  uint64_t left = top - uint64_t(estimate) * divisor[0];
  while (left < digit_base && uint64_t(estimate) * divisor[1] > (left << 16 | rest[2])) {
    estimate--;
    left += divisor[0];
  }
  return estimate;
}

// rest[0 .. count] -= digit * divisor[0 .. count); true when it went below zero.
static bool subtract_product(uint16_t *rest, const uint16_t *divisor, int count, uint32_t digit)
{
  uint32_t carry = 0, borrow = 0;
  for (int i = count; i >= 0; i--) {
    uint32_t product = (i == 0 ? 0 : divisor[i - 1] * digit) + carry;
    carry = product >> 16;
    uint32_t difference = uint32_t(rest[i]) - (product & 0xffff) - borrow;
    rest[i] = uint16_t(difference);
    borrow = difference >> 31;
  }
  return borrow != 0;
}

static void add_back(uint16_t *rest, const uint16_t *divisor, int count)
{
  uint32_t carry = 0;
  for (int i = count; i >= 0; i--) {
    uint32_t sum = rest[i] + (i == 0 ? 0 : divisor[i - 1]) + carry;
    rest[i] = uint16_t(sum);
    carry = sum >> 16;
  }
}

// Divides with a divisor of at least two digits whose top digit is not zero.
static void divide_long(const uint16_t *dividend, int count, const uint16_t *divisor, int n,
                        uint16_t *quotient, uint16_t *remainder)
{
  uint16_t rest[max_dividend_digits + 1];
  uint16_t scaled[max_divisor_digits];
  uint32_t factor = digit_base / (uint32_t(divisor[0]) + 1);
  for (int i = 0; i < count; i++)
    rest[i + 1] = dividend[i];
  for (int i = 0; i < n; i++)
    scaled[i] = divisor[i];
  rest[0] = scale_digits(rest + 1, count, factor);
  scale_digits(scaled, n, factor);
  for (int i = 0; i < n - 1 && i < count; i++)
    quotient[i] = 0;
  for (int i = 0; i + n <= count; i++) {
    uint32_t digit = estimate_digit(rest + i, scaled);
    if (subtract_product(rest + i, scaled, n, digit)) {
      digit--;
      add_back(rest + i, scaled, n);
    }
    quotient[i + n - 1] = uint16_t(digit);
  }
  // What is left in the low n digits is the remainder times the normalising factor.
  divide_by_digit(rest + count + 1 - n, n, uint16_t(factor), remainder);
}

void divide_digits(const uint16_t *dividend, int count, const uint16_t *divisor, int divisor_count,
                   uint16_t *quotient, uint16_t *remainder)
{
  check(count <= max_dividend_digits && divisor_count <= max_divisor_digits);
  int leading = 0;
  while (leading < divisor_count && divisor[leading] == 0)
    leading++;
  check(leading < divisor_count);
  int n = divisor_count - leading;
  for (int i = 0; i < divisor_count; i++)
    remainder[i] = 0;
  if (n == 1) {
    remainder[divisor_count - 1] =
        divide_by_digit(dividend, count, divisor[divisor_count - 1], quotient);
  } else if (n > count) {
    for (int i = 0; i < count; i++) {
      quotient[i] = 0;
      remainder[divisor_count - count + i] = dividend[i];
    }
  } else {
    divide_long(dividend, count, divisor + leading, n, quotient, remainder + leading);
  }
}
