// message_test.cpp - headers, streams, counting, the end of the process, severities.
#include "capture.h"
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

DIAG_SRCINFO_DATA position("a.c", 3, 5, false);

TEST_F(MESSAGES, GoToTheStreamOfTheirSeverity)
{
  auto all = [] {
    USER_MSG::advice("one");
    USER_MSG::advice(&position, "two");
    USER_MSG::remark("three");
    USER_MSG::warning(1, "fo%s", "ur");
    USER_MSG::error("five %d", 5);
  };
  EXPECT_EQ(output_of([&] { EXPECT_ERRORS(all(), "warning: four\nerror: five 5\n"); }), "");
  EXPECT_EQ(USER_MSG::get_error_count(), 1);
  DIAGNOSTIC::remarks_m = DIAGNOSTIC::advice_m = true;
  DIAGNOSTIC::warnings_m = false;
  EXPECT_EQ(output_of([&] { EXPECT_ERRORS(all(), "error: five 5\n"); }),
            "advice: one\n\"a.c\", line 3: advice: two\nremark: three\n");
}

TEST_F(MESSAGES, StartWithTheirPosition)
{
  DIAG_SRCINFO_DATA near("b.c", 12, 0, true), file_only("c.c", 0, 0, false), none("", 4, 1, false);
  char const *null_format = nullptr;
  EXPECT_ERRORS(USER_MSG::warning(&position, 0, "x"), "\"a.c\", line 3: warning: x\n");
  EXPECT_ERRORS(USER_MSG::error(&near, "x"), "\"b.c\", line 12 (approximate): error: x\n");
  EXPECT_ERRORS(USER_MSG::error(&file_only, "x"), "\"c.c\": error: x\n");
  EXPECT_ERRORS(USER_MSG::error(&none, null_format), "error: \n");
  USER_MSG::emit_warnings_as_errors();
  EXPECT_ERRORS(USER_MSG::warning(&position, 2, "%s", "x"), "\"a.c\", line 3: error: x\n");
}

TEST_F(MESSAGES, ShowTheirCodeOnDemand)
{
  DIAGNOSTIC::display_code_m = true;
  CODED invalid(24000);
  invalid.set_src(&position);
  std::string expected = "\"a.c\", line 3: error #24000-D: option is invalid\n";
  EXPECT_ERRORS(EXPECT_EQ(invalid.say(), int(expected.size())), expected);
  EXPECT_ERRORS(USER_MSG::error("fixed"), "error #99923: fixed\n");
  EXPECT_ERRORS(CODED(24029).say(), "error #24029: \n");
  DIAGNOSTIC::display_ipos_m = true;
  EXPECT_ERRORS(CODED(24028).say("-x"),
                "tool:7:error #24028-D: option -x needs to be passed to the compiler shell\n"
                "   instead of directly to the linker.  Ignoring.\n");
}

TEST_F(MESSAGES, OfTheToolItselfShowWhereTheyWereMade)
{
  DIAGNOSTIC::debug_m = true;
  EXPECT_THAT(errors_of([] { USER_MSG::apperror("%d%%", 5); }),
              testing::MatchesRegex("user_msg_api:[0-9]+:internal error #99924: .5%.\n"));
  EXPECT_THAT(output_of([] { USER_MSG::debug("text"); }),
              testing::MatchesRegex("user_msg_api:[0-9]+:internal debug #99920: .text.\n"));
}

TEST_F(MESSAGES, IndentTheirLines)
{
  DIAGNOSTIC::push_indent(4);
  DIAGNOSTIC::push_indent(2);
  DIAGNOSTIC::pop_indent();
  EXPECT_ERRORS(USER_MSG::error("a\nb"), "    error: a\n       b\n");
  DIAGNOSTIC::pop_indent();
  DIAGNOSTIC::pop_indent();
  EXPECT_EQ(DIAGNOSTIC::indent_m, 0);
}

TEST_F(MESSAGES, EndALineThatTheHeaderLeftOpen)
{
  CODED message(24000);
  EXPECT_ERRORS(message.print_header(); message.report(); message.flush(), "error: \nerror: \n");
  EXPECT_EQ(DIAGNOSTIC::error_count_m, 2);
}

//---------------------------------------------------------------------- the end of the process

TEST_F(MESSAGES, OfFatalKindEndTheProcess)
{
  auto exits = testing::ExitedWithCode(1);
  auto aborts = testing::KilledBySignal(SIGABRT);
  EXPECT_EXIT(USER_MSG::fatal("gone"), exits, "^fatal error: gone\n$");
  EXPECT_EXIT(USER_MSG::fatal(&position, "gone"), exits, "^\"a.c\", line 3: fatal error: gone\n$");
  EXPECT_EXIT(CODED(6004).say("x"), exits, "^fatal error: cannot open file \"x\"\n$");
  EXPECT_EXIT(CODED(6000).say("x"), aborts, "^tool:7:internal fatal error #6000: pointer \"x\"");
  EXPECT_EXIT(USER_MSG::die("100% SHASH", "no %s", "keys"), aborts,
              "^user_msg_api:[0-9]+:internal fatal error #99926: \\(100% SHASH: no keys\\)\n$");
}

TEST_F(MESSAGES, ReachABufferedStreamAheadOfTheAbort)
{
  std::string name = testing::TempDir() + "tool_layer_fatal.txt", text;
  EXPECT_EXIT(DIAGNOSTIC::fp_m = fopen(name.c_str(), "w");
              USER_MSG::die("here", "gone"), testing::KilledBySignal(SIGABRT), "^$");
  std::ifstream file(name);
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
}

