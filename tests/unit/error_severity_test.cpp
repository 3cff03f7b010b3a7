// error_severity_test.cpp - overrides, ranges and lines of diagnostics without a source.
#include <csetjmp>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include "driver/host_envir.h"
#include "errors/error.h"
#include "mem/mem_manage.h"
#include "memory_fixture.h"

namespace {

constexpr an_error_code code = ec_nested_comment;
std::jmp_buf end_of_run;

class Diagnostics : public testing::Test {
protected:
  void SetUp() override
  {
    open_regions();
    primary_source_file_name = nullptr;
    stream = open_memstream(&text, &length);
    f_error = stream;
    error_early_init();
    error_init();
    error_hooks.exit_compilation = [](an_error_severity severity) {
      longjmp(end_of_run, severity);
    };
  }
  void TearDown() override
  {
    fclose(stream);
    free(text);
    f_error = stderr;
    free_all_memory_regions();
  }
  std::string output()
  {
    fflush(stream);
    return std::string(text, length);
  }
  FILE *stream;
  char *text = nullptr;
  size_t length = 0;
};

a_source_position at(a_seq_number line)
{
  return {line, 1};
}

TEST_F(Diagnostics, APragmaSpeaksForWhatStandsBehindIt)
{
  a_source_position pragma = at(10);
  set_severity_for_error_number(ec_bad_token, es_none, &pragma, false);
  EXPECT_TRUE(is_effective_error(ec_bad_token, es_discretionary_error, at(9)));
  EXPECT_FALSE(is_effective_error(ec_bad_token, es_discretionary_error, at(10)));
  EXPECT_TRUE(is_effective_error(ec_bad_token, es_error, at(10))); // not discretionary
  a_source_position back = at(20);
  set_severity_for_error_number(ec_bad_token, es_default, &back, false);
  EXPECT_TRUE(is_effective_error(ec_bad_token, es_discretionary_error, at(30)));
}

TEST_F(Diagnostics, DefaultGoesBackToTheOptionsLevel)
{
  set_severity_for_error_tag("nested_comment", es_remark, nullptr, true);
  a_source_position pragma = at(5);
  set_severity_for_error_number(code, es_discretionary_error, &pragma, false);
  a_source_position back = at(8);
  set_severity_for_error_number(code, es_default, &back, false);
  EXPECT_FALSE(is_effective_error(code, es_discretionary_error, at(4)));
  EXPECT_TRUE(is_effective_error(code, es_warning, at(5)));
  EXPECT_FALSE(is_effective_error(code, es_discretionary_error, at(9)));
}

TEST_F(Diagnostics, UnknownMessagesAreReported)
{
  EXPECT_TRUE(set_severity_for_error_number(0, es_none, nullptr, true));
  EXPECT_TRUE(set_severity_for_error_number(2612, es_none, nullptr, true));
  EXPECT_TRUE(set_severity_for_error_tag("no_such_message", es_none, nullptr, true));
  EXPECT_FALSE(set_severity_for_error_tag("bad_token", es_default, nullptr, true));
  EXPECT_EQ(error_code_for_tag("UCN_names_basic_char"), ec_UCN_names_basic_char);
  EXPECT_EQ(error_code_for_tag("zero_length_string"), ec_zero_length_string);
}

TEST_F(Diagnostics, OnceMeansOnce)
{
  set_severity_for_error_number(ec_enum_not_allowed, es_once, nullptr, true);
  pos_warning(ec_enum_not_allowed, null_source_position);
  pos_warning(ec_enum_not_allowed, null_source_position);
  pos_error(ec_enum_not_allowed, null_source_position);
  EXPECT_EQ(output(),
            "Warning: enumerated type is not allowed\nError: enumerated type is not allowed\n");
}

TEST_F(Diagnostics, NumbersAndTheDiscretionaryMark)
{
  display_error_number = true;
  pos_warning(ec_extra_semicolon, null_source_position);
  pos_error(ec_extra_semicolon, null_source_position);
  pos_remark(ec_extra_semicolon, null_source_position);
  EXPECT_EQ(output(), "Warning #383-D: extra \";\" ignored\nError #383: extra \";\" ignored\n");
  EXPECT_EQ(total_remarks, 0u);
}

TEST_F(Diagnostics, WarningsAsErrorsCountAsErrors)
{
  warning_as_error_mode = true;
  pos_warning(ec_extra_semicolon, null_source_position);
  EXPECT_EQ(output(), "Error: extra \";\" ignored\n");
  EXPECT_EQ(total_errors, 1u);
  EXPECT_EQ(total_warnings, 0u);
}

TEST_F(Diagnostics, LinesWrapBeforeColumn80AndQuotedUnitsStayWhole)
{
  brief_diagnostics = false;
  pos_st2_error(ec_cannot_open_file, null_source_position, "a rather long description of the",
                "directory/with a blank/in the middle of a name.c");
  EXPECT_EQ(output(), "Error: cannot open a rather long description of the file\n"
                      "          \"directory/with a blank/in the middle of a name.c\"\n\n");
}

TEST_F(Diagnostics, AWordLongerThanALineIsBrokenHard)
{
  brief_diagnostics = false;
  std::string word(100, 'x');
  pos_st_error(ec_error_directive, null_source_position, word.c_str());
  EXPECT_EQ(output(), "Error: #error directive:\n          " + std::string(69, 'x') +
                          "\n          " + std::string(31, 'x') + "\n\n");
}

TEST_F(Diagnostics, PartsAreIndentedAndClosed)
{
  pos_st_start_error(ec_bad_il_file, null_source_position, "x");
  str_add_diag_info(ec_error_directive, "y");
  end_error();
  EXPECT_EQ(output(), "Error: invalid intermediate language file: \"x\"\n"
                      "            #error directive: y\n");
  EXPECT_EQ(total_errors, 1u);
}

TEST_F(Diagnostics, PartsOfASuppressedDiagnosticAreSuppressed)
{
  pos_st_start_remark(ec_bad_il_file, null_source_position, "x");
  str_add_diag_info(ec_error_directive, "y");
  end_error();
  EXPECT_EQ(output(), "");
}

TEST_F(Diagnostics, TheErrorLimitEndsTheRun)
{
  error_limit = 3;
  int severity = setjmp(end_of_run);
  if (severity == 0) {
    for (int i = 0; i < 5; i++)
      pos_error(ec_extra_semicolon, null_source_position);
  }
  EXPECT_EQ(severity, es_catastrophe);
  EXPECT_EQ(total_errors, 3u);
  std::string text = output();
  EXPECT_NE(text.find("Error limit reached.\n3 errors detected in this compilation.\n"),
            std::string::npos);
}

TEST_F(Diagnostics, ACommandLineErrorJoinsTextAndArgument)
{
  int severity = setjmp(end_of_run);
  if (severity == 0) str_command_line_error(ec_cl_invalid_number, "12x");
  EXPECT_EQ(severity, es_command_line_error);
  EXPECT_EQ(output(), "Command-line error: invalid number: 12x\n"
                      "1 catastrophic error detected in this compilation.\n");
}

} // namespace
