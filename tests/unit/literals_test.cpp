// literals_test.cpp - numbers, characters and strings become constants of the target.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include "token_dump.h"

namespace {

typedef std::vector<std::string> options;

std::string tokens(const std::string &text, const options &given = {})
{
  return dump_tokens(text + "\n", given).tokens;
}

std::string messages(const std::string &text, const options &given = {})
{
  return dump_tokens(text + "\n", given).messages;
}

TEST(IntegerLiterals, TakeTheFirstKindThatHoldsThem)
{
  // long has 40 bits here.
  EXPECT_EQ(tokens("2147483647 2147483648 549755813887 0xFFFFFFFF 0x100000000 037777777777"),
            "int constant int 2147483647\nint constant long 2147483648\n"
            "int constant long 549755813887\nint constant unsigned int 4294967295\n"
            "int constant long 4294967296\nint constant unsigned int 4294967295\n");
  EXPECT_EQ(tokens("549755813888 0x8000000000 0xFFFFFFFFFF 0x10000000000"),
            "int constant unsigned long 549755813888\nint constant unsigned long 549755813888\n"
            "int constant unsigned long 1099511627775\nint constant long long 1099511627776\n");
  EXPECT_EQ(tokens("549755813888", {"--c99"}), "int constant long long 549755813888\n");
  EXPECT_EQ(tokens("1u 1l 1ul 1ll 1uLL 4294967296u 0b101"),
            "int constant unsigned int 1\nint constant long 1\nint constant unsigned long 1\n"
            "int constant long long 1\nint constant unsigned long long 1\n"
            "int constant unsigned long 4294967296\nint constant int 5\n");
}

TEST(IntegerLiterals, HaveAFortyBitSuffix)
{
  EXPECT_EQ(tokens("1i40 1I40u 0x8000000000i40 0x10000000000i40"),
            "int constant __int40_t 1\nint constant unsigned __int40_t 1\n"
            "int constant unsigned __int40_t 549755813888\nint constant long long 1099511627776\n");
  EXPECT_NE(messages("1i32").find("invalid suffix on integral constant"), std::string::npos);
}

TEST(IntegerLiterals, AreOfTheWidthOfTheTargetsLong)
{
  EXPECT_EQ(tokens("2147483648 0x80000000L", {"--long_precision_bits=32"}),
            "int constant unsigned long 2147483648\nint constant unsigned long 2147483648\n");
}

TEST(IntegerLiterals, BeyondAllKindsAreReported)
{
  EXPECT_EQ(tokens("18446744073709551615 18446744073709551616"),
            "int constant unsigned long long 18446744073709551615\nint constant error\n");
  EXPECT_NE(messages("18446744073709551616").find("integer constant is too large"),
            std::string::npos);
  EXPECT_NE(messages("9223372036854775808", {"--c99"}).find("given unsigned long long"),
            std::string::npos);
}

TEST(IntegerLiterals, FollowTheOldLanguage)
{
  EXPECT_EQ(tokens("08 0xFFFFFFFF 0xFFFFFFFFFF", {"-K"}),
            "int constant int 8\nint constant int -1\nint constant long -1\n");
  EXPECT_NE(messages("08").find("invalid octal digit"), std::string::npos);
}

TEST(Numbers, AreReportedWhenMalformed)
{
  EXPECT_NE(messages("0x").find("invalid hexadecimal number"), std::string::npos);
  EXPECT_NE(messages(".5e+").find("invalid floating constant"), std::string::npos);
  EXPECT_NE(messages("0b2").find("invalid binary number"), std::string::npos);
  EXPECT_NE(messages("1.2.3").find("extra text after expected end of number"), std::string::npos);
  EXPECT_EQ(messages("0xe+1"), "");
  EXPECT_NE(messages("0xe+1", {"--c99", "--strict"}).find("extra text"), std::string::npos);
  EXPECT_NE(messages("3i").find("complex integral types"), std::string::npos);
}

TEST(FloatLiterals, HaveKindsAndExactText)
{
  EXPECT_EQ(tokens("1.5 0.1f .5L 1e2 3. 0x1.8p1 2.0i"),
            "float constant 1 0x1.8p+0\nfloat constant 0 0x1.99999ap-4\n"
            "float constant 2 0x1p-1\nfloat constant 1 0x1.9p+6\nfloat constant 1 0x1.8p+1\n"
            "float constant 1 0x1.8p+1\nfloat constant complex\n");
  EXPECT_NE(messages("1e400").find("floating constant is out of range"), std::string::npos);
}

// The host's strtod rounds correctly: an oracle for decimal texts of every length.
TEST(FloatLiterals, RoundCorrectly)
{
  std::string text, expected;
  unsigned long long state = 88172645463325252u;
  auto random = [&] {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return state;
  };
  char number[80], value[80];
  for (int k = 0; k < 400; ++k) {
    int length = snprintf(number, sizeof number, "%llu.%llu", random() % 1000, random());
    if (k % 3 == 0)
      length += snprintf(number + length, sizeof number - (size_t)length, "%llu", random());
    snprintf(number + length, sizeof number - (size_t)length, "e%d", (int)(random() % 600) - 300);
    snprintf(value, sizeof value, "%a", strtod(number, nullptr));
    text += std::string(number) + "\n";
    expected += std::string("float constant 1 ") + value + "\n";
  }
  // Half-way cases, the largest and the smallest values.
  for (const char *edge :
       {"9007199254740993.0", "9007199254740993.00000000000000000000000000000001",
        "1.7976931348623157e308", "4.9406564584124654e-324", "2.2250738585072011e-308",
        "0.500000000000000166533453693773481063544750213623046875"}) {
    snprintf(value, sizeof value, "%a", strtod(edge, nullptr));
    if (strtod(edge, nullptr) < 1e-307) continue; // denormals are written differently
    text += std::string(edge) + "\n";
    expected += std::string("float constant 1 ") + value + "\n";
  }
  EXPECT_EQ(tokens(text), expected);
}

TEST(CharConstants, ArePackedAndSigned)
{
  EXPECT_EQ(tokens("'a' '\\377' '\\0' 'ab' 'abcd' L'a' '\\x41' '\\e'"),
            "char constant int 97\nchar constant int -1\nchar constant int 0\n"
            "char constant int 24930\nchar constant int 1633837924\n"
            "char constant unsigned short 97\nchar constant int 65\nchar constant int 27\n");
  EXPECT_EQ(tokens("'\\377'", {"--unsigned_chars"}), "char constant int 255\n");
  EXPECT_NE(messages("'abcde'", {"--c99", "--strict"}).find("too many characters"),
            std::string::npos);
  EXPECT_NE(messages("'abcde'").find("leading character"), std::string::npos);
  EXPECT_NE(messages("''").find("at least one character"), std::string::npos);
  EXPECT_NE(messages("'\\q'").find("unrecognized character escape"), std::string::npos);
  EXPECT_NE(messages("'\\x'").find("invalid hexadecimal number"), std::string::npos);
  EXPECT_NE(messages("'\\x100'").find("character value is out of range"), std::string::npos);
}

TEST(Strings, AreConvertedElementByElement)
{
  EXPECT_EQ(tokens("\"a\\n\\0\\101\" L\"ab\"+\"\"", {"--wchar_t_bits=16"}),
            "string literal 1 61000a00000041006100620000"
            "00\n+\nstring literal 0 00\n");
  EXPECT_EQ(tokens("L\"a\"", {"--wchar_t_bits=32"}), "string literal 1 6100000000000000\n");
  EXPECT_EQ(tokens("\"\\x100\""), "string literal 0 0000\n");
}

TEST(Strings, AreJoined)
{
  EXPECT_EQ(tokens("\"a\" \"b\" /* c */ \"c\"\n\"d\" x"),
            "string literal 0 6162636400\nidentifier x\n");
  EXPECT_EQ(tokens("#define S \"b\"\n\"a\" S S;"), "string literal 0 61626200\n;\n");
  EXPECT_EQ(tokens("\"a\"\n#define X 1\n\"b\" X"), "string literal 0 616200\nint constant int 1\n");
  EXPECT_EQ(tokens("\"a\" x y"), "string literal 0 6100\nidentifier x\nidentifier y\n");
}

TEST(Strings, HoldUniversalCharacters)
{
  EXPECT_EQ(tokens("\"\\u00e9\" ;", {"--c99"}), "string literal 0 c3a900\n;\n");
  EXPECT_NE(messages("\"\\u12\"", {"--c99"}).find("incorrectly formed"), std::string::npos);
}

} // namespace
