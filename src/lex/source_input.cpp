// source_input.cpp - reading logical lines into the line buffer.
// Owns:    curr_source_line and its companions, the original line modifications.
// Uses:    the input stack (source_input_files.cpp), modifications (source_input_modifs.cpp).
// Rule:    a physical line is copied once, sixteen characters at a time; only line ends, null
//          characters and pairs of "?" leave that loop.
// Entry:   read_logical_source_line.
// See:     C99 5.1.1.2, translation phases 1 and 2.
#include "lex/source_input.h"
#include <unistd.h>
#include <cerrno>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/preproc.h"
#include "lex/source_input_internal.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"

char *curr_source_line;
char *after_end_of_curr_source_line;
char *curr_char_loc;
char *end_of_curr_source_line;
char **logical_char_info;
unsigned logical_char_info_entries_used;
bool at_end_of_source_file;
bool no_more_input;
bool comment_spanned_lines;
bool trigraph_ignored_warning_given;
bool fixed_position_in_use;
a_source_position fixed_position;
a_source_position pos_of_macro_invocation;
unsigned long end_of_line_escape_offset;
a_seq_number seq_number_last_read;
a_seq_number curr_seq_number;
an_orig_line_modif *orig_line_modif_list;
an_orig_line_modif *end_orig_line_modif_list;

static constexpr unsigned long initial_line_length = 3000;
static constexpr unsigned long slack =
    32; // behind the usable part: the copy loop stores whole chunks

static an_orig_line_modif *avail_orig_line_modifs;
static unsigned long logical_char_info_capacity;
static char *start_of_physical_line; // in the line buffer; follows the buffer when it moves

// Offsets from curr_source_line of what is reported once the line is complete; -1 for none.
static long first_invalid_null;
static long first_ignored_trigraph;
static bool trigraph_replaced;
// Positions of backslashes before blanks; null for none.
static a_source_position first_white_space_splice;
static a_source_position first_failed_splice;

//---------------------------------------------------------------------------------------------
// The buffer.

static void grow_curr_source_line(unsigned long needed)
{
  unsigned long old_size = after_end_of_curr_source_line - curr_source_line;
  unsigned long size = old_size;
  while (size < needed)
    size *= 2;
  char *old_start = curr_source_line;
  char *new_start = realloc_buffer(old_start, old_size + slack, size + slack);
  unsigned long used = logical_char_info_entries_used;
  curr_source_line = new_start;
  after_end_of_curr_source_line = new_start + size;
  start_of_physical_line += new_start - old_start;
  end_of_curr_source_line += new_start - old_start;
  logical_char_info_entries_used = (unsigned)used;
  adjust_curr_source_line_structure_after_realloc(old_start, old_start + old_size, new_start, true);
}

void ensure_min_curr_source_line_length(unsigned long length)
{
  if ((unsigned long)(after_end_of_curr_source_line - curr_source_line) < length) {
    grow_curr_source_line(length);
  }
}

void add_logical_char_info(char *loc)
{
  unsigned used = logical_char_info_entries_used;
  if (used > 0 && logical_char_info[used - 1] >= loc) return; // this stretch was scanned before
  if (used == logical_char_info_capacity) {
    unsigned long old_size = logical_char_info_capacity * sizeof(char *);
    logical_char_info_capacity *= 2;
    logical_char_info = (char **)realloc_buffer((char *)logical_char_info, old_size, old_size * 2);
  }
  logical_char_info[used] = loc;
  ++logical_char_info_entries_used;
}

an_orig_line_modif *add_orig_line_modif(char *location, an_orig_line_modif_kind kind)
{
  an_orig_line_modif *modif = avail_orig_line_modifs;
  if (modif != nullptr) {
    avail_orig_line_modifs = modif->next;
  } else {
    modif = (an_orig_line_modif *)alloc_in_region(0, sizeof(an_orig_line_modif));
  }
  modif->next = nullptr;
  modif->location = location;
  modif->kind = kind;
  modif->variant.seq = 0;
  if (orig_line_modif_list == nullptr) {
    orig_line_modif_list = modif;
  } else {
    end_orig_line_modif_list->next = modif;
  }
  end_orig_line_modif_list = modif;
  no_modifs_in_curr_line = false;
  return modif;
}

