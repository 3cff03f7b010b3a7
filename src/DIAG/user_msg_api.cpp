// user_msg_api.cpp - USER_MSG: messages with a free text, reported in one call.
// Rule:    the message object lives for the call; its text goes with it.
#include "DIAG/user_msg_api.h"
#include <cstring>
#include <string>
#include "DIAG/diag.h"

static char const this_file[] =
    "user_msg_api"; // the tool's source position has no folder and suffix

USER_MSG *USER_MSG::get_umsg_obj()
{
  static USER_MSG the_object;
  return &the_object;
}

void USER_MSG::emit_warnings_as_errors()
{
  get_umsg_obj()->warnings_as_errors = true;
}

int USER_MSG::get_error_count()
{
  return DIAGNOSTIC::error_count_m;
}

char *USER_MSG::make_msg_str(char const *format, va_list arguments)
{
  if (!format) format = "";
  va_list again;
  va_copy(again, arguments);
  int length = vsnprintf(nullptr, 0, format, again);
  va_end(again);
  char *text = new char[length < 0 ? 1 : size_t(length) + 1];
  text[0] = '\0';
  if (length > 0) vsnprintf(text, size_t(length) + 1, format, arguments);
  return text;
}

// Reports `text`, which it takes over, as a message of class MESSAGE.
template <class MESSAGE> static void report_text(DIAG_SRCINFO *src, unsigned line, char *text)
{
  MESSAGE message(this_file, line, text);
  message.set_src(src);
  message.report();
  message.free_mem();
}

// For an operation whose last parameter is `format`: reports what it was given in `DIAG::kind`.
#define REPORT(kind, src)                                                                          \
  va_list arguments;                                                                               \
  va_start(arguments, format);                                                                     \
  report_text<DIAG::kind>(src, __LINE__, make_msg_str(format, arguments));                         \
  va_end(arguments)

void USER_MSG::debug(char const *format, ...)
{
  REPORT(gdebug, nullptr);
}

void USER_MSG::remark(char const *format, ...)
{
  REPORT(gremark, nullptr);
}

void USER_MSG::advice(char const *format, ...)
{
  REPORT(gadvice, nullptr);
}

void USER_MSG::advice(DIAG_SRCINFO *src, char const *format, ...)
{
  REPORT(gadvice, src);
}

static void report_warning(DIAG_SRCINFO *src, unsigned line, char *text)
{
  if (USER_MSG::get_umsg_obj()->warnings_as_errors) {
    report_text<DIAG::gerror>(src, line, text);
  } else {
    report_text<DIAG::gwarning>(src, line, text);
  }
}

void USER_MSG::warning(unsigned, char const *format, ...)
{
  va_list arguments;
  va_start(arguments, format);
  report_warning(nullptr, __LINE__, make_msg_str(format, arguments));
  va_end(arguments);
}

void USER_MSG::warning(DIAG_SRCINFO *src, unsigned, char const *format, ...)
{
  va_list arguments;
  va_start(arguments, format);
  report_warning(src, __LINE__, make_msg_str(format, arguments));
  va_end(arguments);
}

void USER_MSG::error(char const *format, ...)
{
  REPORT(gerror, nullptr);
}

void USER_MSG::error(DIAG_SRCINFO *src, char const *format, ...)
{
  REPORT(gerror, src);
}

void USER_MSG::apperror(char const *format, ...)
{
  REPORT(gapperror, nullptr);
}

void USER_MSG::fatal(char const *format, ...)
{
  REPORT(gfatal, nullptr);
}

void USER_MSG::fatal(DIAG_SRCINFO *src, char const *format, ...)
{
  REPORT(gfatal, src);
}

void USER_MSG::die(char const *where, char const *format, ...)
{
  va_list arguments;
  va_start(arguments, format);
  char *what = make_msg_str(format, arguments);
  va_end(arguments);
  std::string text = std::string(where ? where : "") + ": " + what;
  delete[] what;
  report_text<DIAG::gdie>(nullptr, __LINE__, strcpy(new char[text.size() + 1], text.c_str()));
}
