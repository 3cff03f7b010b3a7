// diag_text.cpp - the message classes: the error limit, and one class for each kind of free text.
#include "DIAG/diag.h"
#include <algorithm>
#include <cstring>
#include <iterator>

namespace DIAG {

max_errors::max_errors(char const *tool_file, unsigned tool_line, unsigned long error_limit)
    : DIAGNOSTIC(get_info(99900), tool_file, tool_line), limit(error_limit)
{
}

DIAGNOSTIC *max_errors::alloc()
{
  return new max_errors(*this);
}

int max_errors::report()
{
  return flush();
}

text_message::text_message(DIAG_INFO *row, char const *tool_file, unsigned tool_line, char *text)
    : DIAGNOSTIC(row, tool_file, tool_line), msg(text)
{
}

// Texts for the tool's own people stand in parentheses.
static int const codes_in_parentheses[] = {
#define TEXT_MESSAGE(name, code, parenthesized) parenthesized ? code : 0,
#include "DIAG/diag_text_messages.def"
};

bool text_message::in_parentheses() const
{
  return std::find(std::begin(codes_in_parentheses), std::end(codes_in_parentheses), info->code) !=
         std::end(codes_in_parentheses);
}

int text_message::report()
{
  int printed = print_header();
  printed += in_parentheses() ? print("(%s)", msg) : print(info->std_msg, msg);
  return printed + flush();
}

char *text_message::get_sp_buffer()
{
  return sp_print(info->std_msg, msg);
}

bool text_message::is_equal(DIAGNOSTIC *other)
{
  if (!DIAGNOSTIC::is_equal(other)) return false;
  char const *other_msg = static_cast<text_message *>(other)->msg; // the row says its class
  return !msg || !other_msg || strcmp(msg, other_msg) == 0;
}

void text_message::free_mem()
{
  delete[] msg;
  msg = nullptr;
}

void text_message::dump()
{
  DIAGNOSTIC::dump();
  printf("(%s)\n", msg ? msg : "");
}

#define TEXT_MESSAGE(name, code, parenthesized)                                                    \
  name::name(char const *tool_file, unsigned tool_line, char *text)                                \
      : text_message(get_info(code), tool_file, tool_line, text)                                   \
  {                                                                                                \
  }                                                                                                \
  DIAGNOSTIC *name::alloc()                                                                        \
  {                                                                                                \
    return new name(*this);                                                                        \
  }
#include "DIAG/diag_text_messages.def"

} // namespace DIAG
