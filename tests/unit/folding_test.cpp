// Constant folding against host arithmetic for 32, 40 and 64 bits; text of types and constants.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_to_str.h"
#include "memory_fixture.h"
#include <gtest/gtest.h>
#include <random>
#include <string>

typedef __int128 wide;

namespace {
class folding : public testing::Test {
protected:
  void SetUp() override
  {
    C_dialect = 0;
    gcc_mode = true;
    open_regions();
    target_early_init();
    target_one_time_init();
    target_init();
    const_ints_init();
    il_trans_unit_init();
    types_trans_unit_init();
    curr_il_region_number = file_scope_region_number;
    il_header.source_language = 1;
  }
};
} // namespace

struct a_kind_case {
  an_integer_kind kind;
  int bits;
  bool is_signed;
};

static const a_kind_case kind_cases[] = {
    {ik_int, 32, true},       {ik_unsigned_int, 32, false},
    {ik_int40, 40, true},     {ik_unsigned_int40, 40, false},
    {ik_long_long, 64, true}, {ik_unsigned_long_long, 64, false}};

// The value of the low bits, as a number of the kind.
static wide wrapped(const a_kind_case &c, wide value)
{
  uint64_t mask = c.bits == 64 ? ~0ULL : (1ULL << c.bits) - 1;
  uint64_t bits = uint64_t(value) & mask;
  if (c.is_signed && (bits >> (c.bits - 1)) != 0) return wide(int64_t(bits | ~mask));
  return wide(bits);
}

static a_constant constant_of_kind(const a_kind_case &c, wide value)
{
  a_constant constant;
  clear_constant(&constant, ck_integer);
  constant.type = integer_type(c.kind);
  set_unsigned_integer_value(&integer_of(&constant), uint64_t(value));
  return constant;
}

static wide number_of(const a_kind_case &c, const a_constant &constant)
{
  bool ignored;
  long long bits = value_of_integer_value(&integer_of(&constant), true, &ignored);
  return c.is_signed ? wide(bits) : wide(uint64_t(bits));
}

static wide random_number(std::mt19937_64 &random, const a_kind_case &c)
{
  uint64_t bits = random() >> random() % 64;
  if (random() % 2 != 0) bits = ~bits;
  if (random() % 4 == 0) bits = (1ULL << random() % 64) - random() % 2;
  return wrapped(c, wide(bits));
}

// Folds and returns the code that the context would have been told.
static an_error_code fold(an_expr_operator_kind op, const a_constant &a, const a_constant &b,
                          a_type *type, a_constant *result, bool *not_folded)
{
  an_error_code code = ec_no_error;
  a_source_position nowhere = null_source_position;
  binary_operation(op, &a, &b, type, result, true, true, not_folded, nullptr, &code, &nowhere);
  return code;
}

TEST_F(folding, integer_operators_agree_with_the_host)
{
  std::mt19937_64 random(43);
  for (int i = 0; i < 200000; i++) {
    const a_kind_case &c = kind_cases[random() % 6];
    wide x = random_number(random, c), y = random_number(random, c);
    a_constant a = constant_of_kind(c, x), b = constant_of_kind(c, y), result;
    bool not_folded;
    struct a_row {
      an_expr_operator_kind op;
      wide exact;
    };
    for (const a_row &row :
         {a_row{eok_add, x + y}, a_row{eok_subtract, x - y},
          a_row{eok_multiply, wide(uint64_t(x) * uint64_t(y))}, a_row{eok_bit_and, x & y},
          a_row{eok_bit_or, x | y}, a_row{eok_bit_xor, x ^ y}}) {
      fold(row.op, a, b, a.type, &result, &not_folded);
      ASSERT_FALSE(not_folded);
      ASSERT_TRUE(number_of(c, result) == wrapped(c, row.exact)) << row.op << ' ' << c.bits;
    }
    if (y != 0) {
      fold(eok_divide, a, b, a.type, &result, &not_folded);
      ASSERT_TRUE(number_of(c, result) == wrapped(c, x / y));
      fold(eok_remainder, a, b, a.type, &result, &not_folded);
      ASSERT_TRUE(number_of(c, result) == wrapped(c, x % y));
    }
    int count = int(random() % unsigned(c.bits));
    a_constant amount = constant_of_kind(kind_cases[0], count);
    fold(eok_shift_left, a, amount, a.type, &result, &not_folded);
    ASSERT_TRUE(number_of(c, result) == wrapped(c, wide(uint64_t(x) << count)));
    fold(eok_shift_right, a, amount, a.type, &result, &not_folded);
    ASSERT_TRUE(number_of(c, result) == wrapped(c, x >> count));
    fold(eok_lt, a, b, integer_type(ik_int), &result, &not_folded);
    ASSERT_TRUE(number_of(kind_cases[0], result) == (x < y));
  }
}

