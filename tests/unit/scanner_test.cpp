// scanner_test.cpp - from characters to tokens, as the parser sees them.
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include "token_dump.h"

namespace {

typedef std::vector<std::string> options;

// Tokens in one line, separated by blanks.
std::string tokens(const std::string &text, const options &given = {}, const char *suffix = ".c")
{
  std::string dump = dump_tokens(text + "\n", given, suffix).tokens;
  for (char &c : dump) {
    if (c == '\n') c = ' ';
  }
  if (!dump.empty()) dump.pop_back();
  return dump;
}

std::string messages(const std::string &text, const options &given = {})
{
  return dump_tokens(text + "\n", given).messages;
}

TEST(Scanner, TakesTheLongestPunctuator)
{
  EXPECT_EQ(tokens("a+++b"), "identifier a ++ + identifier b");
  EXPECT_EQ(tokens("<<=<<<>>=>>>->-----=...."), "<<= << < >>= >> > -> -- -- -= ... .");
  EXPECT_EQ(tokens("&&&=&|||=|^=^!=!===%=%*=*/=/"), "&& &= & || |= | ^= ^ != != == %= % *= * /= /");
  EXPECT_EQ(tokens("a::b.*c->*d"),
            "identifier a : : identifier b . * identifier c -> * identifier d");
  EXPECT_EQ(tokens("a::b.*c->*d", {}, ".cpp"),
            "identifier a :: identifier b .* identifier c ->* identifier d");
}

TEST(Scanner, KnowsDigraphsWhereTheyAreAllowed)
{
  EXPECT_EQ(tokens("<:%>:><%"), "[ } ] {");
  EXPECT_EQ(tokens("<::", {"--no_alternative_tokens"}, ".cpp"), "< ::");
}

TEST(Scanner, JoinsSplicedTokensAndSkipsComments)
{
  EXPECT_EQ(tokens("ab\\\ncd/**/e//x\nf"), "identifier abcd identifier e identifier f");
  EXPECT_EQ(tokens("a/*\n*\n/ */b"), "identifier a identifier b");
}

TEST(Scanner, KnowsTheKeywordsOfTheDialect)
{
  EXPECT_EQ(tokens("restrict inline typeof __typeof__ __inline__ class", {"--c99", "--no_gcc"}),
            "restrict inline identifier typeof identifier __typeof__ identifier __inline__ "
            "identifier class");
  EXPECT_EQ(tokens("typeof __typeof__ __inline__ __const asm __asm__"),
            "__typeof__ __typeof__ inline const asm __asm");
  EXPECT_EQ(tokens("const signed void", {"-K"}), "identifier const identifier signed void");
  EXPECT_EQ(tokens("class new and", {}, ".cpp"), "class new &&");
}

TEST(Scanner, GivesOneNameToOneSpelling)
{
  EXPECT_EQ(tokens("\\u00c4b \\U000000C4b", {"--c99"}), "identifier \\u00c4b identifier \\u00c4b");
}

TEST(Scanner, ReadsMultibyteCharacters)
{
  setenv("LC_ALL", "C.utf8", 1);
  options given = {"--c99", "--multibyte_chars"};
  EXPECT_EQ(tokens("\xc3\x84"
                   "b \\u00c4b x\xe6\x97\xa5",
                   given),
            "identifier \\u00c4b identifier \\u00c4b identifier x\\u65e5");
  EXPECT_EQ(tokens("'\xc3\x84' L'\xe6\x97\xa5' \"\xc3\x84\" + L\"\xc3\x84\"", given),
            "char constant int -15484 char constant unsigned short 26085 "
            "string literal 0 c38400 + string literal 1 c4000000");
  EXPECT_NE(messages("\"\xc3\"", given).find("invalid multibyte"), std::string::npos);
  EXPECT_NE(messages("\xe2\x82\xac", given).find("unrecognized token"), std::string::npos);
  unsetenv("LC_ALL");
}

TEST(Scanner, ReportsWhatIsNoToken)
{
  EXPECT_EQ(tokens("a ` b"), "identifier a error identifier b");
  EXPECT_NE(messages("`").find("unrecognized token"), std::string::npos);
  EXPECT_NE(messages("a # b").find("\"#\" not expected here"), std::string::npos);
  EXPECT_NE(messages("\"abc").find("missing closing quote"), std::string::npos);
  EXPECT_NE(messages("__VA_ARGS__").find("__VA_ARGS__"), std::string::npos);
  EXPECT_EQ(tokens("__VA_ARGS__"), "identifier __VA_ARGS__");
}

TEST(Scanner, SaysOnceThatLineCommentsAreIllegal)
{
  std::string text = messages("// a\n// b\nx", {"--no_gcc", "--strict"});
  EXPECT_NE(text.find("line 1: error: an end-of-line comment"), std::string::npos) << text;
  EXPECT_EQ(text.find("line 2"), std::string::npos) << text;
}

TEST(Scanner, StopsNeitherAtNullBytesNorAtLongTokens)
{
  EXPECT_EQ(tokens(std::string("a\0b", 3)), "identifier a identifier b");
  std::string name(1 << 20, 'x');
  EXPECT_EQ(tokens(name), "identifier " + name);
}

TEST(Directives, AreInvisibleToTheParser)
{
  EXPECT_EQ(tokens("a\n#if 0\nb\n#elif 1\nc\n#else\nd\n#endif\ne"),
            "identifier a identifier c identifier e");
  EXPECT_EQ(tokens("#define f(x) x\nf(\n#ifdef Q\n1\n#else\n2\n#endif\n) 3"),
            "int constant int 2 int constant int 3");
}

TEST(Directives, EvaluateInTheWidestType)
{
  EXPECT_EQ(tokens("#if 0x7fffffffffffffff + 0 > 0 && -1 > 0u\nyes\n#endif", {"--c99"}),
            "identifier yes");
  EXPECT_EQ(tokens("#if undefined_name == 0 && 'a' == 97 && !defined undefined_name\nyes\n#endif"),
            "identifier yes");
}

TEST(Directives, NestWithoutLimit)
{
  std::string open, close;
  for (int k = 0; k < 100000; ++k) {
    open += "#if 1\n";
    close += "#endif\n";
  }
  EXPECT_EQ(tokens(open + "a\n" + close + "b"), "identifier a identifier b");
  EXPECT_EQ(tokens("#if 0\n" + open + "a\n" + close + "#else\nb\n#endif"), "identifier b");
  EXPECT_NE(messages(open).find("the #endif for this directive is missing"), std::string::npos);
}

TEST(Directives, EndWithTheirFile)
{
  EXPECT_EQ(tokens("a\n#define b c"), "identifier a");
  EXPECT_NE(messages("#define f(x) x\nf(1, (2").find("improperly terminated macro"),
            std::string::npos);
  EXPECT_NE(messages("#if f(\n#endif").find("error"), std::string::npos);
  EXPECT_NE(messages("#if 0 /* no end\n#endif").find("comment unclosed at end of file"),
            std::string::npos);
}

TEST(Scanner, TakesLinesOfAnyLength)
{
  std::string line, expected;
  for (int k = 0; k < 50000; ++k)
    line += "x+ ";
  a_token_dump dump = dump_tokens(line + "\n");
  EXPECT_EQ(dump.messages, "");
  EXPECT_EQ(std::count(dump.tokens.begin(), dump.tokens.end(), '\n'), 100000);
}

} // namespace
