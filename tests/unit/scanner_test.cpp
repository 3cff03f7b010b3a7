// scanner_test.cpp - from characters to tokens, as the parser sees them.
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

} // namespace
