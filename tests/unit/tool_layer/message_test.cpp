// message_test.cpp - headers, streams, counting, the end of the process, severities.
#include "capture.h"
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gmock/gmock.h>
#include <vector>

namespace {

TEST_F(MESSAGES, GoToTheStreamOfTheirSeverity)
{
  DIAGNOSTIC::remarks_m = DIAGNOSTIC::advice_m = true;
  WRITTEN w = written_by([] {
    USER_MSG::advice("one");
    USER_MSG::remark("two");
    USER_MSG::warning(1, "thr%s", "ee");
    USER_MSG::error("four %d", 4);
  });
  EXPECT_EQ(w.out, "advice: one\nremark: two\n");
  EXPECT_EQ(w.err, "warning: three\nerror: four 4\n");
  EXPECT_EQ(USER_MSG::get_error_count(), 1);
}

TEST_F(MESSAGES, OfASuppressedSeverityPrintAndCountNothing)
{
  DIAGNOSTIC::warnings_m = false;
  WRITTEN w = written_by([] {
    USER_MSG::advice("a");
    USER_MSG::debug("d");
    USER_MSG::remark("r");
    USER_MSG::warning(0, "w");
  });
  EXPECT_EQ(w.out + w.err, "");
  EXPECT_EQ(DIAGNOSTIC::error_count_m, 0);
}

TEST_F(MESSAGES, StartWithTheirPosition)
{
  DIAG_SRCINFO_DATA exact("a.c", 3, 5, false), near("b.c", 12, 0, true),
      file_only("c.c", 0, 0, false), none("", 4, 1, false);
  EXPECT_EQ(errors_of([&] { USER_MSG::warning(&exact, 0, "text"); }),
            "\"a.c\", line 3: warning: text\n");
  EXPECT_EQ(errors_of([&] { USER_MSG::error(&near, "text"); }),
            "\"b.c\", line 12 (approximate): error: text\n");
  EXPECT_EQ(errors_of([&] { USER_MSG::error(&file_only, "text"); }), "\"c.c\": error: text\n");
  EXPECT_EQ(errors_of([&] { USER_MSG::error(&none, "text"); }), "error: text\n");
}

TEST_F(MESSAGES, ShowTheirCodeOnDemand)
{
  DIAGNOSTIC::display_code_m = true;
  DIAG_SRCINFO_DATA position("a.c", 3, 5, false);
  CODED invalid(24000);
  invalid.set_src(&position);
  int printed = 0;
  EXPECT_EQ(errors_of([&] { printed = invalid.say(); }),
            "\"a.c\", line 3: error #24000-D: option is invalid\n");
  EXPECT_EQ(printed, 49);
  EXPECT_EQ(errors_of([] { USER_MSG::error("fixed"); }), "error #99923: fixed\n");
  EXPECT_EQ(errors_of([] { CODED(24029).say(); }), "error #24029: \n");
  DIAGNOSTIC::display_ipos_m = true;
  EXPECT_EQ(errors_of([] { CODED(24006).say("-x"); }),
            "tool:7:warning #24006-D: Attempt to clear PERSISTENT option -x ignored\n");
}

TEST_F(MESSAGES, OfTheToolItselfShowWhereTheyWereMade)
{
  DIAGNOSTIC::debug_m = true;
  WRITTEN w = written_by([] {
    USER_MSG::apperror("%d%%", 5);
    USER_MSG::debug("text");
  });
  EXPECT_THAT(w.err, testing::MatchesRegex("user_msg_api:[0-9]+:internal error #99924: .5%.\n"));
  EXPECT_THAT(w.out, testing::EndsWith(":internal debug #99920: (text)\n"));
}

TEST_F(MESSAGES, TakeANullFormatForAnEmptyText)
{
  char const *null_format = nullptr;
  EXPECT_EQ(errors_of([&] { USER_MSG::error(null_format); }), "error: \n");
}

TEST_F(MESSAGES, AreErrorsForAToolThatAsksForIt)
{
  USER_MSG::emit_warnings_as_errors();
  DIAG_SRCINFO_DATA position("a.c", 3, 5, false);
  EXPECT_EQ(errors_of([&] { USER_MSG::warning(&position, 2, "%s", "x"); }),
            "\"a.c\", line 3: error: x\n");
  EXPECT_EQ(DIAGNOSTIC::error_count_m, 1);
}

TEST_F(MESSAGES, GoToTheStreamThatIsSet)
{
  char *text = nullptr;
  size_t size = 0;
  DIAGNOSTIC::fp_m = open_memstream(&text, &size);
  WRITTEN w = written_by([] { USER_MSG::error("x"); });
  fclose(DIAGNOSTIC::fp_m);
  EXPECT_EQ(w.out + w.err, "");
  EXPECT_STREQ(text, "error: x\n");
  free(text);
}

TEST_F(MESSAGES, IndentTheirLines)
{
  DIAGNOSTIC::push_indent(4);
  DIAGNOSTIC::push_indent(2);
  DIAGNOSTIC::pop_indent();
  EXPECT_EQ(errors_of([] { USER_MSG::error("a\nb"); }), "    error: a\n       b\n");
  DIAGNOSTIC::pop_indent();
  DIAGNOSTIC::pop_indent();
  EXPECT_EQ(DIAGNOSTIC::indent_m, 0);
}

TEST_F(MESSAGES, EndALineLeftOpenByTheHeader)
{
  EXPECT_EQ(errors_of([] {
              CODED message(24000);
              message.print_header();
              message.report();
              message.flush();
            }),
            "error: \nerror: \n");
  EXPECT_EQ(DIAGNOSTIC::error_count_m, 2);
}

//---------------------------------------------------------------------------- the end of the process

TEST_F(MESSAGES, OfFatalKindEndTheProcess)
{
  DIAG_SRCINFO_DATA position("a.c", 3, 5, false);
  EXPECT_EXIT(USER_MSG::fatal("gone"), testing::ExitedWithCode(1), "^fatal error: gone\n$");
  EXPECT_EXIT(USER_MSG::fatal(&position, "gone"), testing::ExitedWithCode(1),
              "^\"a.c\", line 3: fatal error: gone\n$");
  EXPECT_EXIT(CODED(6004).say("x"), testing::ExitedWithCode(1),
              "^fatal error: cannot open file \"x\"\n$");
  EXPECT_EXIT(CODED(6000).say("x"), testing::KilledBySignal(SIGABRT),
              "^tool:7:internal fatal error #6000: pointer \"x\"");
  EXPECT_EXIT(USER_MSG::die("100% SHASH", "no %s", "keys"), testing::KilledBySignal(SIGABRT),
              "^user_msg_api:[0-9]+:internal fatal error #99926: \\(100% SHASH: no keys\\)\n$");
}

TEST_F(MESSAGES, OfTheToolReachABufferedStreamAheadOfTheAbort)
{
  std::string name = testing::TempDir() + "tool_layer_fatal.txt";
  EXPECT_EXIT(
      {
        DIAGNOSTIC::fp_m = fopen(name.c_str(), "w");
        USER_MSG::die("here", "gone");
      },
      testing::KilledBySignal(SIGABRT), "");
  std::ifstream file(name);
  std::string text;
  std::getline(file, text);
  EXPECT_THAT(text, testing::EndsWith("(here: gone)"));
  remove(name.c_str());
}

TEST_F(MESSAGES, EndTheProcessAboveTheErrorLimit)
{
  std::string printed = errors_of([] {
    for (int i = 0; i < 100; i++)
      USER_MSG::error("e");
  });
  EXPECT_EQ(printed.size(), 100 * strlen("error: e\n"));
  EXPECT_EXIT(USER_MSG::error("last"), testing::ExitedWithCode(1),
              "^error: last\nfatal error: error limit reached; 100 errors detected\n$");
  EXPECT_EXIT(
      {
        DIAGNOSTIC::max_errors_m = 5;
        CODED(24000).say();
      },
      testing::ExitedWithCode(1), "; 5 errors detected");
}

TEST_F(MESSAGES, NeitherEndNorCountInDebugMode)
{
  DIAGNOSTIC::push_debug_mode(true);
  DIAGNOSTIC::max_errors_m = 0;
  EXPECT_EQ(errors_of([] {
              USER_MSG::error("one");
              USER_MSG::fatal("two");
              USER_MSG::die("x", "three");
            }).substr(0, 32),
            "error: one\nfatal error: two\nuser");
  EXPECT_EQ(DIAGNOSTIC::error_count_m, 0);
  DIAGNOSTIC::pop_debug_mode();
  EXPECT_FALSE(DIAGNOSTIC::debug_mode_m);
  DIAGNOSTIC::debug_mode_m = true;
  DIAGNOSTIC::pop_debug_mode();
  EXPECT_FALSE(DIAGNOSTIC::debug_mode_m);
}

//---------------------------------------------------------------------------- the source line

class SOURCE_LINE : public MESSAGES {
protected:
  std::string name = testing::TempDir() + "tool_layer_source.c";

