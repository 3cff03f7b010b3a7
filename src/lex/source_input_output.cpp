// source_input_output.cpp - what is written of each line: preprocessed text and raw listing.
// Owns:    pp_lexical_category, next_seq_in_pp_output, the buffers of both outputs.
// Rule:    a line is walked as the scanner passed through it, into the replacement texts and out; where
//          two texts meet, a blank keeps characters apart that could join to one token.
// Entry:   gen_pp_output_for_curr_line, gen_pp_line_info, gen_raw_listing_output_for_curr_line.
#include <cctype>
#include <cerrno>
#include <cstring>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "lex/lexical.h"
#include "lex/preproc.h"
#include "lex/source_input_internal.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"

unsigned char pp_lexical_category[256];
a_seq_number next_seq_in_pp_output;

static constexpr unsigned long initial_output_length = 3000;
static constexpr unsigned max_gap_in_pp_output =
    5; // lines left out before a line marker is shorter

static char *output_buffer; // the text of the line being written
static unsigned long output_capacity;
static unsigned long output_length;

static char raw_listing_kind;      // N or S; 0: the line was recorded
static bool expanded_line_is_due;  // and its expansion was not
static bool start_text_was_output; // of a line that is itself left out

//---------------------------------------------------------------------------------------------
// Which characters join.

static void init_pp_lexical_category()
{
  for (int c = 0; c < 256; ++c) {
    bool in_identifier = c < 128 && (isalnum(c) || c == '_');
    if (c == '$' && allow_dollar_in_id_chars) in_identifier = true;
    pp_lexical_category[c] = in_identifier || c == '.' ? ppc_identifier : ppc_other;
  }
  for (const char *p = "\t\n\v\f (),;?[]{}~"; *p != 0; ++p) {
    pp_lexical_category[(unsigned char)*p] = ppc_never_joins;
  }
  if (C_dialect != 2) pp_lexical_category[(unsigned char)':'] = ppc_never_joins;
}

static inline bool is_exponent_letter(char c)
{
  return c == 'e' || c == 'E';
}

bool chars_could_join(char before, char prev, char next)
{
  unsigned char category = pp_lexical_category[(unsigned char)prev];
  unsigned char next_category = pp_lexical_category[(unsigned char)next];
  if (category == next_category) return category != ppc_never_joins;
  bool prev_is_sign = prev == '+' || prev == '-';
  if (is_exponent_letter(prev) && (next == '+' || next == '-')) return true;
  if (prev_is_sign && is_exponent_letter(before) && is_digit_char(next)) return true;
  return prev == 'L' && (next == '"' || next == '\'');
}

//---------------------------------------------------------------------------------------------
// The walk through a line.

namespace {
struct a_line_walk {
  char *place;
  a_source_line_modif *text; // the replacement text that `place` is in; null for the line
  bool keep_apart;           // blanks are put where tokens could join
  bool crossed;              // a border of texts was passed since the last character
  bool replacement_seen;     // a modification other than a comment's was passed
  bool line_ended;           // the last thing written is a newline
  char null_char;            // stands for a null character of the source
};
} // namespace

static inline void put_output(char c)
{
  output_buffer[output_length++] = c;
}

// Makes room for `length` more characters and a separator.
static inline void ensure_output_space(unsigned long length)
{
  unsigned long needed = output_length + length + 2;
  if (needed <= output_capacity) return;
  unsigned long capacity = output_capacity;
  while (capacity < needed)
    capacity *= 2;
  output_buffer = realloc_buffer(output_buffer, output_capacity, capacity);
  output_capacity = capacity;
}

static void copy_to_output(a_line_walk *walk, const char *text, unsigned long length)
{
  ensure_output_space(length);
  if (walk->crossed && walk->keep_apart && !walk->line_ended) {
    char prev = output_buffer[output_length - 1];
    char before = output_length > 1 ? output_buffer[output_length - 2] : ' ';
    if (chars_could_join(before, prev, *text)) put_output(' ');
  }
  memcpy(output_buffer + output_length, text, length);
  output_length += length;
  walk->crossed = false;
  walk->line_ended = false;
}

static void pass_modif(a_line_walk *walk)
{
  a_source_line_modif *modif = assoc_source_line_modif(walk->place);
  walk->crossed = true;
  if (!modif->is_comment) walk->replacement_seen = true;
  if (modif->first_char == modif->last_char) {
    walk->place = after_source_line_modif(modif);
    return;
  }
  modif->parent = walk->text;
  modif->parent_is_known = true;
  walk->text = modif;
  walk->place = modif->first_char;
}

static void leave_text(a_line_walk *walk)
{
  a_source_line_modif *modif = walk->text;
  if (modif == nullptr) modif = nested_source_line_modif(walk->place);
  walk->crossed = true;
  walk->place = after_source_line_modif(modif);
  walk->text = modif->parent;
}

