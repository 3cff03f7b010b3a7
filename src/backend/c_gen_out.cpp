// c_gen_out.cpp - the output of the C writer: text with line width, positions, comments,
// protection.
// Owns:  the current stream and its column and line; the indent.
// Rule:  text is gathered in one buffer a stream, which is written in large pieces; nothing but
//        this file knows how a line is broken.
// Entry: put_text, write_position, open_protection.
#include <cerrno>
#include <cctype>
#include "backend/c_gen_private.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"

static constexpr unsigned max_column = 79; // of a plain piece
static constexpr size_t output_buffer_size = 1 << 20;
static constexpr unsigned long max_blank_lines = 5; // a gap up to this is bridged by newlines

an_output_stream *out;
unsigned comment_depth;
unsigned no_wrap_depth;
unsigned indent;
const a_source_file *primary_file;
unsigned long primary_line;

// The segment of source lines that the last position lay in.
static struct {
  a_source_file *file;
  a_seq_number seq;
  a_line_number line;
} last_place;

// --- Streams -------------------------------------------------------------------------------------

void open_output_stream(an_output_stream *stream, FILE *file)
{
  char *text = stream->text;
  memset(stream, 0, sizeof *stream);
  stream->file = file;
  stream->allocated = output_buffer_size;
  stream->text = text != nullptr ? text : alloc_resizable_buffer(output_buffer_size);
}

void flush_output_stream(an_output_stream *stream)
{
  if (stream->used == 0) return;
  if (fwrite(stream->text, 1, stream->used, stream->file) != stream->used)
    file_write_error(ec_file_kind_generated_c, errno);
  stream->used = 0;
}

static void make_room(size_t length)
{
  flush_output_stream(out);
  if (out->used + length <= out->allocated) return;
  size_t size = 2 * out->allocated + length;
  out->text = realloc_buffer(out->text, out->allocated, size);
  out->allocated = size;
}

static inline void append(const char *text, size_t length)
{
  if (__builtin_expect(out->used + length > out->allocated, 0)) make_room(length);
  memcpy(out->text + out->used, text, length);
  out->used += length;
  out->column += unsigned(length);
}

static inline void append_newline()
{
  append("\n", 1);
  out->column = 0;
  if (out->line_known) out->line++;
}

// --- Lines ---------------------------------------------------------------------------------------

void end_line()
{
  if (out->column != 0) append_newline();
}

static void append_number(unsigned long number)
{
  const char *text = conv_unsigned_long_to_str(number);
  append(text, strlen(text));
}

static void append_quoted_file_name(const a_source_file *file)
{
  static a_text_buffer *file_name_text;
  if (file_name_text == nullptr) file_name_text = alloc_text_buffer(200);
  reset_text_buffer(file_name_text);
  write_file_name_to_text_buffer(file->file_name, file_name_text, !gen_old_style_line_dirs);
  append(" \"", 2);
  append(file_name_text->buffer, file_name_text->size);
  append("\"", 1);
}

void write_line_directive(const a_source_file *file, unsigned long line)
{
  end_line();
  const a_source_file *previous = out->source_file;
  out->source_file = file;
  out->line = line;
  out->line_known = true;
  if (enhance_ccode) return;
  append("# ", 2);
  append_number(line);
  if (file != previous && file != nullptr) {
    append_quoted_file_name(file);
    if (file->is_system_header) append(" 3", 2);
  }
  append("\n", 1);
  out->column = 0;
}

// Goes to a new line that counts as the same line of the source.
static void break_line()
{
  const a_source_file *file = out->line_known ? out->source_file : primary_file;
  unsigned long line = out->line_known ? out->line : primary_line;
  if (comment_depth != 0) append("*/", 2);
  if (enhance_ccode) {
    append("\n", 1);
    out->column = 0;
    out->source_file = file;
    out->line = line;
    out->line_known = true;
  } else {
    write_line_directive(file, line);
  }
  if (comment_depth != 0) append("/* ", 3);
}

