// error_output.cpp - the lines of a diagnostic, the counters, the end of the run.
// Owns:    the buffer in which a diagnostic's text accumulates, the state of the wrapper.
// Rule:    calls nest; what they write goes out in one piece when the outermost one ends.
#include "errors/error_private.h"
#include <cstring>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "lex/source_input.h"
#include "mem/check.h"

static constexpr size_t size_of_output_text = 1024;
static constexpr size_t added_line_indent = 12;
static constexpr size_t context_line_indent = 10;
static constexpr size_t continuation_indent = 10;

// What the words of a severity are and where it counts.
struct a_severity_description {
  an_error_code word; // lower-case; the capitalised word is the next row
  char listing_letter;
  unsigned long *counter;
};

static const a_severity_description severity_descriptions[num_error_severities] = {
    {ec_no_error, ' ', nullptr},
    {ec_no_error, ' ', nullptr},
    {ec_no_error, ' ', nullptr},
    {ec_w_remark, 'R', &total_remarks},
    {ec_w_remark, 'R', &total_remarks},
    {ec_w_warning, 'W', &total_warnings},
    {ec_w_error, 'E', &total_errors},
    {ec_w_error, 'E', &total_errors},
    {ec_w_fatal_error, 'F', &total_catastrophes},
    {ec_w_command_line_error, 'F', &total_catastrophes},
    {ec_w_internal_error, 'F', &total_catastrophes},
};

static a_text_buffer *output_text;
static int output_depth;

// ---- The wrapper ----

static struct {
  size_t column;      // characters on the current line
  size_t held_blanks; // trailing blanks that wait for more text
  size_t indent;      // of this part
  bool wraps;
} wrapper;

static void put_raw(const char *text, size_t length)
{
  add_to_text_buffer(output_text, text, length);
  wrapper.column += length;
}

static void put_str(const char *text)
{
  put_raw(text, strlen(text));
}

static void put_number(unsigned long number)
{
  char text[24];
  put_raw(text, size_t(snprintf(text, sizeof text, "%lu", number)));
}

static void put_blanks(size_t count)
{
  for (; count != 0; count--)
    put_raw(" ", 1);
}

static void put_newline()
{
  add_char_to_text_buffer(output_text, '\n');
  wrapper.column = 0;
  wrapper.held_blanks = 0;
}

static void break_line()
{
  put_newline();
  put_blanks(wrapper.indent + continuation_indent);
}

// The number of characters of `text` to put on this line, whose room is too small for all of it.
static size_t length_before_break(const char *text, size_t room)
{
  for (size_t i = room; i != 0; i--) {
    if (text[i - 1] != ' ') continue;
    i--;
    while (i != 0 && text[i - 1] == ' ')
      i--;
    return i;
  }
  if (room == 0 || wrapper.column > wrapper.indent + continuation_indent) return 0;
  // A multibyte character stays whole.
  size_t length = room;
  while (length > 1 && (text[length] & 0xC0) == 0x80)
    length--;
  return length;
}

static size_t room_on_line()
{
  size_t used = wrapper.column + wrapper.held_blanks;
  return used < MAX_ERROR_OUTPUT_LINE_LENGTH ? MAX_ERROR_OUTPUT_LINE_LENGTH - used : 0;
}

static void put_held_blanks()
{
  size_t count = wrapper.held_blanks;
  wrapper.held_blanks = 0;
  put_blanks(count);
}

// Puts a stretch of text; a unit stays on one line if a line can hold it.
static void put_wrapped(const char *text, size_t length, bool is_unit)
{
  size_t trailing = 0;
  while (length != 0 && text[length - 1] == ' ')
    length--, trailing++;
  while (length > room_on_line()) {
    bool fits_own_line =
        length + wrapper.indent <= MAX_ERROR_OUTPUT_LINE_LENGTH - continuation_indent;
    bool at_line_start = wrapper.column <= wrapper.indent + continuation_indent;
    size_t part = 0;
    if (!(is_unit && fits_own_line && !at_line_start)) {
      part = length_before_break(text, room_on_line());
    }
    if (part != 0) {
      put_held_blanks();
      put_raw(text, part);
      text += part;
      length -= part;
    }
    while (length != 0 && *text == ' ')
      text++, length--;
    break_line();
  }
  if (length != 0) {
    put_held_blanks();
    put_raw(text, length);
  }
  wrapper.held_blanks += trailing;
}

static void put_piece(const a_message_piece *piece)
{
  const char *text = text_of_piece(piece);
  size_t length = length_of_piece(piece);
  if (!wrapper.wraps) {
    put_raw(text, length);
  } else if (piece->quote_end > piece->quote_start) {
    put_wrapped(text, piece->quote_start, false);
    put_wrapped(text + piece->quote_start, piece->quote_end - piece->quote_start, true);
    put_wrapped(text + piece->quote_end, length - piece->quote_end, false);
  } else if (length != 0) {
    put_wrapped(text, length, false);
  }
}