TEST_F(folding, casts_between_integer_kinds_wrap)
{
  std::mt19937_64 random(47);
  for (int i = 0; i < 100000; i++) {
    const a_kind_case &from = kind_cases[random() % 6], &to = kind_cases[random() % 6];
    wide x = random_number(random, from);
    a_constant constant = constant_of_kind(from, x);
    ASSERT_TRUE(implicit_cast(&constant, integer_type(to.kind)));
    ASSERT_TRUE(number_of(to, constant) == wrapped(to, x)) << from.bits << ' ' << to.bits;
  }
}

TEST_F(folding, faults_of_operators)
{
  a_constant result;
  bool not_folded;
  for (const a_kind_case &c : kind_cases) {
    wide largest = c.is_signed ? (wide(1) << (c.bits - 1)) - 1 : (wide(1) << c.bits) - 1;
    a_constant max = constant_of_kind(c, largest), one_more = constant_of_kind(c, 1);
    fold(eok_add, max, one_more, max.type, &result, &not_folded);
    EXPECT_FALSE(not_folded);
    EXPECT_TRUE(number_of(c, result) == wrapped(c, largest + 1));
  }
  a_constant one_value = constant_of_kind(kind_cases[0], 1),
             zero = constant_of_kind(kind_cases[0], 0);
  EXPECT_EQ(fold(eok_divide, one_value, zero, one_value.type, &result, &not_folded),
            ec_divide_by_zero);
  EXPECT_EQ(result.kind, ck_error);
  EXPECT_EQ(fold(eok_remainder, one_value, zero, one_value.type, &result, &not_folded),
            ec_mod_by_zero);
  a_constant minus = constant_of_kind(kind_cases[0], -1),
             forty = constant_of_kind(kind_cases[0], 40);
  EXPECT_EQ(fold(eok_shift_left, one_value, minus, one_value.type, &result, &not_folded),
            ec_negative_shift_count);
  gcc_mode = false;
  EXPECT_EQ(fold(eok_shift_left, one_value, forty, one_value.type, &result, &not_folded),
            ec_shift_count_too_large);
  gcc_mode = true;
  fold(eok_shift_left, one_value, forty, one_value.type, &result, &not_folded);
  EXPECT_EQ(result.kind, ck_integer);
}

// Outside a constant expression a division by zero stays an operation; in an unused arm nothing is
// said.
TEST_F(folding, the_context_decides_what_a_fault_is)
{
  a_constant a = constant_of_kind(kind_cases[0], 1), zero = constant_of_kind(kind_cases[0], 0),
             result;
  a_source_position nowhere = null_source_position;
  bool not_folded;
  an_error_code code = ec_no_error;
  binary_operation(eok_divide, &a, &zero, a.type, &result, false, true, &not_folded, nullptr, &code,
                   &nowhere);
  EXPECT_TRUE(not_folded);
  binary_operation(eok_divide, &a, &zero, a.type, &result, true, false, &not_folded, nullptr, &code,
                   &nowhere);
  EXPECT_TRUE(not_folded);
  EXPECT_EQ(code, ec_no_error);
}

static a_constant float_constant(double number)
{
  a_constant constant;
  clear_constant(&constant, ck_float);
  constant.type = float_type(fk_double);
  char text[64];
  bool error;
  snprintf(text, sizeof text, "%.17g", number);
  fp_string_to_float(fk_double, text, &float_of(&constant), &error);
  return constant;
}