void put_text(const char *text, size_t length)
{
  if (out->column + length > max_column && no_wrap_depth == 0 && out->column != 0) break_line();
  append(text, length);
}

void put_str(const char *text)
{
  put_text(text, strlen(text));
}

void put_char(char c)
{
  if (out->column > max_column - 1 && no_wrap_depth == 0) break_line();
  append(&c, 1);
}

void put_no_wrap(const char *text)
{
  append(text, strlen(text));
}

// Digits of a number at the end of a text of 24 bytes; returns their start.
static char *digits_of(char *text, unsigned long long number)
{
  char *at = text + 24;
  do {
    *--at = char('0' + number % 10);
    number /= 10;
  } while (number != 0);
  return at;
}

void put_unsigned(unsigned long long number)
{
  char text[24];
  char *start = digits_of(text, number);
  put_text(start, size_t(text + sizeof text - start));
}

void put_signed(long long number)
{
  if (number < 0) put_char('-');
  put_unsigned(number < 0 ? 0 - static_cast<unsigned long long>(number)
                          : static_cast<unsigned long long>(number));
}

void put_blank_after_word()
{
  if (out->used == 0 || out->column == 0) return;
  char last = out->text[out->used - 1];
  if (isalnum(static_cast<unsigned char>(last)) || last == '_' || last == ')') put_char(' ');
}

void open_comment()
{
  if (comment_depth == 0) put_text("/* ", 3);
  comment_depth++;
}

void close_comment()
{
  if (--comment_depth == 0) append("*/", 2);
}

// --- Positions -----------------------------------------------------------------------------------

static void append_indent()
{
  static const char blanks[] = "                                                                ";
  unsigned count = indent < sizeof blanks - 1 ? indent : unsigned(sizeof blanks - 1);
  if (out->column == 0) append(blanks, count);
}

// The file and line of a position; most positions lie on the line of the one before or close
// behind.
static a_source_file *place_of(a_source_position position, a_line_number *line)
{
  if (last_place.file == nullptr || position.seq != last_place.seq) {
    bool at_end;
    last_place.file = source_file_for_seq(position.seq, &last_place.line, &at_end, false);
    last_place.seq = position.seq;
  }
  *line = last_place.line == 0 ? 1 : last_place.line;
  return last_place.file;
}

// Brings the text to the line by newlines; false: only a directive can.
static bool advance_to_line(const a_source_file *file, unsigned long line)
{
  if (!out->line_known || out->source_file != file || line < out->line ||
      line - out->line > max_blank_lines)
    return false;
  while (out->line < line)
    append_newline();
  return true;
}

void write_position(a_source_position position)
{
  error_position = position;
  if (position.seq == 0) {
    if (!out->line_known)
      write_line_directive(primary_file, primary_line);
    else if (out->column != 0)
      put_char(' ');
    return;
  }
  a_line_number line;
  const a_source_file *file = place_of(position, &line);
  if (out->line_known && out->source_file == file && out->line == line) {
    if (out->column > 0) put_char(' ');
  } else {
    end_line();
    if (!advance_to_line(file, line)) write_line_directive(file, line);
  }
  primary_file = file;
  primary_line = line;
  append_indent();
}

void forget_position()
{
  out->line_known = false;
  error_position = null_source_position;
}

void write_directive_line(const char *text)
{
  end_line();
  append(text, strlen(text));
  append_newline();
}

// --- Protection ----------------------------------------------------------------------------------

bool is_needed(const a_source_correspondence *corresp)
{
  if (needed_flag_bit_number != 0)
    return instantiation_needed_flag_is_set(corresp, needed_flag_bit_number);
  return corresp->needed;
}

bool open_protection(const a_source_correspondence *corresp)
{
  if (is_needed(corresp)) return false;
  write_directive_line("#if 0");
  forget_position();
  return true;
}

void close_protection(bool was_opened)
{
  if (!was_opened) return;
  write_directive_line("#endif");
  forget_position();
}
