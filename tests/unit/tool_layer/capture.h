// capture.h - for tests of messages: default settings for each test, and what a call writes.
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include "tool_layer.h"

template <class ACTION> std::string errors_of(ACTION action)
{
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

template <class ACTION> std::string output_of(ACTION action)
{
  testing::internal::CaptureStdout();
  action();
  return testing::internal::GetCapturedStdout();
}

// The action writes this text to standard error.
#define EXPECT_ERRORS(action, text) EXPECT_EQ(errors_of([&] { action; }), text)

class MESSAGES : public testing::Test {
protected:
  void SetUp() override
  {
    DIAGNOSTIC::diag_cols_m = 79;
    DIAGNOSTIC::wrap_indent_m = 3;
    DIAGNOSTIC::wrap_enabled_m = DIAGNOSTIC::warnings_m = true;
    DIAGNOSTIC::wrap_headers_m = DIAGNOSTIC::debug_mode_m = DIAGNOSTIC::verbose_m = false;
    DIAGNOSTIC::remarks_m = DIAGNOSTIC::advice_m = DIAGNOSTIC::debug_m = false;
    DIAGNOSTIC::display_code_m = DIAGNOSTIC::display_ipos_m = false;
    DIAGNOSTIC::indent_m = DIAGNOSTIC::error_count_m = 0;
    DIAGNOSTIC::max_errors_m = 100;
    DIAGNOSTIC::fp_m = nullptr;
    USER_MSG::get_umsg_obj()->warnings_as_errors = false;
  }
};

// A coded message as a tool makes it.
class CODED : public DIAGNOSTIC {
public:
  explicit CODED(int code) : DIAGNOSTIC(get_info(code), "tool", 7) {}
  DIAGNOSTIC *alloc() override { return new CODED(*this); }
  template <class... ARGUMENTS> int say(ARGUMENTS... arguments)
  {
    int printed = print_header();
    printed += print(info->std_msg, arguments...);
    return printed + flush();
  }
};
