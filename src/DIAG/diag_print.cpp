// diag_print.cpp - the text of messages: formatting, and wrapping at word boundaries.
// Owns:    the format buffer, the buffer of sp_print.
// Rule:    all text goes through print_formatted, which alone knows where lines end; `remaining` is
//          the room that is left on the current line.
#include <algorithm>
#include <cassert>
#include <cctype>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include "DIAG/diag.h"
#include "DIAG/out_of_memory.h"

static char *format_buffer; // of print; grows and is kept
static size_t format_capacity;
static char *sp_buffer; // the last result of sp_print

//---------------------------------------------------------------------- wrapping

static bool is_white(char c)
{
  return isspace((unsigned char)c) != 0;
}

char const *DIAGNOSTIC::last_printable_char(char const *text, int width)
{
  size_t length = strlen(text);
  if (length == 0) return text;
  if (!wrap_enabled_m || width < 0 || length <= size_t(width)) return text + length - 1;
  if (width == 0) return text;
  char const *p = text + width - 1;
  if (p[1] == ' ') return p; // the text is longer than the width, so there is a p[1]
  while (p > text && !is_white(*p))
    p--;
  while (p > text && is_white(*p))
    p--;
  return p;
}

namespace {

// Where wrapped text goes, a stream or a string, and the room on its current line.
class LINE_WRITER {
public:
  std::string buffer; // the text if there is no stream

  LINE_WRITER(FILE *stream, int *room, int line_width, int line_indent)
      : fp(stream), remaining(room), width(line_width), indent(std::max(line_indent, 0))
  {
  }
  void write(char const *text, size_t length)
  {
    put(text, length);
    *remaining -= int(length);
  }
  void break_line()
  {
    std::string start = "\n" + std::string(size_t(indent), ' ');
    put(start.data(), start.size());
    *remaining = width;
  }
  char const *end_of_piece(char const *text);

private:
  FILE *fp; // null: the buffer
  int *remaining;
  int width;
  int indent;

  void put(char const *text, size_t length)
  {
    if (fp) {
      fwrite(text, 1, length, fp);
    } else {
      buffer.append(text, length);
    }
  }
};

// The last character of text that is to stand on the current line, or on a new one that is begun
// here if nothing fits behind what is there.  A word that is too long for any line is cut.
char const *LINE_WRITER::end_of_piece(char const *text)
{
  char const *end = DIAGNOSTIC::last_printable_char(text, *remaining);
  if (end != text || !DIAGNOSTIC::wrap_enabled_m) return end;
  end = DIAGNOSTIC::last_printable_char(text, width);
  if (end != text) {
    break_line();
    return end;
  }
  if (*remaining < 1) break_line();
  return text + std::min(strlen(text), size_t(*remaining)) - 1;
}

} // namespace

char *DIAGNOSTIC::print_formatted(char const *text, bool to_buffer, int *remaining, int diag_cols,
                                  int indent, int wrap_indent)
{
  assert(diag_cols > (indent + wrap_indent));
  LINE_WRITER writer(to_buffer ? nullptr : fp(), remaining, diag_cols - indent - wrap_indent,
                     indent + wrap_indent);
  for (char const *p = text; *p;) {
    char const *end = writer.end_of_piece(p);
    void const *newline = memchr(p, '\n', size_t(end - p));
    char const *behind = newline ? static_cast<char const *>(newline) : end + 1;
    writer.write(p, size_t(behind - p));
    p = newline ? behind + 1 : behind;
    if (!*p) break; // a text's own blanks at its end stay, those around a break don't
    while (is_white(*p))
      p++;
    if (*p) writer.break_line();
  }
  if (!to_buffer) return nullptr;
  char *result = new char[writer.buffer.size() + 1];
  return strcpy(result, writer.buffer.c_str());
}

void DIAGNOSTIC::start_new_line()
{
  LINE_WRITER(fp(), &cols_left, diag_cols_m - indent_m - wrap_indent_m, indent_m + wrap_indent_m)
      .break_line();
}

//---------------------------------------------------------------------- formatting

// Formats into the format buffer; returns the length.
static int format_text(char const *format, va_list arguments)
{
  va_list again;
  va_copy(again, arguments);
  int length = vsnprintf(format_buffer, format_capacity, format, arguments);
  if (length >= 0 && size_t(length) >= format_capacity) {
    format_capacity = std::max(size_t(length) + 1, 2 * format_capacity);
    format_buffer = static_cast<char *>(realloc(format_buffer, format_capacity));
    if (!format_buffer) tool_out_of_memory();
    vsnprintf(format_buffer, format_capacity, format, again);
  }
  va_end(again);
  return length;
}

int DIAGNOSTIC::print(char const *format, ...)
{
  if (suppress()) return 0;
  va_list arguments;
  va_start(arguments, format);
  int length = format_text(format, arguments);
  va_end(arguments);
  if (length < 0) return 0; // an argument that the locale can't express
  if (wrap_enabled_m && cols_left < 1) start_new_line();
  print_formatted(format_buffer, false, &cols_left, diag_cols_m, indent_m, wrap_indent_m);
  return length;
}

char *DIAGNOSTIC::sp_print(char const *format, ...)
{
  char *text;
  va_list arguments;
  va_start(arguments, format);
  int length = vasprintf(&text, format, arguments);
  va_end(arguments);
  if (length < 0) tool_out_of_memory();
  int room = 66; // the caller's line has begun
  delete[] sp_buffer;
  sp_buffer = print_formatted(text, true, &room, 79, 0, 10);
  free(text);
  return sp_buffer;
}