static void free_orig_line_modifs()
{
  if (orig_line_modif_list == nullptr) return;
  end_orig_line_modif_list->next = avail_orig_line_modifs;
  avail_orig_line_modifs = orig_line_modif_list;
  orig_line_modif_list = nullptr;
  end_orig_line_modif_list = nullptr;
}

//---------------------------------------------------------------------------------------------
// The current file's characters.

// Reads the next block of the current file; false at its end.
static bool fill_input_buffer()
{
  an_input_stack_entry *ise = curr_ise;
  if (ise->buffer == nullptr) ise->buffer = alloc_input_block();
  ssize_t count;
  do {
    count = read(fileno(ise->file), ise->buffer, input_block_size);
  } while (count < 0 && errno == EINTR);
  if (count < 0) count = 0;
  ise->next_char = ise->buffer;
  ise->buffer_end = ise->buffer + count;
  *ise->buffer_end = '\n';
  ise->offset_of_buffer_end += count;
  return count > 0;
}

// Is there another character in the current file?
static inline bool more_characters()
{
  return curr_ise->next_char != curr_ise->buffer_end || fill_input_buffer();
}

// The next character, or -1.
static inline int peek_character()
{
  return more_characters() ? (unsigned char)*curr_ise->next_char : -1;
}

// The next physical line is about to be read.
static void count_physical_line()
{
  ++seq_number_last_read;
  ++curr_ise->line_number;
  if (curr_ise->lines_counted == curr_ise->next_index_stop) {
    long offset = curr_ise->offset_of_buffer_end - (curr_ise->buffer_end - curr_ise->next_char);
    curr_ise->next_index_stop =
        update_file_index(curr_ise->first_source_file, curr_ise->lines_counted, offset);
  }
  ++curr_ise->lines_counted;
}

//---------------------------------------------------------------------------------------------
// One physical line.

// Copies characters to `to` until a newline, a null or a "?" and leaves next_char there; the sentinel
// behind the block is a newline.  Stops as well when less than a chunk is left of the `room` characters.
static char *copy_plain_characters(char *to, unsigned long room)
{
  const char *from = curr_ise->next_char;
  const char *limit = from + room;
#ifdef __SSE2__
  const __m128i newlines = _mm_set1_epi8('\n');
  const __m128i questions = _mm_set1_epi8('?');
  const __m128i zeros = _mm_setzero_si128();
  while (limit - from >= 16) {
    __m128i chunk = _mm_loadu_si128((const __m128i *)from);
    _mm_storeu_si128((__m128i *)to, chunk);
    __m128i hits =
        _mm_or_si128(_mm_cmpeq_epi8(chunk, newlines),
                     _mm_or_si128(_mm_cmpeq_epi8(chunk, questions), _mm_cmpeq_epi8(chunk, zeros)));
    unsigned mask = (unsigned)_mm_movemask_epi8(hits);
    if (mask != 0) {
      unsigned count = (unsigned)__builtin_ctz(mask);
      from += count;
      to += count;
      break;
    }
    from += 16;
    to += 16;
  }
#else
  while (limit - from >= 16 && *from != '\n' && *from != '?' && *from != 0)
    *to++ = *from++;
#endif
  curr_ise->next_char = (char *)from;
  return to;
}

// Is the byte at `loc` a later byte of a multibyte character?  The line's characters are walked from
// *known_start, the last place known to start one, which is moved up.
static bool is_trailing_byte(const char *loc, const char **known_start)
{
  const char *p = *known_start;
  while (p < loc) {
    *known_start = p;
    p += (unsigned char)*p < 0x80 ? 1 : f_mbc_length(p);
  }
  if (p == loc) *known_start = p;
  return p > loc;
}

static char trigraph_value(int third)
{
  switch (third) {
  case '=': return '#';
  case '(': return '[';
  case '/': return '\\';
  case ')': return ']';
  case '\'': return '^';
  case '<': return '{';
  case '!': return '|';
  case '>': return '}';
  case '-': return '~';
  default: return 0;
  }
}

