// lex_white_space.cpp - white space, comments, line ends.
// Uses:    lines and modifications (source_input.h).
// Rule:    a comment is removed from the output by a modification, and only where an output is written.
// Entry:   skip_white_space, skip_comment.
#include <cstring>

#include "driver/flags.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/pragma.h"
#include "lex/preproc.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"

static bool illegal_comment_reported; // 2581 is given once in the run
a_text_buffer *passed_comments;

//---------------------------------------------------------------------------------------------
// Comments
//---------------------------------------------------------------------------------------------

// Does somebody write the line, so that comments have to be taken out of it?
static inline bool comments_are_removed_by_modifs()
{
  return (generate_pp_output || f_raw_listing != nullptr) && !keep_comments_in_pp_output &&
         !(do_not_put_curr_line_in_pp_output && f_raw_listing == nullptr);
}

// Adds a line's part of a comment to those that are collected; a line's end keeps its mark.
static void collect_comment_text(const char *start, const char *end, bool line_ends)
{
  if (!loc_is_in_curr_source_line(start)) return;
  add_to_text_buffer(passed_comments, start, end - start);
  if (line_ends) {
    add_char_to_text_buffer(passed_comments, 0);
    add_char_to_text_buffer(passed_comments, lesc_newline);
  }
}

// Takes the text from `start` to `end` out of the output; a blank stands in with `with_blank`.
static void remove_comment_text(char *start, char *end, bool with_blank)
{
  if (delete_source_from_loc != nullptr || end == start) return;
  if (!comments_are_removed_by_modifs() || !loc_is_in_curr_source_line(start)) return;
  a_source_line_modif *modif =
      add_inline_source_line_modif(start, (unsigned)(end - start), with_blank);
  modif->is_comment = true;
}

// The words of lint comments, each with the pragma that it stands for.
static void check_for_lint_comment(const char *text, char *start)
{
  static const struct {
    const char *word;
    unsigned length;
    a_pragma_kind_tag kind;
  } words[] = {{"NOTREACHED", 10, pragk_notreached},
               {"ARGSUSED", 8, pragk_argsused},
               {"VARARGS", 7, pragk_varargs}};
  while (*text == ' ' || *text == '\t')
    ++text;
  if (*text != 'N' && *text != 'A' && *text != 'V') return;
  for (auto &row : words) {
    if (strncmp(text, row.word, row.length) != 0) continue;
    text += row.length;
    if (char_class[(unsigned char)*text] & cc_id_start) return;
    unsigned count = 0;
    for (; row.kind == pragk_varargs && is_digit_char(*text); ++text) {
      if (count <= 32767) count = count * 10 + (unsigned)(*text - '0');
    }
    if (count > 32767) count = 0;
    a_source_position position;
    conv_line_loc_to_source_pos(start, &position);
    add_curr_token_pseudo_pragma(row.kind, position, count);
    return;
  }
}

// Reads the next line inside a comment; false at the end of the file.
static bool read_line_in_comment()
{
  if (fixed_position_in_use || curr_command_line_macro_def != nullptr) return false;
  if (delete_source_from_loc != nullptr) delete_collected_source(curr_char_loc);
  if (read_logical_source_line(false, false)) return false;
  comment_spanned_lines = true;
  if (delete_source_from_loc != nullptr) delete_source_from_loc = curr_char_loc;
  return true;
}

static void report_nested_comment(char *loc)
{
  if (building_pch_prefix) return;
  a_source_position position;
  conv_line_loc_to_source_pos(loc, &position);
  if (check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_2_3, misra_required_severity)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_2_3, position);
  } else {
    pos_warning(ec_nested_comment, position);
  }
}

// Characters that can end a comment or need a closer look.
static bool comment_event[256];

void comment_scanner_init()
{
  for (int c = 0; c < 256; ++c) {
    comment_event[c] =
        c == '*' || c == '/' || c == 0 || (c >= 128 && multibyte_chars_in_source_enabled);
  }
}

static inline char *find_comment_event(char *loc)
{
  while (!comment_event[(unsigned char)*loc])
    ++loc;
  return loc;
}

// The end of the line, or of the text, inside a comment.  Returns false if the comment ends there.
static bool pass_line_end_in_comment(char **start, a_source_position opening)
{
  char *loc = curr_char_loc;
  bool line_ends = loc[1] == lesc_newline || loc[1] == lesc_end_of_buffer;
  if (line_ends) {
    if (passed_comments != nullptr) collect_comment_text(*start, loc, true);
    remove_comment_text(*start, loc, false);
    if (read_line_in_comment()) {
      *start = curr_char_loc;
      return true;
    }
  }
  if (!building_pch_prefix) pos_error(ec_comment_unclosed_at_eof, opening);
  return false;
}

static void skip_block_comment(char *start)
{
  a_source_position opening;
  conv_line_loc_to_source_pos(start, &opening);
  if (!in_preprocessing_directive && !currently_in_pp_if_skip && !fetch_pp_tokens) {
    check_for_lint_comment(start + 2, start);
  }
  kind_of_white_space_skipped |= ws_comment;
  curr_char_loc = start + 2;
  for (;;) {
    char *loc = find_comment_event(curr_char_loc);
    curr_char_loc = loc;
    switch (*loc) {
    case '*':
      curr_char_loc = loc + 1;
      if (loc[1] != '/') break;
      curr_char_loc = loc + 2;
      if (passed_comments != nullptr) collect_comment_text(start, curr_char_loc, false);
      remove_comment_text(start, curr_char_loc, !pcc_preprocessing_mode);
      return;
    case '/':
      if (loc[1] == '*' && loc != start && loc[2] != '/') report_nested_comment(loc);
      curr_char_loc = loc + 1;
      break;
    case 0:
      if (loc[1] == lesc_newline || loc[1] == lesc_end_of_buffer || loc[1] == lesc_end_of_modif) {
        if (!pass_line_end_in_comment(&start, opening)) return;
      } else {
        curr_char_loc = loc + 2;
      }
      break;
    default: curr_char_loc = loc + pass_multibyte_char(loc); break;
    }
  }
}

