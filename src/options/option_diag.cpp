// option_diag.cpp - the message classes of the option framework.
// Owns:    option_position.
// Uses:    the message layer (DIAG/diag.h) and its rows from 6000 and 24000.
// Entry:   report_optgen (option_diag.h).
#include "options/option_diag.h"
#include <cstdarg>
#include <cstdio>

DIAG_SRCINFO *option_position = nullptr;

namespace DIAG {

optgen_message::optgen_message(int code, an_insert_form insert_form, std::source_location where)
    : DIAGNOSTIC(get_info(code), where.file_name(), where.line()), form(insert_form)
{
}

// The row says by its form which inserts its text wants, so the compiler can't check them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
static std::string formatted(char const *format, ...)
{
  va_list arguments, again;
  va_start(arguments, format);
  va_copy(again, arguments);
  std::string result(size_t(vsnprintf(nullptr, 0, format, arguments)), '\0');
  vsnprintf(result.data(), result.size() + 1, format, again);
  va_end(again);
  va_end(arguments);
  return result;
}
#pragma GCC diagnostic pop

std::string optgen_message::text() const
{
  char const *format = info->std_msg;
  switch (form) {
  case NUMBER: return formatted(format, numbers[0]);
  case RANGE:
    return formatted(format, strings[0].c_str(), strings[1].c_str(), numbers[0], numbers[1]);
  case STRINGS: break;
  }
  return formatted(format, strings[0].c_str(), strings[1].c_str(), strings[2].c_str(),
                   strings[3].c_str());
}

int optgen_message::report()
{
  int printed = print_header();
  printed += print("%s", text().c_str());
  return printed + flush();
}

char *optgen_message::get_sp_buffer()
{
  return sp_print("%s", text().c_str());
}

bool optgen_message::is_equal(DIAGNOSTIC *other)
{
  return DIAGNOSTIC::is_equal(other) &&
         text() == static_cast<optgen_message *>(other)->text(); // the row says its class
}

void optgen_message::dump()
{
  DIAGNOSTIC::dump();
  printf("(%s)\n", text().c_str());
}

#define OPTGEN(name, code, form)                                                                   \
  optgen_##name::optgen_##name(std::source_location where) : optgen_message(code, form, where)     \
  {                                                                                                \
  }                                                                                                \
  DIAGNOSTIC *optgen_##name::alloc()                                                               \
  {                                                                                                \
    return new optgen_##name(*this);                                                               \
  }
#include "options/optgen_messages.def"

} // namespace DIAG