static void put_pieces(const a_message_piece *pieces)
{
  for (const a_message_piece *piece = pieces; piece->kind != piece_end; piece = piece->next) {
    put_piece(piece);
  }
}

// ---- The header ----

struct a_place {
  const char *file_name;
  a_line_number line;
  bool at_end_of_file;
};

static a_place place_of(a_source_position pos)
{
  a_place place = {"", 0, false};
  const char *full_name;
  if (!is_null_position(pos)) {
    conv_seq_to_file_and_line(pos.seq, &place.file_name, &full_name, &place.line,
                              &place.at_end_of_file);
  }
  return place;
}

static void put_quoted_file_name(const char *name)
{
  put_raw("\"", 1);
  size_t before = output_text->size;
  write_file_name_to_text_buffer(name, output_text, false);
  remove_null_terminator_from_text_buffer(output_text);
  wrapper.column += output_text->size - before;
  put_raw("\"", 1);
}

static void put_place(const a_place &place, a_source_position pos, bool has_source_line)
{
  if (place.at_end_of_file) {
    put_str(error_text(ec_w_cap_at_end_of_source));
  } else {
    if (strcmp(place.file_name, "-") == 0) {
      put_str(error_text(ec_w_cap_line));
      put_raw(" ", 1);
      put_number(place.line);
    } else {
      put_quoted_file_name(place.file_name);
      if (place.line != 0) {
        put_raw(", ", 2);
        put_str(error_text(ec_w_line));
        put_raw(" ", 1);
        put_number(place.line);
      }
    }
    if (!has_source_line && pos.column != 0) {
      put_raw(" (", 2);
      put_str(error_text(ec_w_column));
      put_raw(" ", 1);
      put_number(pos.column);
      put_raw(")", 1);
    }
  }
  put_raw(": ", 2);
}

static void put_severity(const a_diagnostic &diagnostic, bool capitalised)
{
  int word = severity_descriptions[diagnostic.severity].word + capitalised;
  put_str(error_text(an_error_code(word)));
  if (display_error_number && diagnostic.code != ec_no_error) {
    put_raw(" #", 2);
    put_number(diagnostic.code);
    if (diagnostic.severity < es_error) put_str(error_text(ec_w_discretionary_mark));
  }
  put_raw(": ", 2);
}

// ---- The raw listing ----

static void write_listing_record(const a_diagnostic &diagnostic, const a_place &place,
                                 const a_message_piece *pieces)
{
  bool is_first = diagnostic.part == dp_complete || diagnostic.part == dp_start;
  char letter = severity_descriptions[diagnostic.severity].listing_letter;
  if (!is_first) letter = char(letter - 'A' + 'a');
  bool has_position = !is_null_position(diagnostic.pos);
  fprintf(f_raw_listing, "%c \"", letter);
  if (has_position) write_file_name(place.file_name, f_raw_listing, true);
  fprintf(f_raw_listing, "\" %lu %u ", has_position ? place.line : 0,
          has_position ? diagnostic.pos.column : 0u);
  if (diagnostic.severity == es_internal_error) fputs("(internal error) ", f_raw_listing);
  for (const a_message_piece *piece = pieces; piece->kind != piece_end; piece = piece->next) {
    fwrite(text_of_piece(piece), 1, length_of_piece(piece), f_raw_listing);
  }
  putc('\n', f_raw_listing);
}

// ---- The source line and the caret ----

static size_t length_of_char(const char *text, size_t rest)
{
  if (!multibyte_chars_in_source_enabled || (text[0] & 0x80) == 0) return 1;
  size_t length = f_mbc_length(text);
  return length <= rest ? length : rest;
}

static void put_source_line(const char *text, size_t length, a_column_number column)
{
  put_blanks(2);
  put_raw(text, length);
  put_newline();
  if (column == 0) return;
  put_blanks(2);
  size_t i = 0;
  for (unsigned c = 1; c < column; c++) {
    bool is_tab = i < length && text[i] == '\t';
    put_raw(is_tab ? "\t" : " ", 1);
    if (i < length) i += length_of_char(text + i, length - i);
  }
  put_raw("^", 1);
  put_newline();
}

// ---- The end of a diagnostic, and of the run ----

static bool closes_diagnostic(a_diagnostic_part part, bool in_context_lines)
{
  if (part == dp_complete || part == dp_end) return !in_context_lines;
  return part == dp_context_end;
}

