// lex_string.cpp - the extent of strings, character constants and header names.
// Uses:    the converters of literals.h, lines (source_input.h).
// Rule:    one walk finds the closing delimiter and bounds the number of resulting characters.
// Entry:   scan_string_literal, scan_char_constant, scan_header_name.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/literals.h"
#include "lex/source_input.h"

//---------------------------------------------------------------------------------------------
// The walk
//---------------------------------------------------------------------------------------------

// Characters at which the walk has something to do; quotes are tested apart.
static inline bool needs_attention(char c)
{
  return c == 0 || c == '\\' || c == modif_mark || (signed char)c < 0;
}

static void report_null_char(char *loc, an_error_code code)
{
  if (fetch_pp_tokens && code != ec_null_char_in_header_name) return;
  a_source_position position;
  conv_line_loc_to_source_pos(loc, &position);
  pos_warning(code, position);
}

// Old GNU modes: a string goes on in the next line.  The end of this one becomes \n in the string.
static bool append_next_line_to_string(char *loc)
{
  bool allowed = (gcc_mode || gpp_mode) && gnu_version < 30300 &&
                 curr_command_line_macro_def == nullptr && !fixed_position_in_use &&
                 !in_preprocessing_directive && loc_is_in_curr_source_line(loc);
  if (!allowed) return false;
  an_orig_line_modif *modif = add_orig_line_modif(loc, olm_newline_in_string);
  modif->variant.seq = seq_number_last_read + 1;
  loc[0] = '\\';
  loc[1] = 'n';
  curr_char_loc = loc + 2;
  return !read_logical_source_line(false, true);
}

static bool is_octal_digit(char c)
{
  return c >= '0' && c <= '7';
}

// Behind a backslash: rules 4.1, which leaves the simple escapes and octal ones, and 7.1, which of those leaves \0.
static void check_escape_for_misra(char *loc)
{
  an_error_code code = ec_misra_c_2004_4_1;
  if (is_octal_digit(*loc)) {
    if (*loc == '0' && !is_octal_digit(loc[1])) return;
    code = ec_misra_c_2004_7_1;
  } else if (*loc != '\0' && strchr("abfnrtv'\"?\\", *loc) != nullptr) {
    return;
  }
  a_source_position position;
  conv_line_loc_to_source_pos(loc - 1, &position);
  report_misra_rule(misra_required_severity, code, position);
}

// Behind a backslash: the most units that the escape can give; *loc moves behind it.
static unsigned pass_escape_in_string(char **loc)
{
  char c = **loc;
  // Where it is written, not wherever a macro brings it.
  if (check_misra_c_2004 && loc_is_in_curr_source_line(*loc)) check_escape_for_misra(*loc);
  if (c == 0 && (*loc)[1] == lesc_null_char) {
    report_null_char(*loc, ec_null_char_in_string);
    *loc += 2;
    return 1;
  }
  if ((signed char)c < 0 && multibyte_chars_in_source_enabled) {
    unsigned length = pass_multibyte_char(*loc);
    *loc += length;
    return length;
  }
  ++*loc;
  return c == 'u' || c == 'U' ? 4 : 1;
}

// A walk that needs attention at `*loc`.  Returns false at the end of the line.
static bool pass_special_char(char **loc, unsigned long *count)
{
  char *place = *loc;
  if (*place == '\\') {
    ++*loc;
    if (place[1] == 0 && place[2] != lesc_null_char) return false;
    if (place[1] == modif_mark) return false;
    *count += pass_escape_in_string(loc);
    return true;
  }
  if (*place == 0) {
    if (place[1] == lesc_null_char) {
      report_null_char(place, ec_null_char_in_string);
      *loc += 2;
      *count += 1;
      return true;
    }
    if (place[1] != lesc_newline || !append_next_line_to_string(place)) return false;
    *loc = curr_char_loc;
    *count += 1;
    return true;
  }
  if (*place == modif_mark) return false;
  unsigned length = multibyte_chars_in_source_enabled ? pass_multibyte_char(place) : 1;
  *loc += length;
  *count += length;
  return true;
}

// From behind the opening quote to behind the closing one; curr_char_loc ends there.  Returns false, at
// the end of the line, if there is none.  *count gets a bound of the resulting characters.
static bool scan_to_quote(char *loc, char quote, unsigned long *count)
{
  *count = 0;
  for (;;) {
    char *from = loc;
    while (*loc != quote && !needs_attention(*loc))
      ++loc;
    *count += (unsigned long)(loc - from);
    if (*loc == quote) {
      curr_char_loc = loc + 1;
      return true;
    }
    if (!pass_special_char(&loc, count)) break;
  }
  curr_char_loc = loc;
  return false;
}

static void report_fault(an_error_code code, char *loc)
{
  if (code == ec_no_error) return;
  a_source_position position;
  conv_line_loc_to_source_pos(loc, &position);
  pos_error(code, position);
}

//---------------------------------------------------------------------------------------------
// Tokens
//---------------------------------------------------------------------------------------------

int scan_string_literal(char *start, unsigned prefix_length)
{
  unsigned long count;
  if (!scan_to_quote(start + prefix_length + 1, '"', &count)) {
    return error_token(ec_unclosed_string, curr_char_loc);
  }
  if (fetch_pp_tokens) return tok_string_literal;
  an_error_code code = ec_no_error;
  char *loc = start_of_curr_token;
  end_of_curr_token = curr_char_loc - 1;
  conv_string_literal(count, &code, &loc);
  report_fault(code, loc);
  return tok_string_literal;
}

int scan_char_constant(char *start, unsigned prefix_length)
{
  unsigned long count;
  if (!scan_to_quote(start + prefix_length + 1, '\'', &count)) {
    return error_token(ec_unclosed_string, curr_char_loc);
  }
  if (count == 0) {
    int kind = error_token(ec_zero_length_string, curr_char_loc);
    if (fetch_pp_tokens) return kind;
    set_error_constant(&const_for_curr_token);
    return tok_char_constant;
  }
  if (fetch_pp_tokens) return tok_char_constant;
  an_error_code code = ec_no_error;
  char *loc = start_of_curr_token;
  end_of_curr_token = curr_char_loc - 1;
  conv_char_literal(count, &code, &loc);
  report_fault(code, loc);
  return tok_char_constant;
}

// Rule 19.2 of MISRA-C:2004: characters that a header name must not hold.
static bool is_doubtful_in_header_name(const char *loc, char closing)
{
  if (*loc == '\'' || *loc == '\\') return true;
  if (*loc == '/' && (loc[1] == '*' || loc[1] == '/')) return true;
  return *loc == '"' && closing == '>';
}

int scan_header_name(char *start, char closing)
{
  bool doubtful = false;
  char *loc = start + 1;
  while (*loc != closing) {
    if (*loc == 0 && loc[1] == lesc_null_char) {
      report_null_char(loc, ec_null_char_in_header_name);
      loc += 2;
    } else if (*loc == 0 || *loc == modif_mark) {
      curr_char_loc = loc;
      if (!fetch_pp_tokens || in_preprocessing_directive) error(ec_unclosed_string);
      return tok_header_name;
    } else if ((signed char)*loc < 0 && multibyte_chars_in_source_enabled) {
      loc += pass_multibyte_char(loc);
    } else {
      doubtful |= is_doubtful_in_header_name(loc, closing);
      ++loc;
    }
  }
  if (doubtful && check_misra_c_2004) {
    diagnostic(misra_advisory_severity, ec_misra_c_2004_19_2);
  }
  curr_char_loc = loc + 1;
  return tok_header_name;
}
