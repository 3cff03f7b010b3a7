// wrap_test.cpp - wrapping of messages at word boundaries.
#include "capture.h"
#include <algorithm>
#include <cstring>
#include <random>
#include <sstream>

namespace {

std::string repeated(int n, char c)
{
  return std::string(size_t(n), c);
}

std::string warning_of(std::string const &text)
{
  return errors_of([&] { USER_MSG::warning(0, "%s", text.c_str()); });
}

TEST_F(MESSAGES, BreakAtTheLastWordThatFits)
{
  // Behind the header there are 70 columns, on a continuation line 76 behind 3 blanks.
  std::string fits = repeated(70, 'a'), too_long = repeated(71, 'a');
  EXPECT_EQ(warning_of(fits), "warning: " + fits + "\n");
  EXPECT_EQ(warning_of(fits + "  b"), "warning: " + fits + "\n   b\n");
  EXPECT_EQ(warning_of("xx " + too_long), "warning: xx\n   " + too_long + "\n");
  EXPECT_EQ(warning_of(too_long + " b"), "warning: \n   " + too_long + " b\n");
  // A word that no line holds is cut.
  std::string cut = repeated(70, 'w') + "\n   " + repeated(76, 'w') + "\n   " + repeated(54, 'w');
  EXPECT_EQ(warning_of(repeated(200, 'w')), "warning: " + cut + "\n");
}

TEST_F(MESSAGES, KeepTheLinesOfTheirText)
{
  EXPECT_EQ(warning_of("one\n  two\n\nthree"), "warning: one\n   two\n   three\n");
  EXPECT_EQ(warning_of("\nx"), "warning: \n   x\n");
  EXPECT_EQ(warning_of("x  "), "warning: x  \n");
  DIAGNOSTIC::wrap_enabled_m = false;
  std::string longer = repeated(50, 'a') + " " + repeated(50, 'b');
  EXPECT_EQ(warning_of(longer + "\nc"), "warning: " + longer + "\n   c\n");
}

TEST_F(MESSAGES, GoOnBehindAHeaderThatFillsTheLine)
{
  DIAG_SRCINFO_DATA position(repeated(90, 'f'), 1, 0, false);
  std::string header = "\"" + repeated(90, 'f') + "\", line 1: error: ";
  EXPECT_ERRORS(USER_MSG::error(&position, "x y"), header + "\n   x y\n");
  DIAGNOSTIC::wrap_enabled_m = false;
  EXPECT_ERRORS(USER_MSG::error(&position, "x y"), header + "x y\n");
  DIAGNOSTIC::wrap_enabled_m = DIAGNOSTIC::wrap_headers_m = true;
  EXPECT_ERRORS(USER_MSG::error(&position, "x y"), "\"" + repeated(78, 'f') + "\n   " +
                                                       repeated(12, 'f') +
                                                       "\", line 1: error: x y\n");
}

TEST_F(MESSAGES, FindTheLastCharacterOfALine)
{
  char const text[] = "ab cde  fgh";
  auto last = [&](int width) { return DIAGNOSTIC::last_printable_char(text, width) - text; };
  // At 10 inside of fgh, at 8 and 7 a blank follows, at 5 inside of cde, at 1 inside of ab.
  std::pair<int, int> const rows[] = {{-1, 10}, {11, 10}, {10, 5}, {8, 5}, {7, 6},
                                      {6, 5},   {5, 1},   {2, 1},  {1, 0}, {0, 0}};
  for (auto [width, place] : rows)
    EXPECT_EQ(last(width), place) << width;
  DIAGNOSTIC::wrap_enabled_m = false;
  EXPECT_EQ(last(5), 10);
}

TEST_F(MESSAGES, WrapIntoABufferForLists)
{
  std::string a = repeated(60, 'a'), b = repeated(60, 'b');
  DIAG::gerror message("tool", 1, strdup("x"));
  EXPECT_STREQ(message.sp_print("%s %s c", a.c_str(), b.c_str()),
               (a + "\n" + repeated(10, ' ') + b + " c").c_str());
  EXPECT_STREQ(message.get_sp_buffer(), "x");
  EXPECT_EQ(CODED(24000).get_sp_buffer(), nullptr);
  // Lines that break early: far more blanks than the text is long.
  std::string words;
  for (int i = 0; i < 3000; i++)
    words += repeated(36, 'w') + " ";
  EXPECT_EQ(strlen(message.sp_print("%s", words.c_str())), size_t(3000 * 37 + 2999 * 10));
  free(message.msg);
}

TEST_F(MESSAGES, WantRoomBehindTheIndentation)
{
  int room = 5;
  CODED message(24000);
  EXPECT_DEATH(message.print_formatted("x", false, &room, 10, 5, 5),
               "diag_cols > \\(indent \\+ wrap_indent\\)");
}

// Random words: none is lost, no line is too wide or breaks where one more word fits.
TEST_F(MESSAGES, FillTheirLines)
{
  std::mt19937 random(1);
  for (int round = 0; round < 300; round++) {
    DIAGNOSTIC::diag_cols_m = 20 + int(random() % 80);
    DIAGNOSTIC::wrap_indent_m = int(random() % 8);
    std::string text;
    for (int words = 1 + int(random() % 40); words > 0; words--)
      text += repeated(2 + int(random() % 10), char('a' + random() % 26)) + (words == 1 ? "" : " ");
    std::istringstream lines(warning_of(text));
    std::string line, previous, collected;
    while (std::getline(lines, line)) {
      ASSERT_LE(int(line.size()), DIAGNOSTIC::diag_cols_m) << text;
      std::string words = line.substr(collected.empty() ? 9 : size_t(DIAGNOSTIC::wrap_indent_m));
      if (!collected.empty()) {
        int first_word = int(std::min(words.find(' '), words.size()));
        ASSERT_GT(int(previous.size()) + 1 + first_word, DIAGNOSTIC::diag_cols_m) << text;
      }
      collected += (collected.empty() ? "" : " ") + words;
      previous = line;
    }
    ASSERT_EQ(collected, text);
  }
}

} // namespace
