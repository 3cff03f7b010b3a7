// Target integer arithmetic against the host's 128-bit integers, for 64, 40 and 32 bits.
#include "consts/const_ints.h"
#include <gtest/gtest.h>
#include <random>

typedef __int128 wide;

static an_integer_value value_of(uint64_t bits)
{
  an_integer_value value;
  set_unsigned_integer_value(&value, bits);
  return value;
}

static uint64_t bits_of(const an_integer_value &value)
{
  uint64_t bits = 0;
  for (uint16_t digit : value.digit)
    bits = bits << 16 | digit;
  return bits;
}

// Values that lie near the ends of every width, mixed with random ones.
static uint64_t interesting(std::mt19937_64 &random)
{
  uint64_t bits = random();
  int shift = int(random() % 64);
  switch (random() % 6) {
  case 0: return bits;
  case 1: return bits >> shift;
  case 2: return ~(bits >> shift);
  case 3: return (1ULL << shift) + random() % 3 - 1;
  case 4: return ~((1ULL << shift) + random() % 3 - 1);
  default: return random() % 3 - 1;
  }
}

static wide wide_of(uint64_t bits, bool is_signed)
{
  return is_signed ? wide(int64_t(bits)) : wide(bits);
}

static bool fits(wide number, bool is_signed)
{
  return is_signed ? number >= INT64_MIN && number <= INT64_MAX
                   : number >= 0 && number <= wide(UINT64_MAX);
}

TEST(const_ints, arithmetic_agrees_with_wide_host_integers)
{
  std::mt19937_64 random(7);
  for (int i = 0; i < 300000; i++) {
    uint64_t x = interesting(random), y = interesting(random);
    bool is_signed = random() % 2 != 0, overflow;
    wide a = wide_of(x, is_signed), b = wide_of(y, is_signed);
    an_integer_value left, right = value_of(y);
    auto expect = [&](const char *name, wide exact) {
      ASSERT_EQ(bits_of(left), uint64_t(exact)) << name << ' ' << x << ' ' << y << is_signed;
      ASSERT_EQ(overflow, !fits(exact, is_signed)) << name << ' ' << x << ' ' << y << is_signed;
    };
    add_integer_values(&(left = value_of(x)), &right, is_signed, &overflow);
    expect("add", a + b);
    subtract_integer_values(&(left = value_of(x)), &right, is_signed, &overflow);
    expect("subtract", a - b);
    multiply_integer_values(&(left = value_of(x)), &right, is_signed, &overflow);
    bool beyond = !is_signed && (unsigned __int128)(a) * (unsigned __int128)(b) > UINT64_MAX;
    ASSERT_EQ(bits_of(left), uint64_t(x * y));
    ASSERT_EQ(overflow, is_signed ? !fits(a * b, true) : beyond) << x << ' ' << y << is_signed;
    ASSERT_EQ(cmp_integer_values(&(left = value_of(x)), is_signed, &right, !is_signed),
              a < wide_of(y, !is_signed) ? -1 : a > wide_of(y, !is_signed));
    if (y == 0) continue;
    divide_integer_values(&(left = value_of(x)), &right, is_signed, &overflow);
    expect("divide", a / b);
    remainder_integer_values(&(left = value_of(x)), &right, is_signed, &overflow);
    expect("remainder", a % b);
  }
}

// With mixed signedness the bits wrap; overflow means that the exact result is not in the range in
// which the result is read: from zero for an unsigned first operand, by the rules of a signed first
// one otherwise.
TEST(const_ints, mixed_signs_report_what_does_not_fit)
{
  std::mt19937_64 random(11);
  for (int i = 0; i < 200000; i++) {
    uint64_t x = interesting(random), y = interesting(random);
    bool overflow;
    an_integer_value left = value_of(x), right = value_of(y);
    add_mixed_signed_integer_values(&left, false, &right, true, &overflow);
    ASSERT_EQ(bits_of(left), x + y);
    bool s_negative = int64_t(y) < 0;
    ASSERT_EQ(overflow, !s_negative && y > x + y) << x << ' ' << y;
    if (!s_negative) {
      ASSERT_EQ(overflow, !fits(wide(x) + wide(y), false));
    }
    left = value_of(x);
    add_mixed_signed_integer_values(&left, false, &right, false, &overflow);
    ASSERT_EQ(overflow, !fits(wide(x) + wide(y), false));
    left = value_of(x);
    subtract_mixed_signed_integer_values(&left, false, &right, true, &overflow);
    ASSERT_EQ(bits_of(left), x - y);
    ASSERT_EQ(overflow, !fits(wide(x) - wide(int64_t(y)), false)) << x << ' ' << y;
    left = value_of(x);
    subtract_mixed_signed_integer_values(&left, true, &right, false, &overflow);
    ASSERT_EQ(overflow,
              y != 0 && !fits(wide(int64_t(x)) - wide(y), true) && int64_t(x - y) > int64_t(x));
  }
}