void write_signoff()
{
  if (asm_header_mode || total_errors + total_catastrophes == 0) return;
  if (total_errors != 0) {
    fprintf(f_error, "%lu %s", total_errors,
            error_text(total_errors == 1 ? ec_w_count_error : ec_w_count_errors));
  }
  if (total_errors != 0 && total_catastrophes != 0) {
    fprintf(f_error, " %s ", error_text(ec_w_and));
  }
  if (total_catastrophes != 0) {
    fprintf(
        f_error, "%lu %s", total_catastrophes,
        error_text(total_catastrophes == 1 ? ec_w_catastrophic_error : ec_w_catastrophic_errors));
  }
  putc(' ', f_error);
  const char *name = primary_source_file_name;
  if (name == nullptr || *name == '\0' || strcmp(name, "-") == 0) {
    fputs(error_text(ec_w_detected_in_this_compilation), f_error);
  } else {
    a_text_buffer *text = alloc_text_buffer(256);
    write_file_name_to_text_buffer(name, text, false);
    remove_null_terminator_from_text_buffer(text);
    add_char_to_text_buffer(text, '\0');
    const char *format = error_text(ec_w_detected_in_compilation_of);
    const char *insert = strstr(format, "%s");
    fprintf(f_error, "%.*s%s%s", int(insert - format), format, text->buffer, insert + 2);
  }
  putc('\n', f_error);
}

void term_compilation(an_error_severity severity)
{
  write_signoff();
  check(error_hooks.exit_compilation != nullptr);
  error_hooks.exit_compilation(severity);
  __builtin_unreachable();
}

static void report_error_limit()
{
  fprintf(f_error, "%s\n", error_text(ec_w_error_limit_reached));
  if (f_raw_listing != nullptr) fputs("C \"\" 0 0 error limit reached\n", f_raw_listing);
  finish_raw_listing_file();
  term_compilation(es_catastrophe);
}

void end_diagnostic(const a_diagnostic &diagnostic, bool in_context_lines)
{
  if (output_depth != 0 || !closes_diagnostic(diagnostic.part, in_context_lines)) return;
  an_error_severity severity = diagnostic.severity;
  bool any_errors = total_errors + total_catastrophes != 0;
  if (any_errors && error_hooks.cancel_il_file != nullptr) error_hooks.cancel_il_file();
  if (severity >= es_catastrophe) {
    finish_raw_listing_file();
    term_compilation(severity);
  }
  if (any_errors && total_errors + total_catastrophes >= (unsigned long)error_limit) {
    report_error_limit();
  }
}

// ---- Output ----

static void count_diagnostic(an_error_severity severity)
{
  unsigned long *counter = severity_descriptions[severity].counter;
  if (counter != nullptr) ++*counter;
}

static size_t indent_of_part(a_diagnostic_part part)
{
  if (part == dp_added_line) return added_line_indent;
  if (part == dp_context_line) return context_line_indent;
  return 0;
}

static void put_text_line(const a_diagnostic &diagnostic, const a_place &place,
                          const a_message_piece *pieces)
{
  bool is_first = diagnostic.part == dp_complete || diagnostic.part == dp_start;
  put_blanks(wrapper.indent);
  if (is_first) {
    bool has_position = !is_null_position(diagnostic.pos);
    if (has_position) {
      const char *text;
      size_t length;
      bool has_source_line =
          source_line_of_position(diagnostic.pos, brief_diagnostics, &text, &length);
      put_place(place, diagnostic.pos, has_source_line);
    }
    put_severity(diagnostic, !has_position);
    count_diagnostic(diagnostic.severity);
  }
  put_pieces(pieces);
  put_newline();
  if (f_raw_listing != nullptr) write_listing_record(diagnostic, place, pieces);
}

// Errors are seen at once; a checker's thousands of warnings go to a file or pipe in larger pieces.
static void flush_output(an_error_severity severity)
{
  fwrite(output_text->buffer, 1, output_text->size, f_error);
  if (severity >= es_discretionary_error || error_output_is_interactive) fflush(f_error);
  reset_text_buffer(output_text);
}

void output_diagnostic(const a_diagnostic &given, const a_message_piece *pieces,
                       bool in_context_lines)
{
  a_diagnostic diagnostic = given;
  auto outer_wrapper = wrapper;
  output_depth++;
  if (warning_as_error_mode && diagnostic.severity == es_warning) diagnostic.severity = es_error;
  wrapper = {0, 0, indent_of_part(diagnostic.part), !brief_diagnostics && !do_not_wrap_diagnostics};

  a_diagnostic_part part = diagnostic.part;
  if (part != dp_end && part != dp_context_end) {
    put_text_line(diagnostic, place_of(diagnostic.pos), pieces);
  }
  bool closes_main_text = part == dp_complete || part == dp_end;
  if (!brief_diagnostics) {
    const char *text;
    size_t length;
    if (closes_main_text && !is_null_position(diagnostic.pos) &&
        source_line_of_position(diagnostic.pos, false, &text, &length)) {
      put_source_line(text, length, diagnostic.pos.column);
    }
    if (closes_diagnostic(part, in_context_lines)) put_newline();
  }
  wrapper = outer_wrapper;
  if (--output_depth != 0) return;
  flush_output(diagnostic.severity);
}

void output_init()
{
  if (output_text == nullptr) output_text = alloc_text_buffer(size_of_output_text);
}