// At a "?" in the input, with `to` the place for it.  Returns where writing goes on: behind the "?", or
// behind the character that a trigraph stands for.
static char *copy_question_mark(char *to, long *known_start)
{
  ++curr_ise->next_char;
  *to++ = '?';
  if (to - 2 < start_of_physical_line || to[-2] != '?' || C_dialect == 1) return to;
  if (multibyte_chars_in_source_enabled) {
    const char *start = curr_source_line + *known_start;
    *to = 0;
    bool trailing = is_trailing_byte(to - 1, &start) || is_trailing_byte(to - 2, &start);
    *known_start = start - curr_source_line;
    if (trailing) return to;
  }
  int third = peek_character();
  char value = third < 0 ? 0 : trigraph_value(third);
  if (value == 0) return to;
  if (!trigraphs_allowed) {
    if (first_ignored_trigraph < 0) first_ignored_trigraph = to - 2 - curr_source_line;
    return to;
  }
  ++curr_ise->next_char;
  to -= 2;
  *to = value;
  add_orig_line_modif(to, olm_trigraph)->variant.character = (char)third;
  trigraph_replaced = true;
  return to + 1;
}

// At a null character in the input.
static char *copy_null_character(char *to)
{
  ++curr_ise->next_char;
  if (null_chars_allowed_in_source) {
    add_orig_line_modif(to, olm_null_char);
    *to++ = 0;
    *to++ = lesc_null_char;
  } else {
    if (first_invalid_null < 0) first_invalid_null = to - curr_source_line;
    *to++ = ' ';
  }
  return to;
}

// Copies the rest of a physical line behind `to` and returns its end; *ended_by_newline is false when
// the file ends first.
static char *copy_physical_line(char *to, bool *ended_by_newline)
{
  long known_start = to - curr_source_line;
  for (;;) {
    unsigned long room = after_end_of_curr_source_line - to;
    if (room < 64) {
      unsigned long used = to - curr_source_line;
      grow_curr_source_line(used + room + 1);
      to = curr_source_line + used;
      continue;
    }
    to = copy_plain_characters(to, room - 16);
    char *from = curr_ise->next_char;
    if (*from == '\n') {
      if (from != curr_ise->buffer_end) {
        ++curr_ise->next_char;
        *ended_by_newline = true;
        return to;
      }
      if (!fill_input_buffer()) {
        *ended_by_newline = false;
        return to;
      }
    } else if (*from == '?') {
      to = copy_question_mark(to, &known_start);
    } else if (*from == 0) {
      to = copy_null_character(to);
    }
  }
}

//---------------------------------------------------------------------------------------------
// Splices.

static inline bool is_blank_before_newline(char c)
{
  return c == ' ' || c == '\t' || c == '\f' || c == '\v';
}

static void note_backslash(char *backslash, a_source_position *pos)
{
  if (is_null_position(*pos)) conv_line_loc_to_source_pos_full(backslash, pos);
}

// The physical line ends at `to`, where a newline stood.  Returns the place of the backslash that
// continues it, or null if the logical line ends; *to loses trailing carriage returns.
static char *find_splice(char **to)
{
  char *start = start_of_physical_line;
  char *end = *to;
  while (end > start && end[-1] == '\r')
    --end;
  *to = end;
  char *p = end;
  while (p > start && is_blank_before_newline(p[-1]))
    --p;
  if (p == start || p[-1] != '\\') return nullptr;
  if (multibyte_chars_in_source_enabled) {
    const char *known = start;
    *end = 0;
    if (is_trailing_byte(p - 1, &known)) return nullptr;
  }
  if (p == end) return p - 1;
  if (gcc_mode || gpp_mode) {
    note_backslash(p - 1, &first_white_space_splice);
    return p - 1;
  }
  note_backslash(p - 1, &first_failed_splice);
  return nullptr;
}

// What ended a logical line.
enum a_line_end : unsigned char { le_newline, le_end_of_file, le_end_of_file_behind_splice };

// Reads physical lines behind `to` until one isn't spliced, and returns the end of the text.
static char *copy_logical_line(char *to, a_line_end *line_end)
{
  start_of_physical_line = to;
  for (;;) {
    bool ended_by_newline;
    to = copy_physical_line(to, &ended_by_newline);
    if (!ended_by_newline) {
      *line_end = le_end_of_file;
      return to;
    }
    char *backslash = find_splice(&to);
    if (backslash == nullptr) {
      *line_end = le_newline;
      return to;
    }
    to = backslash;
    if (!more_characters()) {
      *line_end = le_end_of_file_behind_splice;
      return to;
    }
    count_physical_line();
    add_orig_line_modif(backslash, olm_splice)->variant.seq = seq_number_last_read;
    start_of_physical_line = to;
  }
}