TEST(const_ints, sign_extension_keeps_the_value_modulo_its_width)
{
  std::mt19937_64 random(13);
  for (int bits : {8, 16, 32, 40, 64}) {
    for (int i = 0; i < 20000; i++) {
      uint64_t x = interesting(random), y = interesting(random);
      bool ignored;
      an_integer_value left = value_of(x), right = value_of(y), mask;
      multiply_integer_values(&left, &right, true, &ignored);
      make_integer_value_mask(&mask, bits);
      and_integer_values(&left, &mask);
      sign_extend_integer_value(&left, bits);
      int64_t expected = int64_t(x * y << (64 - bits)) >> (64 - bits);
      ASSERT_EQ(int64_t(bits_of(left)), expected) << bits;
    }
  }
}

TEST(const_ints, shifts)
{
  std::mt19937_64 random(17);
  for (int i = 0; i < 100000; i++) {
    uint64_t x = interesting(random);
    int count = int(random() % 70);
    bool overflow, sign = random() % 2 != 0, arithmetic = random() % 2 != 0;
    an_integer_value left = value_of(x);
    shift_left_integer_value(&left, count, &overflow);
    ASSERT_EQ(bits_of(left), count > 63 ? 0 : x << count);
    ASSERT_EQ(overflow, count > 63 ? x != 0 : x << count >> count != x);
    left = value_of(x);
    shift_right_integer_value(&left, count, sign, arithmetic);
    wide extended = sign && arithmetic ? wide(int64_t(x)) : wide(x);
    ASSERT_EQ(bits_of(left), uint64_t(extended >> count));
  }
}

TEST(const_ints, ends_of_the_range)
{
  bool overflow;
  an_integer_value most_negative = value_of(1ULL << 63), minus_one = value_of(~0ULL);
  an_integer_value value = most_negative;
  divide_integer_values(&value, &minus_one, true, &overflow);
  EXPECT_TRUE(overflow);
  value = most_negative;
  remainder_integer_values(&value, &minus_one, true, &overflow);
  EXPECT_FALSE(overflow);
  EXPECT_EQ(bits_of(value), 0u);
  value = most_negative;
  negate_integer_value(&value, &overflow);
  EXPECT_TRUE(overflow);
  EXPECT_STREQ(str_for_integer_value(&most_negative, true), "-9223372036854775808");
  EXPECT_STREQ(str_for_integer_value(&minus_one, false), "18446744073709551615");
  EXPECT_STREQ(str_for_integer_value(&(value = value_of(1000000000)), true), "1000000000");
  EXPECT_STREQ(str_for_integer_value(&(value = value_of(0)), true), "0");
  std::mt19937_64 random(19);
  for (int i = 0; i < 10000; i++) {
    uint64_t x = interesting(random);
    value = value_of(x);
    ASSERT_EQ(str_for_integer_value(&value, true), std::to_string(int64_t(x)));
    ASSERT_EQ(str_for_integer_value(&value, false), std::to_string(x));
  }
}

TEST(const_ints, integer_part_of_floating_text)
{
  struct a_case {
    const char *text;
    bool is_signed;
    int64_t value;
    bool overflow;
  };
  for (const a_case &c : {a_case{"1.5e1", true, 15, false}, a_case{"-0.5", true, 0, false},
                          a_case{"1e30", true, 0, true}, a_case{"-12.75e+2", true, -1275, false},
                          a_case{"12345e-3", false, 12, false}, a_case{"-1", false, 0, true},
                          a_case{"9223372036854775807", true, INT64_MAX, false},
                          a_case{"9223372036854775808", true, 0, true},
                          a_case{"-9223372036854775808", true, INT64_MIN, false},
                          a_case{"0e999999999", true, 0, false}}) {
    an_integer_value value;
    bool overflow;
    conv_float_string_to_integer_value(c.text, &value, c.is_signed, &overflow);
    EXPECT_EQ(overflow, c.overflow) << c.text;
    if (!c.overflow) {
      EXPECT_EQ(int64_t(bits_of(value)), c.value) << c.text;
    }
  }
}