// Rules 2.2 and 2.3.
static void check_line_comment_for_misra(char *start)
{
  a_source_position position;
  conv_line_loc_to_source_pos(start, &position);
  pos_diagnostic(misra_required_severity, ec_misra_c_2004_2_2, position);
  char *nested = strstr(start + 2, "/*"); // the line's end is a null character
  if (nested == nullptr) return;
  conv_line_loc_to_source_pos(nested, &position);
  pos_diagnostic(misra_required_severity, ec_misra_c_2004_2_3, position);
}

static void report_line_comment(char *start)
{
  a_source_position position;
  if (check_misra_c_2004) check_line_comment_for_misra(start);
  bool illegal = strict_ansi_mode && C_dialect == 0 && !c99_mode;
  if (illegal && !illegal_comment_reported && !currently_in_pp_if_skip) {
    illegal_comment_reported = true;
    conv_line_loc_to_source_pos(start, &position);
    pos_diagnostic(strict_ansi_discretionary_severity, ec_illegal_end_of_line_comment, position);
  }
}

static void skip_line_comment(char *start)
{
  report_line_comment(start);
  kind_of_white_space_skipped |= ws_comment;
  char *loc = start + 2;
  for (;;) {
    if (!multibyte_chars_in_source_enabled) loc += strlen(loc);
    unsigned char c = (unsigned char)*loc;
    if (c == 0) {
      if (loc[1] == lesc_newline || loc[1] == lesc_end_of_buffer || loc[1] == lesc_end_of_modif)
        break;
      loc += 2;
    } else if (c >= 128 && multibyte_chars_in_source_enabled) {
      loc += pass_multibyte_char(loc);
    } else {
      ++loc;
    }
  }
  curr_char_loc = loc;
  if (passed_comments != nullptr) collect_comment_text(start, loc, true);
  remove_comment_text(start, loc, false);
}

// "//" begins a comment where it is allowed, and in strict C89, where it has its message.
static inline bool line_comments_are_scanned()
{
  return end_of_line_comments_allowed || (strict_ansi_mode && C_dialect == 0);
}

bool skip_comment()
{
  char *start = curr_char_loc;
  if (passed_comments != nullptr) add_char_to_text_buffer(passed_comments, ' ');
  if (start[1] == '*') {
    skip_block_comment(start);
    return true;
  }
  if (start[1] == '/' && line_comments_are_scanned()) {
    skip_line_comment(start);
    return true;
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// White space
//---------------------------------------------------------------------------------------------

static void report_at(char *loc, an_error_code code, an_error_severity severity)
{
  a_source_position position;
  conv_line_loc_to_source_pos(loc, &position);
  pos_diagnostic(severity, code, position);
}

static void pass_carriage_return(char *loc)
{
  if (!currently_in_pp_if_skip) {
    report_at(loc, ec_stray_carriage_return,
              strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning);
  }
  curr_char_loc = loc + 1;
}

// At the end of the line's data: reads the next line.  Returns false at the end of the source.
static bool pass_end_of_buffer()
{
  if (no_more_input || fixed_position_in_use || curr_command_line_macro_def != nullptr)
    return false;
  if (in_preprocessing_directive) return false; // its line ended in a comment, with the file
  if (read_logical_source_line(true, false)) return false;
  if (delete_source_from_loc != nullptr) delete_source_from_loc = curr_char_loc;
  return true;
}

// At the character 0.  Returns false where skipping ends.
static bool pass_escape(char *loc)
{
  switch (loc[1]) {
  case lesc_end_of_buffer: return pass_end_of_buffer();
  case lesc_newline:
    if (in_preprocessing_directive || treat_newline_as_token) return false;
    if (delete_source_from_loc != nullptr) delete_collected_source(loc);
    kind_of_white_space_skipped |= ws_blank;
    curr_char_loc = loc + 2;
    return true;
  case lesc_end_of_modif: return leave_source_line_modif();
  case lesc_token_separator: curr_char_loc = loc + 2; return true;
  case lesc_null_char:
    if (!currently_in_pp_if_skip) report_at(loc, ec_null_char_ignored, es_warning);
    kind_of_white_space_skipped |= ws_blank;
    curr_char_loc = loc + 2;
    return true;
  case lesc_end_of_invocation:
    pos_of_macro_invocation = null_source_position;
    curr_char_loc = loc + 2;
    return true;
  default: return false; // marks of the token that follows
  }
}

int skip_white_space()
{
  for (;;) {
    char *loc = curr_char_loc;
    switch (*loc) {
    case ' ':
    case '\t':
    case '\v':
    case '\f':
      kind_of_white_space_skipped |= ws_blank;
      curr_char_loc = loc + 1;
      break;
    case '\r':
      kind_of_white_space_skipped |= ws_blank;
      pass_carriage_return(loc);
      break;
    case modif_mark:
      if (!enter_source_line_modif()) return modif_mark;
      break;
    case '/':
      if (!skip_comment()) return '/';
      break;
    case 0:
      if (!pass_escape(loc)) return 0;
      break;
    default: return (unsigned char)*loc;
    }
  }
}