// Walks on to the end of a line, which is written as a newline, or of the data.  Returns false at the
// end of the data.
static bool walk_to_newline(a_line_walk *walk)
{
  for (;;) {
    char *start = walk->place;
    char *p = start;
    while (*p != 0 && *p != modif_mark)
      ++p;
    walk->place = p;
    if (p != start) copy_to_output(walk, start, p - start);
    if (*p == modif_mark) {
      pass_modif(walk);
      continue;
    }
    switch (p[1]) {
    case lesc_end_of_buffer: return false;
    case lesc_newline:
      ensure_output_space(1);
      put_output('\n');
      walk->line_ended = true;
      walk->place = p + 2;
      return true;
    case lesc_end_of_modif: leave_text(walk); break;
    case lesc_token_separator:
      walk->crossed = true;
      walk->place = p + 2;
      break;
    case lesc_null_char:
      copy_to_output(walk, &walk->null_char, 1);
      walk->place = p + 2;
      break;
    default: walk->place = p + 2; break;
    }
  }
}

static a_line_walk start_of_walk(char null_char)
{
  a_line_walk walk = {};
  walk.place = curr_source_line;
  walk.null_char = null_char;
  walk.keep_apart = !no_token_separators_in_this_line_of_pp_output;
  walk.line_ended = true;
  if (line_start_source_line_modif != nullptr) {
    walk.text = line_start_source_line_modif;
    walk.place = walk.text->first_char;
    walk.replacement_seen = true;
  }
  return walk;
}

//---------------------------------------------------------------------------------------------
// Preprocessed output.

static void write_pp_output(const char *text, unsigned long length)
{
  if (fwrite_unlocked(text, 1, length, f_pp_output) != length) {
    file_write_error(ec_file_kind_pp_output, errno);
  }
}

// Brings the output to the current line, by newlines or by a marker.
static void synchronize_pp_output()
{
  a_seq_number gap = curr_seq_number - next_seq_in_pp_output;
  bool output_is_ahead = next_seq_in_pp_output > curr_seq_number;
  bool in_kept_comment = keep_comments_in_pp_output && comment_spanned_lines;
  if (gap > max_gap_in_pp_output && (output_is_ahead || !in_kept_comment)) {
    gen_pp_line_info(' ', false);
    return;
  }
  if (gen_line_info_in_pp_output) {
    for (a_seq_number i = 0; i < gap; ++i)
      write_pp_output("\n", 1);
  }
  next_seq_in_pp_output = curr_seq_number;
}

// Writes the text of a name that stood at the end of the line before, when the line itself is left out.
static void gen_pp_output_for_start_text()
{
  if (line_start_source_line_modif == nullptr || start_text_was_output) return;
  start_text_was_output = true;
  a_line_walk walk = start_of_walk(0);
  output_length = 0;
  while (walk.text != nullptr && walk.place < walk.text->last_char && walk_to_newline(&walk))
    ++next_seq_in_pp_output;
  write_pp_output(output_buffer, output_length);
}

static inline bool current_line_is_plain()
{
  if (no_modifs_in_curr_line) return true;
  return source_line_modif_list == nullptr && !null_chars_allowed_in_source;
}

void gen_pp_output_for_curr_line()
{
  if (do_not_put_curr_line_in_pp_output) {
    gen_pp_output_for_start_text();
    return;
  }
  do_not_put_curr_line_in_pp_output = true;
  start_text_was_output = true;
  if (next_seq_in_pp_output != curr_seq_number && prev_pp_output_line_was_complete &&
      line_start_source_line_modif == nullptr) {
    synchronize_pp_output();
  }
  if (current_line_is_plain()) {
    // The newline goes where the line's end escape stands, for the time of the call.
    *end_of_curr_source_line = '\n';
    write_pp_output(curr_source_line, end_of_curr_source_line + 1 - curr_source_line);
    *end_of_curr_source_line = 0;
    ++next_seq_in_pp_output;
    prev_pp_output_line_was_complete = true;
    return;
  }
  a_line_walk walk = start_of_walk(0);
  output_length = 0;
  while (walk_to_newline(&walk))
    ++next_seq_in_pp_output;
  write_pp_output(output_buffer, output_length);
  if (output_length > 0) prev_pp_output_line_was_complete = walk.line_ended;
}

void gen_pp_line_info(char, bool at_new_file)
{
  if (!gen_line_info_in_pp_output) {
    next_seq_in_pp_output = at_new_file ? seq_number_last_read + 1 : curr_seq_number;
    return;
  }
  if (!prev_pp_output_line_was_complete) {
    write_pp_output("\n", 1);
    prev_pp_output_line_was_complete = true;
  }
  bool old_style = pcc_preprocessing_mode || gen_old_style_line_dirs || gcc_mode || gpp_mode;
  a_line_number line = curr_ise->line_number + 1;
  if (at_new_file) {
    next_seq_in_pp_output = seq_number_last_read + 1;
  } else {
    line = curr_ise->line_number - (seq_number_last_read - curr_seq_number);
    next_seq_in_pp_output = curr_seq_number;
  }
  fprintf(f_pp_output, "%s %lu \"", old_style ? "#" : "#line", line);
  write_file_name(curr_ise->file_name, f_pp_output, !pcc_preprocessing_mode);
  write_pp_output("\"\n", 2);
}