TEST_F(MESSAGES, NeitherEndNorCountInDebugMode)
{
  DIAGNOSTIC::push_debug_mode(true);
  DIAGNOSTIC::max_errors_m = 0;
  EXPECT_THAT(errors_of([] {
                USER_MSG::error("one");
                USER_MSG::fatal("two");
                USER_MSG::die("x", "three");
              }),
              testing::MatchesRegex("error: one\nfatal error: two\nuser_msg_api.*three.\n"));
  EXPECT_EQ(DIAGNOSTIC::error_count_m, 0);
  DIAGNOSTIC::pop_debug_mode();
  EXPECT_FALSE(DIAGNOSTIC::debug_mode_m);
  DIAGNOSTIC::debug_mode_m = true;
  DIAGNOSTIC::pop_debug_mode();
  EXPECT_FALSE(DIAGNOSTIC::debug_mode_m);
}

//---------------------------------------------------------------------- the source line

TEST_F(MESSAGES, ShowTheSourceLineOfAnExactPosition)
{
  DIAGNOSTIC::verbose_m = true;
  std::string name = testing::TempDir() + "tool_layer_source.c";
  std::ofstream(name) << "first\n\tsecond line\nlast";
  auto shown = [&](int line, int column, bool approx, char const *suffix = "") {
    DIAG_SRCINFO_DATA place(name + suffix, line, column, approx);
    std::string text = errors_of([&] { USER_MSG::warning(&place, 0, "x"); });
    return text.substr(text.find(": x\n") + 4);
  };
  EXPECT_EQ(shown(1, 1, false), "first\n^\n");
  EXPECT_EQ(shown(2, 4, false), "\tsecond line\n   ^\n");
  EXPECT_EQ(shown(1, 0, false), "first\n");
  EXPECT_EQ(shown(3, 4, false), "last\n   ^\n");
  EXPECT_EQ(shown(0, 1, false), "");
  EXPECT_EQ(shown(4, 1, false), "");
  EXPECT_EQ(shown(1, 1, true), "");
  EXPECT_EQ(shown(1, 1, false, ".none"), "");
  remove(name.c_str());
}

//---------------------------------------------------------------------- rows and severities

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

// Changes of severity last for the process; each test gives back what it took.
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
  static std::vector<int> of(std::vector<int> codes)
  {
    for (int &code : codes)
      code = DIAGNOSTIC::get_info(code)->severity;
    return codes;
  }
};

TEST_F(SEVERITIES, ChangeForDiscretionaryRowsOnly)
{
  DIAGNOSTIC::override_severity(24000, dc_WARNING);
  EXPECT_ERRORS(CODED(24000).say(), "warning: option is invalid\n");
  for (dc_SEVERITY never : {dc_NO_ERROR, dc_ADVICE, dc_DEBUG})
    DIAGNOSTIC::override_severity(24000, never);
  EXPECT_EQ(of({24000}), std::vector<int>{dc_WARNING});
  DIAGNOSTIC::override_severity(24000, dc_SUPPRESSED);
  EXPECT_ERRORS(CODED(24000).say(), "");
  std::vector<int> kept = {6000, 6004, 24029, 99920, 99923, 99924, 99927}, before = of(kept);
  for (int code : kept)
    DIAGNOSTIC::override_severity(code, dc_REMARK);
  EXPECT_EQ(of(kept), before);
  DIAG_INFO row = {5, "x", nullptr, dc_SEVERITY(8), false, false};
  CODED message(24000);
  message.info = &row;
  EXPECT_ERRORS(message.say(), "(unknown): x\n");
}

TEST_F(SEVERITIES, ChangeForAllRowsOfOneAndForAList)
{
  DIAGNOSTIC::override_severity(dc_WARNING, dc_ERROR);
  EXPECT_EQ(of({24003, 24032, 24004, 99922}), (std::vector<int>{6, 6, 4, 5}));
  DIAGNOSTIC::override_severity("#24003-D, 2x40 04,,7,99999999999999999999,24011", dc_FATAL);
  EXPECT_EQ(of({24003, 24004, 24011, 24010}), (std::vector<int>{7, 7, 7, 6}));
  DIAGNOSTIC::override_severity("24003", dc_WARNING); // once fatal, always fatal
  EXPECT_EQ(of({24003}), std::vector<int>{7});
}

//---------------------------------------------------------------------- copies

TEST_F(MESSAGES, AreCopiedWithTheirPosition)
{
  DIAG::gwarning message("tool", 1, strcpy(new char[5], "text"));
  DIAG::gwarning other("tool", 1, strcpy(new char[5], "else"));
  message.set_src(&position);
  other.set_src(message.src);
  DIAGNOSTIC *copy = message.alloc();
  EXPECT_NE(copy->src, message.src);
  EXPECT_TRUE(copy->is_equal(&message));
  message.set_src(nullptr);
  EXPECT_FALSE(copy->is_equal(&message));
  EXPECT_ERRORS(copy->report(), "\"a.c\", line 3: warning: text\n");
  EXPECT_FALSE(copy->is_equal(&other));
  other.free_mem();
  EXPECT_TRUE(copy->is_equal(&other));
  EXPECT_EQ(output_of([&] { copy->dump(); }), "Code : 99922\nstd_msg : %s\nvrb_msg : (null)\n"
                                              "File : a.c\nLine : 3\nColumn: 5\n(text)\n");
  copy->free_mem();
  delete copy;
}

} // namespace