//---------------------------------------------------------------------------------------------
// Messages about the line, given when it is complete and can be shown.

static void report_at_offset(an_error_severity severity, an_error_code code, long offset)
{
  a_source_position pos;
  conv_line_loc_to_source_pos_full(curr_source_line + offset, &pos);
  pos_diagnostic(severity, code, pos);
}

static void report_trigraphs_for_misra()
{
  for (an_orig_line_modif *m = orig_line_modif_list; m != nullptr; m = m->next) {
    if (m->kind != olm_trigraph) continue;
    report_at_offset(misra_required_severity, ec_misra_c_2004_4_2, m->location - curr_source_line);
  }
}

static void report_line_faults(a_line_end line_end)
{
  if (__builtin_expect(line_end == le_newline && first_invalid_null < 0 &&
                           first_ignored_trigraph < 0 && !trigraph_replaced &&
                           is_null_position(first_white_space_splice) &&
                           is_null_position(first_failed_splice),
                       1)) {
    return;
  }
  if (first_invalid_null >= 0) report_at_offset(es_error, ec_invalid_char, first_invalid_null);
  if (trigraph_replaced && check_misra_c_2004) report_trigraphs_for_misra();
  if (first_ignored_trigraph >= 0 && !trigraph_ignored_warning_given) {
    trigraph_ignored_warning_given = true;
    report_at_offset(es_warning, ec_trigraph_ignored, first_ignored_trigraph);
  }
  if (!is_null_position(first_white_space_splice)) {
    pos_warning(ec_white_space_inside_splice, first_white_space_splice);
  }
  if (!is_null_position(first_failed_splice)) {
    pos_warning(ec_not_a_line_splice, first_failed_splice);
  }
  long end = end_of_curr_source_line - curr_source_line;
  if (line_end == le_end_of_file) {
    report_at_offset(strict_ansi_mode ? strict_ansi_error_severity : es_warning,
                     ec_last_line_incomplete, end);
  } else if (line_end == le_end_of_file_behind_splice) {
    report_at_offset(gcc_mode || gpp_mode ? es_warning : es_error, ec_last_line_backslash, end);
  }
}

//---------------------------------------------------------------------------------------------
// Logical lines.

// Writes the current line to the outputs that want it, before its buffer is used again.
void emit_curr_source_line()
{
  if (generate_pp_output) gen_pp_output_for_curr_line();
  if (f_raw_listing != nullptr) {
    gen_raw_listing_output_for_curr_line();
    gen_expanded_raw_listing_output_for_curr_line(false);
  }
}

// At the end of the current file: goes on in the file below.  Returns true if reading stops here.
static bool stop_at_end_of_file(bool pop_at_eof)
{
  for (;;) {
    at_end_of_source_file = true;
    end_of_line_escape_offset = end_of_curr_source_line + 2 - curr_source_line;
    if (!pop_at_eof || curr_ise->is_macro_preinclude) {
      curr_char_loc = curr_source_line + end_of_line_escape_offset;
      return true;
    }
    pop_input_stack();
    if (input_stack_depth < 0) {
      no_more_input = true;
      curr_char_loc = curr_source_line + end_of_line_escape_offset;
      return true;
    }
    if (more_characters()) return false;
  }
}

static void write_line_terminators(char *end)
{
  end_of_curr_source_line = end;
  end[0] = 0;
  end[1] = lesc_newline;
  end[2] = 0;
  end[3] = lesc_end_of_buffer;
}

static void clear_line_faults()
{
  first_invalid_null = first_ignored_trigraph = -1;
  trigraph_replaced = false;
  first_white_space_splice = first_failed_splice = null_source_position;
}

