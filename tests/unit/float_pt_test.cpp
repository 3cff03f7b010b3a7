// Software floating point against IEEE hardware arithmetic, bit for bit, where the host's is known
// to be correctly rounded; exactness of the text forms.
#include "consts/float_pt.h"
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

static simul_fval from_host(double number)
{
  uint64_t bits;
  memcpy(&bits, &number, sizeof bits);
  trg_fval target = {{uint32_t(bits >> 32), uint32_t(bits)}};
  simul_fval value;
  ieee_cvt_dtos(&target, &value);
  return value;
}

static uint64_t double_bits(const simul_fval &value)
{
  trg_fval target;
  ieee_cvt_stod(&value, &target);
  return uint64_t(target.word[0]) << 32 | target.word[1];
}

static uint32_t single_bits(const simul_fval &value)
{
  trg_fval target;
  ieee_cvt_stof(&value, &target);
  return target.word[0];
}

static uint64_t host_bits(double number)
{
  uint64_t bits;
  memcpy(&bits, &number, sizeof bits);
  return bits;
}

static uint32_t host_bits(float number)
{
  uint32_t bits;
  memcpy(&bits, &number, sizeof bits);
  return bits;
}

static double random_double(std::mt19937_64 &random)
{
  uint64_t bits = random();
  switch (random() % 5) {
  case 0: break; // any exponent
  case 1: bits = (bits & ~(0x7ffULL << 52)) | (1020 + random() % 8) << 52; break;
  case 2: bits &= ~(0x7feULL << 52); break;              // denormal or nearly so
  case 3: bits &= ~((1ULL << random() % 52) - 1); break; // ties
  case 4: bits |= (1ULL << random() % 52) - 1; break;
  }
  double number;
  memcpy(&number, &bits, sizeof number);
  return std::isnan(number) ? 1.0 : number;
}

template <class number> static void compare(a_float_kind kind, number a, number b)
{
  simul_fval left = from_host(a), right = from_host(b), result;
  bool error, second;
  auto expect = [&](const char *name, number exact) {
    bool out = std::isinf(exact) && !std::isinf(a) && !std::isinf(b);
    if (std::isnan(exact)) {
      ASSERT_TRUE(fp_is_nan(&result) && error) << name;
      return;
    }
    if constexpr (sizeof exact == 8)
      ASSERT_EQ(double_bits(result), host_bits(exact)) << name << ' ' << a << ' ' << b;
    else
      ASSERT_EQ(single_bits(result), host_bits(exact)) << name << ' ' << a << ' ' << b;
    ASSERT_TRUE(error || !out) << name << ' ' << a << ' ' << b;
  };
  fp_add(kind, &left, &right, &result, &error, &second);
  expect("add", a + b);
  fp_subtract(kind, &left, &right, &result, &error, &second);
  expect("subtract", a - b);
  fp_multiply(kind, &left, &right, &result, &error, &second);
  expect("multiply", a * b);
  fp_divide(kind, &left, &right, &result, &error, &second);
  expect("divide", a / b);
  bool unordered;
  ASSERT_EQ(fp_compare(kind, &left, &right, &unordered), a < b ? -1 : a > b);
}

TEST(float_pt, arithmetic_rounds_as_the_hardware)
{
  std::mt19937_64 random(23);
  for (int i = 0; i < 200000; i++) {
    double a = random_double(random), b = random_double(random);
    compare<double>(fk_double, a, b);
    compare<float>(fk_float, float(a), float(b));
    if (HasFatalFailure()) return;
  }
}

TEST(float_pt, changes_of_kind_and_integers)
{
  std::mt19937_64 random(29);
  for (int i = 0; i < 200000; i++) {
    double a = random_double(random);
    simul_fval value = from_host(a), result;
    bool error, second;
    fp_change_kind(&value, fk_double, &result, fk_float, &error, &second);
    ASSERT_EQ(single_bits(result), host_bits(float(a))) << a;
    ASSERT_EQ(error, std::isinf(float(a)) != std::isinf(a) || (a != 0 && float(a) == 0)) << a;
    int64_t number = int64_t(random() >> random() % 64) * (random() % 2 != 0 ? 1 : -1);
    fp_host_large_integer_to_float(fk_double, number, &result, &error);
    ASSERT_EQ(double_bits(result), host_bits(double(number)));
    fp_host_large_unsigned_to_float(fk_float, uint64_t(number), &result, &error);
    ASSERT_EQ(single_bits(result), host_bits(float(uint64_t(number))));
    double scaled = std::ldexp(a, -int(random() % 64));
    value = from_host(scaled);
    long long integer;
    fp_to_host_large_integer(fk_double, &value, &integer, &error, &second);
    bool in_range = scaled >= -0x1p63 && scaled < 0x1p63;
    ASSERT_EQ(error, !in_range) << scaled;
    if (in_range) {
      ASSERT_EQ(integer, (long long)scaled) << scaled;
    }
    unsigned long long natural;
    fp_to_host_large_unsigned(fk_double, &value, &natural, &error, &second);
    ASSERT_EQ(error, !(scaled > -1 && scaled < 0x1p64)) << scaled;
    if (!error) {
      ASSERT_EQ(natural, (unsigned long long)scaled) << scaled;
    }
  }
}