TEST_F(folding, floats_to_integers)
{
  struct a_row {
    double number;
    an_integer_kind kind;
    long long value;
  };
  for (const a_row &row :
       {a_row{1e20, ik_int, 2147483647}, a_row{-1e20, ik_int, -2147483648LL},
        a_row{-1.9, ik_int, -1}, a_row{3e9, ik_unsigned_int, 3000000000LL},
        a_row{549755813887.5, ik_int40, 549755813887LL}, a_row{1e15, ik_int40, 549755813887LL}}) {
    a_constant constant = float_constant(row.number);
    bool not_folded, ignored;
    a_source_position nowhere = null_source_position;
    an_error_code code = ec_no_error;
    type_change_constant_full(&constant, integer_type(row.kind), false, true, true, false, false,
                              false, false, false, &not_folded, &code, &nowhere);
    EXPECT_FALSE(not_folded);
    EXPECT_EQ(value_of_integer_constant(&constant, &ignored), row.value) << row.number;
  }
}

static std::string text;

static void append_text(const char *piece, an_il_to_str_output_control_block *)
{
  text += piece;
}

static an_il_to_str_output_control_block text_block(bool generated)
{
  an_il_to_str_output_control_block block;
  clear_il_to_str_output_control_block(&block);
  block.output_text = append_text;
  block.generated_code = generated;
  block.c_forms = generated;
  text.clear();
  return block;
}

static std::string type_text(a_type *type)
{
  an_il_to_str_output_control_block block = text_block(false);
  form_type(type, &block);
  return text;
}

TEST_F(folding, text_of_types)
{
  a_type *int_t = integer_type(ik_int), *char_t = integer_type(ik_char);
  a_type *function = make_routine_type(void_type(), int_t);
  EXPECT_EQ(type_text(make_pointer_type(function)), "void (*)(int)");
  EXPECT_EQ(type_text(make_pointer_type(make_pointer_type(char_t))), "char **");
  EXPECT_EQ(
      type_text(make_pointer_type(make_array_type(f_make_qualified_type(int_t, tq_const), 4))),
      "const int (*)[4]");
  EXPECT_EQ(type_text(make_array_type(make_array_type(char_t, 3), 2)), "char [2][3]");
  EXPECT_EQ(type_text(f_make_qualified_type(make_pointer_type(char_t), tq_const)), "char *const");
  EXPECT_EQ(type_text(make_routine_type(make_pointer_type(function), char_t)),
            "void (*(char))(int)");
}

static std::string constant_text(const a_constant &constant, bool in_context)
{
  an_il_to_str_output_control_block block = text_block(true);
  form_constant(&constant, in_context, &block);
  return text;
}

TEST_F(folding, generated_text_of_constants)
{
  EXPECT_EQ(constant_text(constant_of_kind(kind_cases[0], -2147483648LL), false),
            "(-2147483647-1)");
  EXPECT_EQ(constant_text(constant_of_kind(kind_cases[0], -5), true), "(-5)");
  EXPECT_EQ(constant_text(constant_of_kind(kind_cases[1], 7), false), "7U");
  EXPECT_EQ(constant_text(constant_of_kind(kind_cases[5], 7), false), "7ULL");
  EXPECT_EQ(constant_text(constant_of_kind({ik_char, 8, true}, 65), true), "((char)65)");
  a_constant value = float_constant(0.1);
  EXPECT_EQ(constant_text(value, false), "0x1.999999999999ap-4");
  value.type = float_type(fk_float);
  float_of(&value) = a_nan;
  EXPECT_EQ(constant_text(value, false), "(__builtin_nanf(\"\"))");
  float_of(&value) = neg_infin;
  EXPECT_EQ(constant_text(value, false), "(-__builtin_huge_valf())");
  a_constant string;
  clear_constant(&string, ck_string);
  string.type = string_literal_type(chk_char, 301);
  std::string letters(300, 'x');
  letters[0] = '?';
  string_of(&string).length = 301;
  string_of(&string).text = letters.c_str();
  std::string written = constant_text(string, false);
  EXPECT_EQ(written.substr(0, 4), "\"\\?x");
  size_t breaks = 0;
  for (size_t at = 0; (at = written.find("\" \"", at)) != std::string::npos; at++)
    breaks++;
  EXPECT_EQ(breaks, 2u);
}