//---------------------------------------------------------------------------------------------
// The raw listing.

static void write_raw_listing(const char *text, unsigned long length)
{
  if (fwrite_unlocked(text, 1, length, f_raw_listing) != length) {
    file_write_error(ec_file_kind_raw_listing, errno);
  }
}

void note_kind_of_output_line()
{
  start_text_was_output = false;
  raw_listing_kind = currently_in_pp_if_skip ? 'S' : 'N';
  expanded_line_is_due = !currently_in_pp_if_skip;
}

void note_start_text()
{
  start_text_was_output = false;
  expanded_line_is_due = true;
}

// Puts back what reading changed at the place of an original modification; returns where the text goes on.
static char *undo_orig_line_modif(const an_orig_line_modif *modif, char *place)
{
  ensure_output_space(4);
  switch (modif->kind) {
  case olm_trigraph:
    put_output('?');
    put_output('?');
    put_output(modif->variant.character);
    if (!is_trigraph_of_splice(modif)) return place + 1;
    put_output('\n');
    put_output(raw_listing_kind);
    return place;
  case olm_splice:
    put_output('\\');
    put_output('\n');
    put_output(raw_listing_kind);
    return place;
  case olm_newline_in_string:
    put_output('\n');
    put_output(raw_listing_kind);
    return place + 2;
  case olm_null_char: put_output(' '); return place + 2;
  }
  return place;
}

void gen_raw_listing_output_for_curr_line()
{
  if (raw_listing_kind == 0) return;
  output_length = 0;
  ensure_output_space(end_of_curr_source_line - curr_source_line + 2);
  put_output(raw_listing_kind);
  an_orig_line_modif *orig = orig_line_modif_list;
  char *p = curr_source_line;
  while (p < end_of_curr_source_line || (orig != nullptr && orig->location == p)) {
    if (orig != nullptr && orig->location == p) {
      p = undo_orig_line_modif(orig, p);
      orig = is_trigraph_of_splice(orig) ? orig->next->next : orig->next;
      continue;
    }
    ensure_output_space(1);
    char c = *p == modif_mark ? assoc_source_line_modif(p)->saved_char : *p;
    if (c != 0) put_output(c);
    ++p;
  }
  put_output('\n');
  write_raw_listing(output_buffer, output_length);
  raw_listing_kind = 0;
}

void gen_expanded_raw_listing_output_for_curr_line(bool at_end_of_source)
{
  if (!expanded_line_is_due) return;
  expanded_line_is_due = false;
  if (source_line_modif_list == nullptr && orig_line_modif_list == nullptr) return;
  a_line_walk walk = start_of_walk(' ');
  bool more = true;
  while (more) {
    output_length = 0;
    put_output('X');
    more = walk_to_newline(&walk);
    bool is_left_over = at_end_of_source && output_length > 1;
    if (!more && !is_left_over) break;
    if (!more) put_output('\n');
    if (walk.replacement_seen || orig_line_modif_list != nullptr) {
      write_raw_listing(output_buffer, output_length);
    }
  }
}

void gen_rlisting_line_info(char code)
{
  // The line of a line directive itself still has its old number.
  gen_raw_listing_output_for_curr_line();
  gen_expanded_raw_listing_output_for_curr_line(false);
  fprintf(f_raw_listing, "L %lu \"", curr_ise->line_number + 1);
  write_file_name(curr_ise->file_name, f_raw_listing, true);
  if (code == ' ') {
    write_raw_listing("\"\n", 2);
  } else {
    fprintf(f_raw_listing, "\" %c\n", code);
  }
}

void finish_raw_listing_file()
{
  if (f_raw_listing == nullptr) return;
  bool failed = fflush(f_raw_listing) != 0 || ferror(f_raw_listing);
  if (fclose(f_raw_listing) != 0) failed = true;
  f_raw_listing = nullptr;
  if (failed) file_write_error(ec_file_kind_raw_listing, errno);
}

//---------------------------------------------------------------------------------------------
// Start-up.

void pp_output_one_time_init()
{
  output_capacity = initial_output_length;
  output_buffer = alloc_resizable_buffer(output_capacity);
  init_pp_lexical_category();
  register_trans_unit_variable(next_seq_in_pp_output);
}

void pp_output_trans_unit_init()
{
  next_seq_in_pp_output = 1;
  raw_listing_kind = 0;
  expanded_line_is_due = false;
  start_text_was_output = false;
}