// The host's strtod is only an oracle here; it decides no value of the target.
TEST(float_pt, text_is_rounded_correctly)
{
  std::mt19937_64 random(31);
  for (int i = 0; i < 60000; i++) {
    double a = random_double(random);
    if (std::isinf(a)) continue;
    char text[1200];
    int exponent;
    simul_fval result;
    bool error;
    // Seventeen digits, fewer, or the exact ends of a rounding interval with a digit more or less.
    switch (random() % 3) {
    case 0: snprintf(text, sizeof text, "%.17g", a); break;
    case 1: snprintf(text, sizeof text, "%.*e", int(random() % 40), a); break;
    case 2: snprintf(text, sizeof text, "%.1100f", std::frexp(a, &exponent)); break;
    }
    fp_string_to_float(fk_double, text, &result, &error);
    ASSERT_EQ(double_bits(result), host_bits(strtod(text, nullptr))) << text;
    fp_string_to_float(fk_float, text, &result, &error);
    ASSERT_EQ(single_bits(result), host_bits(strtof(text, nullptr))) << text;
  }
}

// Exact midpoints between neighbours, and midpoints disturbed in their last digit.
TEST(float_pt, ties_in_text)
{
  std::mt19937_64 random(37);
  for (int i = 0; i < 3000; i++) {
    uint64_t bits = random() & ~(3ULL << 62);
    double low;
    memcpy(&low, &bits, sizeof low);
    if (!std::isfinite(low) || low == 0) continue;
    // Twice the significand plus one, as an exact decimal, by the host's exact printf of long
    // double.
    long double middle = (long double)low + ((long double)std::nextafter(low, HUGE_VAL) - low) / 2;
    char text[2400], longer[2410];
    snprintf(text, sizeof text, "%.1200Lf", middle);
    simul_fval result;
    bool error;
    fp_string_to_float(fk_double, text, &result, &error);
    ASSERT_EQ(double_bits(result), host_bits(strtod(text, nullptr))) << text;
    snprintf(longer, sizeof longer, "%s1", text);
    fp_string_to_float(fk_double, longer, &result, &error);
    ASSERT_EQ(double_bits(result), host_bits(strtod(longer, nullptr))) << longer;
  }
}

TEST(float_pt, hexadecimal_text_reads_back)
{
  std::mt19937_64 random(41);
  for (int i = 0; i < 50000; i++) {
    double a = random_double(random);
    simul_fval value = from_host(a), result;
    const char *text = fp_to_string(fk_double, &value);
    bool error, inexact;
    ASSERT_EQ(host_bits(strtod(text, nullptr)), host_bits(a)) << text;
    fp_hex_string_to_float(fk_double, text, &result, &error, &inexact);
    ASSERT_TRUE(fp_same_representation(fk_double, &value, &result)) << text;
    ASSERT_FALSE(inexact) << text;
    if (std::isinf(a)) continue;
    fp_hex_string_to_float(fk_float, text, &result, &error, &inexact);
    ASSERT_EQ(single_bits(result), host_bits(strtof(text, nullptr))) << text;
    ASSERT_EQ(inexact, !error && double(float(a)) != a) << text;
  }
  simul_fval value;
  bool error, inexact;
  fp_hex_string_to_float(fk_double, "0x1.0000000000000800000000000000000000001p0", &value, &error,
                         &inexact);
  EXPECT_EQ(double_bits(value), host_bits(1.0) + 1);
  EXPECT_TRUE(inexact);
}

static double text_value(a_float_kind kind, const char *text, bool *error)
{
  simul_fval value;
  fp_string_to_float(kind, text, &value, error);
  uint64_t bits = double_bits(value);
  double number;
  memcpy(&number, &bits, sizeof number);
  return number;
}

TEST(float_pt, ends_of_the_range)
{
  bool error, second, unordered;
  simul_fval value, result;
  EXPECT_EQ(text_value(fk_float, "1e39", &error), HUGE_VAL);
  EXPECT_TRUE(error);
  EXPECT_EQ(text_value(fk_double, "1e39", &error), 1e39);
  EXPECT_FALSE(error);
  text_value(fk_float, "1e-45", &error);
  EXPECT_FALSE(error);
  text_value(fk_float, "1e-46", &error);
  EXPECT_TRUE(error);
  EXPECT_EQ(text_value(fk_double, "1e99999999999999999999", &error), HUGE_VAL);
  EXPECT_TRUE(error);
  EXPECT_EQ(text_value(fk_double, "0e99999999999999999999", &error), 0.0);
  EXPECT_FALSE(error);
  EXPECT_EQ(text_value(fk_double, "1e-99999999999999999999", &error), 0.0);
  EXPECT_TRUE(error);
  fp_divide(fk_double, &one, &pos_zero, &result, &error, &second);
  EXPECT_TRUE(error && fp_is_infinity(&result));
  fp_divide(fk_double, &pos_zero, &pos_zero, &result, &error, &second);
  EXPECT_TRUE(error && fp_is_nan(&result));
  EXPECT_EQ(fp_compare(fk_double, &result, &one, &unordered), 0);
  EXPECT_TRUE(unordered);
  fp_negate(fk_float, &pos_zero, &result, &error, &second);
  EXPECT_EQ(double_bits(result), host_bits(-0.0));
  EXPECT_FALSE(fp_same_representation(fk_double, &one, &neg_one));
  value = from_host(65536.0);
  EXPECT_FALSE(fp_same_representation(fk_double, &one, &value));
  long long number;
  value = from_host(-1e30);
  fp_to_host_large_integer(fk_double, &value, &number, &error, &second);
  EXPECT_EQ(number, -INT64_MAX);
  text_value(fk_float, "0.1", &error);
  fp_string_to_float(fk_float, "0.1", &value, &error);
  EXPECT_EQ(single_bits(value), 0x3dcccccdu);
  EXPECT_STREQ(fp_to_string(fk_float, &value), "0x1.99999ap-4");
}
