// lex_number.cpp - the extent and form of numbers.
// Uses:    the converters of literals.h.
// Rule:    the form decides radix and float or integer; everything behind it that a preprocessing number
//          would take in is an error, 19.
// Entry:   scan_number.
// See:     C99 6.4.4.1, 6.4.4.2, 6.4.8; binary and imaginary constants are marked "GNU".
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/literals.h"
#include "lex/preproc.h"
#include "lex/source_input.h"

// What the walk over a number found.
struct a_number_scan {
  char *loc; // behind what was taken so far
  int radix;
  bool is_float;
  bool is_hex_float;
  bool is_imaginary;  // GNU
  an_error_code code; // a fault of the form, due at code_loc
  char *code_loc;
  an_error_severity severity;
};

static bool is_hex_digit(char c)
{
  return is_digit_char(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

static bool is_exponent_letter(char c)
{
  return c == 'e' || c == 'E';
}

static bool is_binary_exponent_letter(char c)
{
  return c == 'p' || c == 'P';
}

static bool hex_floats_are_scanned()
{
  return hex_floating_point_constants_allowed || fixed_point_enabled;
}

static void note_fault(a_number_scan *scan, an_error_code code, char *loc,
                       an_error_severity severity)
{
  if (scan->code != ec_no_error) return;
  scan->code = code;
  scan->code_loc = loc;
  scan->severity = severity;
}

static an_error_severity lax_in_old_c()
{
  return C_dialect == 1 ? es_warning : es_error;
}

//---------------------------------------------------------------------------------------------
// Parts of a number
//---------------------------------------------------------------------------------------------

static void skip_digits(a_number_scan *scan)
{
  while (is_digit_char(*scan->loc))
    ++scan->loc;
}

// At the letter of an exponent.
static void scan_exponent(a_number_scan *scan, an_error_severity severity)
{
  char *letter = scan->loc++;
  if (*scan->loc == '+' || *scan->loc == '-') ++scan->loc;
  if (!is_digit_char(*scan->loc)) note_fault(scan, ec_bad_float_constant, letter, severity);
  skip_digits(scan);
}

// Behind "0x".
static void scan_hex_body(a_number_scan *scan, char *start)
{
  scan->radix = 16;
  char *digits = scan->loc;
  while (is_hex_digit(*scan->loc))
    ++scan->loc;
  bool any_digits = scan->loc > digits;
  if (hex_floats_are_scanned() && (*scan->loc == '.' || is_binary_exponent_letter(*scan->loc))) {
    scan->is_float = scan->is_hex_float = true;
    if (*scan->loc == '.') {
      ++scan->loc;
      digits = scan->loc;
      while (is_hex_digit(*scan->loc))
        ++scan->loc;
      any_digits |= scan->loc > digits;
    }
    if (!any_digits) note_fault(scan, ec_bad_float_constant, start, es_error);
    if (is_binary_exponent_letter(*scan->loc)) {
      scan_exponent(scan, es_error);
    } else {
      note_fault(scan, ec_bad_float_constant, start, es_error);
    }
  } else if (!any_digits) {
    note_fault(scan, ec_bad_hex_digit, start, lax_in_old_c());
  }
}

// Behind "0b" (GNU).
static void scan_binary_body(a_number_scan *scan, char *start)
{
  scan->radix = 2;
  char *digits = scan->loc;
  while (*scan->loc == '0' || *scan->loc == '1')
    ++scan->loc;
  if (scan->loc == digits) note_fault(scan, ec_bad_binary_digit, start, es_error);
}

static void scan_decimal_body(a_number_scan *scan, char *start)
{
  skip_digits(scan);
  if (*scan->loc == '.') {
    scan->is_float = true;
    ++scan->loc;
    skip_digits(scan);
  }
  if (is_exponent_letter(*scan->loc)) {
    scan->is_float = true;
    scan_exponent(scan, lax_in_old_c());
  }
  if (scan->is_float || start[0] != '0' || scan->loc == start + 1) return;
  scan->radix = 8;
}

static bool is_imaginary_letter(char c)
{
  return (gcc_mode || gpp_mode) && (c == 'i' || c == 'I' || c == 'j' || c == 'J');
}

static void scan_integer_suffix(a_number_scan *scan)
{
  bool unsigned_seen = false, sized = false;
  int longs = 0;
  for (;; ++scan->loc) {
    char c = *scan->loc;
    if ((c == 'u' || c == 'U') && !unsigned_seen) {
      unsigned_seen = true;
    } else if ((c == 'l' || c == 'L') && longs < 2 && !sized) {
      ++longs;
    } else if ((c == 'i' || c == 'I') && longs == 0 && is_digit_char(scan->loc[1])) {
      sized = true;
      ++scan->loc;
      skip_digits(scan);
      --scan->loc;
    } else {
      break;
    }
  }
  if (longs == 2 && strict_ansi_mode && !long_long_is_standard) {
    note_fault(scan, ec_nonstd_long_long, nullptr, strict_ansi_discretionary_severity);
  }
  if (is_imaginary_letter(*scan->loc)) {
    ++scan->loc;
    note_fault(scan, ec_complex_integral_type, nullptr, es_discretionary_error);
  }
}

static void scan_float_suffix(a_number_scan *scan)
{
  if (is_imaginary_letter(*scan->loc)) {
    scan->is_imaginary = true;
    ++scan->loc;
  }
  char c = *scan->loc;
  if (c == 'f' || c == 'F' || c == 'l' || c == 'L') ++scan->loc;
  if (!scan->is_imaginary && is_imaginary_letter(*scan->loc)) {
    scan->is_imaginary = true;
    ++scan->loc;
  }
}

// The end of the preprocessing number that holds what ends at `loc`.
static char *end_of_pp_number(char *loc, bool only_id_chars, bool with_signs)
{
  bool hex_floats = hex_floats_are_scanned();
  for (;;) {
    if (is_id_char(*loc)) {
      ++loc;
    } else if (only_id_chars) {
      return loc;
    } else if (*loc == '.') {
      ++loc;
    } else if ((*loc == '+' || *loc == '-') && with_signs &&
               (is_exponent_letter(loc[-1]) ||
                (hex_floats && is_binary_exponent_letter(loc[-1])))) {
      ++loc;
    } else if ((*loc == '\\' || (signed char)*loc < 0)) {
      int length;
      if (!is_identifier_char(loc, &length, false)) return loc;
      loc += length;
    } else {
      return loc;
    }
  }
}

//---------------------------------------------------------------------------------------------
// Numbers
//---------------------------------------------------------------------------------------------

static void scan_number_form(a_number_scan *scan, char *start)
{
  *scan = {};
  scan->radix = 10;
  scan->loc = start;
  if (start[0] == '0' && (start[1] == 'x' || start[1] == 'X')) {
    scan->loc += 2;
    scan_hex_body(scan, start);
  } else if (start[0] == '0' && (start[1] == 'b' || start[1] == 'B') && binary_constants_allowed) {
    scan->loc += 2;
    scan_binary_body(scan, start);
  } else {
    scan_decimal_body(scan, start);
  }
  if (scan->is_float) {
    scan_float_suffix(scan);
  } else {
    scan_integer_suffix(scan);
  }
}

static void report_at_loc(an_error_severity severity, an_error_code code, char *loc)
{
  a_source_position position = pos_curr_token;
  if (loc != nullptr) conv_line_loc_to_source_pos(loc, &position);
  pos_diagnostic(severity, code, position);
}

// In #if an integer has the widest type of its signedness.
static void widen_pp_integer()
{
  if (const_for_curr_token.kind != ck_integer) return;
  bool is_signed = int_constant_is_signed(&const_for_curr_token);
  an_integer_kind kind = is_signed ? targ_intmax_kind : targ_uintmax_kind;
  if (!c99_mode && !gcc_mode && !gpp_mode) {
    an_integer_kind literal_kind = const_for_curr_token.type->variant.integer.int_kind;
    if (literal_kind >= ik_long) return;
    kind = is_signed ? ik_long : ik_unsigned_long;
  }
  const_for_curr_token.type = integer_type(kind);
}

// Turns the spelling from start_of_curr_token to end_of_curr_token into a constant.
static int convert_number(a_number_scan *scan)
{
  bool is_error = scan->code != ec_no_error && scan->severity >= es_discretionary_error &&
                  scan->code != ec_nonstd_long_long && scan->code != ec_complex_integral_type;
  if (scan->code != ec_no_error) report_at_loc(scan->severity, scan->code, scan->code_loc);
  if (is_error) {
    set_error_constant(&const_for_curr_token);
    return scan->is_float ? tok_float_constant : tok_int_constant;
  }
  an_error_code code = ec_no_error;
  char *loc = start_of_curr_token;
  if (scan->is_float) {
    if (scan->is_hex_float && !hex_floating_point_constants_allowed) {
      diagnostic(strict_ansi_error_severity, ec_hex_fp_constant);
    }
    conv_float_literal(scan->is_hex_float, &code, &loc);
  } else {
    conv_integer_literal(scan->radix, &code, &loc);
    if (in_pp_if_expression) widen_pp_integer();
  }
  if (code != ec_no_error) report_at_loc(es_error, code, loc);
  return scan->is_float ? tok_float_constant : tok_int_constant;
}

// Rule 7.1, of the number up to `end`.  An octal constant is reported where it is written, not wherever a macro
// brings it.
static void check_number_for_misra(char *start, const char *end)
{
  if (!loc_is_in_curr_source_line(start) || start[0] != '0' || !is_digit_char(start[1])) return;
  for (const char *loc = start; loc < end; ++loc) {
    if (!is_digit_char(*loc) && strchr("uUlL", *loc) == nullptr) return;
  }
  a_source_position position;
  conv_line_loc_to_source_pos(start, &position);
  report_misra_rule(misra_required_severity, ec_misra_c_2004_7_1, position);
}

int scan_number(char *start)
{
  if (fetch_pp_tokens && C_dialect != 1) {
    curr_char_loc = end_of_pp_number(start + 1, false, true);
    if (check_misra_c_2004) check_number_for_misra(start, curr_char_loc);
    return tok_pp_number;
  }
  a_number_scan scan;
  scan_number_form(&scan, start);
  if (check_misra_c_2004) check_number_for_misra(start, scan.loc);
  if (fetch_pp_tokens) {
    curr_char_loc = end_of_pp_number(scan.loc, true, false);
    return tok_pp_number;
  }
  char *end = end_of_pp_number(scan.loc, C_dialect == 1, strict_ansi_mode);
  if (scan.code == ec_complex_integral_type) --scan.loc; // the letter is no part of the integer
  end_of_curr_token = scan.loc - 1;
  if (end > scan.loc && scan.code == ec_no_error) {
    report_at_loc(es_error, ec_extra_chars_on_number, scan.loc);
  }
  int kind = convert_number(&scan);
  curr_char_loc = end;
  return kind;
}