// Appends the next physical line of the current file at curr_char_loc.
static bool append_physical_line()
{
  if (no_more_input || at_end_of_source_file || !more_characters()) return true;
  unsigned long used = curr_char_loc - curr_source_line;
  if ((unsigned long)(after_end_of_curr_source_line - curr_char_loc) < 64) {
    grow_curr_source_line(used + 64);
  }
  count_physical_line();
  clear_line_faults();
  a_line_end line_end;
  write_line_terminators(copy_logical_line(curr_source_line + used, &line_end));
  curr_char_loc = curr_source_line + used;
  report_line_faults(line_end);
  return false;
}

bool read_logical_source_line(bool pop_at_eof, bool append_to_line)
{
  if (append_to_line) return append_physical_line();
  if (no_more_input) return true;

  if (delete_source_from_loc != nullptr) delete_collected_source_in_line();
  pos_of_macro_invocation = null_source_position;
  if (generate_pp_output || f_raw_listing != nullptr) emit_curr_source_line();
  comment_spanned_lines = false;
  no_token_separators_in_this_line_of_pp_output = no_token_separators_in_pp_output;
  if (!more_characters() && stop_at_end_of_file(pop_at_eof)) return true;

  at_end_of_source_file = false;
  end_of_line_escape_offset = 0;
  free_orig_line_modifs();
  if (source_line_modif_list != nullptr) drop_source_line_modifs_of_line();
  no_modifs_in_curr_line = source_line_modif_list == nullptr;
  logical_char_info_entries_used = 0;
  count_physical_line();
  curr_seq_number = seq_number_last_read;
  clear_line_faults();

  a_line_end line_end;
  write_line_terminators(copy_logical_line(curr_source_line, &line_end));
  curr_char_loc = curr_source_line;
  token_seen_on_line = false;
  if (delete_source_from_loc != nullptr) delete_source_from_loc = curr_source_line;
  if (generate_pp_output) {
    do_not_put_curr_line_in_pp_output =
        currently_in_pp_if_skip || (in_preprocessing_directive && !pass_pp_directive_to_output);
  }
  note_kind_of_output_line();
  report_line_faults(line_end);
  return false;
}

void set_curr_source_line_text(const char *text, unsigned long length, const char *more_text)
{
  unsigned long more_length = strlen(more_text);
  ensure_min_curr_source_line_length(length + more_length + 4);
  memcpy(curr_source_line, text, length);
  memcpy(curr_source_line + length, more_text, more_length);
  write_line_terminators(curr_source_line + length + more_length);
  curr_char_loc = curr_source_line;
}

//---------------------------------------------------------------------------------------------
// Start-up.

void lexical_one_time_init()
{
  curr_source_line = alloc_resizable_buffer(initial_line_length + 1 + slack);
  after_end_of_curr_source_line = curr_source_line + initial_line_length;
  logical_char_info_capacity = initial_line_length / 2;
  logical_char_info = (char **)alloc_resizable_buffer(logical_char_info_capacity * sizeof(char *));
  pp_output_one_time_init();
  input_files_one_time_init();
  register_trans_unit_variable(seq_number_last_read);
  register_trans_unit_variable(curr_seq_number);
  register_trans_unit_variable(no_more_input);
  register_trans_unit_variable(at_end_of_source_file);
  register_trans_unit_variable(trigraph_ignored_warning_given);
  register_trans_unit_variable(pos_of_macro_invocation);
  register_trans_unit_variable(fixed_position_in_use);
  register_trans_unit_variable(fixed_position);
  scanner_one_time_init();
}

void lexical_init()
{
  scanner_init();
}

// Back to the state before the first line of a translation unit.
void lexical_reset()
{
  at_end_of_source_file = false;
  no_more_input = false;
  comment_spanned_lines = false;
  trigraph_ignored_warning_given = false;
  fixed_position_in_use = false;
  fixed_position = null_source_position;
  pos_of_macro_invocation = null_source_position;
  free_orig_line_modifs();
  source_line_modifs_reset();
  logical_char_info_entries_used = 0;
  start_of_physical_line = curr_source_line;
  write_line_terminators(curr_source_line);
  end_of_line_escape_offset = 0;
  curr_char_loc = curr_source_line + 2;
}

void lexical_trans_unit_init()
{
  lexical_reset();
  input_files_trans_unit_init();
  pp_output_trans_unit_init();
  scanner_trans_unit_init();
}

void lexical_trans_unit_wrapup()
{
  while (input_stack_depth >= 0)
    pop_input_stack();
}