  void SetUp() override
  {
    MESSAGES::SetUp();
    DIAGNOSTIC::verbose_m = true;
    std::ofstream(name) << "first\n\tsecond line\nlast";
  }
  void TearDown() override
  {
    remove(name.c_str());
  }
  // What stands behind the line of the message.
  std::string shown(int line, int column, bool approx = false)
  {
    DIAG_SRCINFO_DATA position(name, line, column, approx);
    std::string text = errors_of([&] { USER_MSG::warning(&position, 0, "x"); });
    return text.substr(text.find(": x\n") + 4);
  }
};

TEST_F(SOURCE_LINE, StandsBehindTheMessageWithACaret)
{
  EXPECT_EQ(shown(1, 1), "first\n^\n");
  EXPECT_EQ(shown(2, 4), "\tsecond line\n   ^\n");
  EXPECT_EQ(shown(1, 0), "first\n");
  EXPECT_EQ(shown(3, 4), "last\n   ^\n");
}

TEST_F(SOURCE_LINE, IsMissingWithoutAnExactLine)
{
  EXPECT_EQ(shown(0, 1), "");
  EXPECT_EQ(shown(4, 1), "");
  EXPECT_EQ(shown(1, 1, true), "");
  DIAG_SRCINFO_DATA position((name + ".none").c_str(), 1, 1, false);
  EXPECT_EQ(CODED(24000).show_annotated_source(), 0);
  EXPECT_EQ(errors_of([&] { USER_MSG::error(&position, "x"); }),
            "\"" + name + ".none\", line 1: error: x\n");
}

//---------------------------------------------------------------------------- rows and severities

TEST_F(MESSAGES, StandInTheTableByRisingCode)
{
  int rows = 0;
  for (DIAG_INFO *row = diag_info_table; row->code != 0; row++, rows++) {
    EXPECT_EQ(DIAGNOSTIC::get_info(row->code), row);
    EXPECT_TRUE(row[1].code == 0 || row[1].code > row->code) << row->code;
  }
  EXPECT_EQ(rows, 54);
  EXPECT_EQ(DIAGNOSTIC::get_info(0), nullptr);
  EXPECT_EQ(DIAGNOSTIC::get_info(24037), nullptr);
}

// Changes of severity last for the process; these give back what they took.
class SEVERITIES : public MESSAGES {
protected:
  std::vector<dc_SEVERITY> saved;
  void SetUp() override
  {
    MESSAGES::SetUp();
    for (DIAG_INFO *row = diag_info_table; row->code != 0; row++)
      saved.push_back(row->severity);
  }
  void TearDown() override
  {
    for (size_t i = 0; i < saved.size(); i++)
      diag_info_table[i].severity = saved[i];
  }
  static int of(int code)
  {
    return DIAGNOSTIC::get_info(code)->severity;
  }
};

TEST_F(SEVERITIES, ChangeForDiscretionaryRowsOnly)
{
  DIAGNOSTIC::override_severity(24000, dc_WARNING);
  EXPECT_EQ(of(24000), dc_WARNING);
  EXPECT_EQ(errors_of([] { CODED(24000).say(); }), "warning: option is invalid\n");
  for (dc_SEVERITY never : {dc_NO_ERROR, dc_ADVICE, dc_DEBUG})
    DIAGNOSTIC::override_severity(24000, never);
  EXPECT_EQ(of(24000), dc_WARNING);
  DIAGNOSTIC::override_severity(24000, dc_SUPPRESSED);
  EXPECT_EQ(errors_of([] { CODED(24000).say(); }), "");
  for (int code : {6000, 6004, 24029, 99923, 99924, 99927}) {
    int before = of(code);
    DIAGNOSTIC::override_severity(code, dc_REMARK);
    EXPECT_EQ(of(code), before) << code;
  }
  DIAGNOSTIC::override_severity(1, dc_WARNING);
}

TEST_F(SEVERITIES, ChangeForAllRowsOfOne)
{
  DIAGNOSTIC::override_severity(dc_WARNING, dc_ERROR);
  EXPECT_EQ(of(24003), dc_ERROR);
  EXPECT_EQ(of(24032), dc_ERROR);
  EXPECT_EQ(of(99922), dc_WARNING); // fixed
  EXPECT_EQ(of(24004), dc_REMARK);
}

TEST_F(SEVERITIES, ChangeForAListOfCodes)
{
  DIAGNOSTIC::override_severity("#24003-D, 2x40 04,,7,99999999999999999999,24011", dc_FATAL);
  EXPECT_EQ(of(24003), dc_FATAL);
  EXPECT_EQ(of(24004), dc_FATAL);
  EXPECT_EQ(of(24011), dc_FATAL);
  EXPECT_EQ(of(24010), dc_ERROR);
  DIAGNOSTIC::override_severity("24003", dc_WARNING); // once fatal, always fatal
  EXPECT_EQ(of(24003), dc_FATAL);
}

TEST_F(SEVERITIES, OutsideOfTheRangeAreUnknown)
{
  DIAG_INFO row = {5, "x", nullptr, dc_SEVERITY(8), false, false};
  CODED message(24000);
  message.info = &row;
  EXPECT_EQ(errors_of([&] {
              message.report();
              message.flush();
            }),
            "(unknown): \n");
}

//---------------------------------------------------------------------------- copies

char *new_text(char const *text)
{
  return strcpy(new char[strlen(text) + 1], text);
}

TEST_F(MESSAGES, AreCopiedWithTheirPosition)
{
  DIAG_SRCINFO_DATA position("a.c", 3, 5, false);
  DIAG::gwarning message("tool", 1, new_text("text"));
  message.set_src(&position);
  position.line_m = 9;
  DIAGNOSTIC *copy = message.alloc();
  EXPECT_NE(copy->src, message.src);
  EXPECT_TRUE(copy->is_equal(&message));
  message.set_src(nullptr);
  EXPECT_FALSE(copy->is_equal(&message));
  EXPECT_EQ(errors_of([&] { copy->report(); }), "\"a.c\", line 3: warning: text\n");
  DIAG::gwarning other("tool", 1, new_text("other"));
  other.set_src(copy->src);
  EXPECT_FALSE(copy->is_equal(&other));
  other.free_mem();
  EXPECT_TRUE(copy->is_equal(&other));
  EXPECT_EQ(
      written_by([&] { copy->dump(); }).out,
      "Code : 99922\nstd_msg : %s\nvrb_msg : (null)\nFile : a.c\nLine : 3\nColumn: 5\n(text)\n");
  copy->free_mem();
  delete copy;
}

} // namespace
