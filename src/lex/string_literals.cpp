// string_literals.cpp - character constants and strings: from the spelling to target characters.
// Uses:    multibyte and UTF conversions of host_envir.h, string types of il/types.h.
// Rule:    a character is converted by one routine, conv_single_char, whatever stands around it.
// Entry:   conv_char_literal, conv_string_literal, conv_single_char, concat_adjacent_string_literals.
// See:     C99 6.4.4.4, 6.4.5; GNU extensions are marked "GNU".
#include <cstring>

#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "lex/cached_token.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/literals.h"
#include "lex/preproc.h"
#include "lex/source_input.h"
#include "lex/token_cache.h"

bool (*token_is_function_name_string_literal_hook)();

//---------------------------------------------------------------------------------------------
// One character
//---------------------------------------------------------------------------------------------

void clear_char_conversion_state(a_char_conversion_state *state, char **loc)
{
  memset(state, 0, sizeof *state);
  state->loc = loc;
  state->fault_loc = *loc;
}

static void warn_at(char *loc, an_error_code code)
{
  a_source_position position;
  conv_line_loc_to_source_pos(loc, &position);
  pos_warning(code, position);
}

static bool in_gnu_mode()
{
  return gcc_mode || gpp_mode;
}

static int hex_value(char c)
{
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// A value that doesn't fit the destination: two units in 16 bits, a message, or an error code.
static an_error_code fit_value(a_char_conversion_state *state, unsigned long *value,
                               unsigned long mask, bool is_universal)
{
  if ((*value & ~mask) == 0) return ec_no_error;
  if (state->is_16_bits && is_universal) {
    unsigned short units[2];
    if (ucn_to_utf16(*value, units) == 2) {
      *value = units[0];
      state->pending_surrogate = units[1];
      return ec_no_error;
    }
  }
  a_source_position position;
  conv_line_loc_to_source_pos(state->fault_loc, &position);
  an_error_severity severity =
      strict_ansi_mode && C_dialect != 2 ? strict_ansi_error_severity : es_warning;
  pos_diagnostic(severity, ec_bad_character_value, position);
  *value &= mask;
  return ec_no_error;
}

// Behind "\x": all hexadecimal digits count.
static an_error_code conv_hex_escape(a_char_conversion_state *state, unsigned long *value,
                                     unsigned long mask)
{
  char *loc = *state->loc;
  if (hex_value(*loc) < 0) {
    *value = 'x';
    if (C_dialect != 1 && !SVR4_C_mode) return ec_bad_hex_digit;
    warn_at(state->fault_loc, ec_bad_hex_digit);
    return ec_no_error;
  }
  unsigned long result = 0;
  bool overflow = false;
  for (; hex_value(*loc) >= 0; ++loc) {
    if (result > 0xFFFFFFF) overflow = true;
    result = (result << 4 | (unsigned)hex_value(*loc)) & 0xFFFFFFFF;
  }
  *state->loc = loc;
  *value = result;
  if (overflow && (result & ~mask) == 0) {
    an_error_severity severity =
        strict_ansi_mode && C_dialect != 2 ? strict_ansi_error_severity : es_warning;
    a_source_position position;
    conv_line_loc_to_source_pos(state->fault_loc, &position);
    pos_diagnostic(severity, ec_bad_character_value, position);
    return ec_no_error;
  }
  return fit_value(state, value, mask, false);
}

static an_error_code conv_octal_escape(a_char_conversion_state *state, unsigned long *value,
                                       unsigned long mask)
{
  unsigned long result = 0;
  for (int digits = 0; digits < 3 && **state->loc >= '0' && **state->loc <= '7'; ++digits) {
    result = result << 3 | (unsigned)(**state->loc - '0');
    ++*state->loc;
  }
  *value = result;
  return fit_value(state, value, mask, false);
}

// At the backslash of "\u" or "\U".
static an_error_code conv_universal_character(a_char_conversion_state *state, unsigned long *value,
                                              unsigned long mask, bool narrow)
{
  unsigned long code_point = scan_universal_character(state->loc, false, false, true);
  if (narrow && in_gnu_mode() && code_point > 127) {
    char bytes[8];
    unsigned length = unicode_to_utf8(code_point, bytes);
    memcpy(state->buffer, bytes, length);
    state->pending = state->buffer + 1;
    state->pending_count = length - 1;
    *value = state->buffer[0] & mask;
    return ec_no_error;
  }
  *value = code_point;
  if (narrow) {
    if (code_point > 255) warn_at(state->fault_loc, ec_character_not_latin_1);
    *value = code_point & 0xFF & mask;
    return ec_no_error;
  }
  return fit_value(state, value, mask, true);
}

// The value of a one-letter escape, or -1.
static int simple_escape_value(char c)
{
  switch (c) {
  case 'a': return C_dialect == 1 ? -1 : 7;
  case 'b': return 8;
  case 'f': return 12;
  case 'n': return 10;
  case 'r': return 13;
  case 't': return 9;
  case 'v': return 11;
  case 'e':
  case 'E': return in_gnu_mode() ? 27 : -1;
  case '\'':
  case '"':
  case '?':
  case '\\': return c;
  default: return -1;
  }
}

static void report_unknown_escape(a_char_conversion_state *state)
{
  // The scanner has reported it where it is written.
  if (check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_4_1, misra_required_severity)) {
    return;
  }
  warn_at(state->fault_loc, ec_unrecognized_char_escape);
}

// At the backslash.
static an_error_code conv_escape(a_char_conversion_state *state, unsigned long *value,
                                 unsigned long mask, bool narrow)
{
  char c = (*state->loc)[1];
  if ((c == 'u' || c == 'U') && universal_character_names_allowed) {
    return conv_universal_character(state, value, mask, narrow);
  }
  ++*state->loc;
  if (c >= '0' && c <= '7') return conv_octal_escape(state, value, mask);
  ++*state->loc;
  if (c == 'x') return conv_hex_escape(state, value, mask);
  int simple = simple_escape_value(c);
  if (simple < 0) {
    report_unknown_escape(state);
    if (c == 0) ++*state->loc; // a null character is two bytes of the line
    simple = (unsigned char)c;
  }
  *value = (unsigned long)simple & mask;
  return ec_no_error;
}

// A character of the source that isn't ASCII, in a narrow literal: its further bytes follow as they are.
static void take_multibyte_char(a_char_conversion_state *state)
{
  char *loc = *state->loc;
  unsigned length = f_mbc_length(loc);
  if (!is_valid_multibyte_char(loc, length)) warn_at(loc, ec_bad_multibyte_char);
  if (length > sizeof state->buffer) length = sizeof state->buffer;
  memcpy(state->buffer, loc, length);
  state->pending = state->buffer + 1;
  state->pending_count = length - 1;
  *state->loc = loc + length;
}

an_error_code conv_single_char(a_char_conversion_state *state, bool process_escapes,
                               unsigned long *result, unsigned long mask, bool narrow)
{
  if (state->pending_count > 0) {
    --state->pending_count;
    *result = *state->pending++ & mask;
    return ec_no_error;
  }
  if (state->pending_surrogate != 0) {
    *result = state->pending_surrogate;
    state->pending_surrogate = 0;
    return ec_no_error;
  }
  char *loc = *state->loc;
  state->fault_loc = loc;
  if (*loc == '\\' && process_escapes) {
    return conv_escape(state, result, mask, narrow);
  }
  if (*loc == 0) { // lesc_null_char
    *result = 0;
    *state->loc = loc + 2;
    return ec_no_error;
  }
  *result = (unsigned char)*loc & mask;
  if ((signed char)*loc < 0 && narrow && multibyte_chars_in_source_enabled) {
    take_multibyte_char(state);
  } else {
    *state->loc = loc + 1;
  }
  return ec_no_error;
}

//---------------------------------------------------------------------------------------------
// Prefixes and widths
//---------------------------------------------------------------------------------------------

static a_char_kind char_kind_of_prefix(char c)
{
  switch (c) {
  case 'L': return chk_wchar_t;
  case 'u': return chk_char16_t;
  case 'U': return chk_char32_t;
  default: return chk_char;
  }
}

static unsigned element_size(a_char_kind kind)
{
  switch (kind) {
  case chk_wchar_t: return targ_sizeof_wchar_t;
  case chk_char16_t: return targ_sizeof_char16_t;
  case chk_char32_t: return targ_sizeof_char32_t;
  default: return 1;
  }
}

static unsigned long mask_of_bits(unsigned bits)
{
  return bits >= 64 ? ~0ul : (1ul << bits) - 1;
}

static bool is_wide_multibyte(const char *loc)
{
  return (signed char)*loc < 0 && multibyte_chars_in_source_enabled;
}

// A character of the source in a wide literal.
static an_error_code take_wide_char(a_char_conversion_state *state, unsigned long *value,
                                    unsigned long mask)
{
  if (state->pending_surrogate != 0 || !is_wide_multibyte(*state->loc)) {
    return conv_single_char(state, true, value, mask, false);
  }
  unsigned length;
  state->fault_loc = *state->loc;
  *value = mbc_to_wide_char(*state->loc, &length);
  if (!is_valid_multibyte_char(*state->loc, length)) warn_at(*state->loc, ec_bad_multibyte_char);
  *state->loc += length;
  return fit_value(state, value, mask, true);
}

//---------------------------------------------------------------------------------------------
// Character constants
//---------------------------------------------------------------------------------------------

struct a_char_literal {
  a_char_kind kind;
  unsigned width; // bits of one character
  bool is_signed;
  unsigned long mask;
  unsigned count; // characters converted
  unsigned long long value;
  an_error_code code;
  char *code_loc;
};

static void char_fault(a_char_literal *literal, an_error_code code, char *loc)
{
  if (code == ec_no_error || literal->code != ec_no_error) return;
  literal->code = code;
  literal->code_loc = loc;
}

static void describe_char_literal(a_char_literal *literal)
{
  *literal = {};
  literal->kind = char_kind_of_prefix(*start_of_curr_token);
  switch (literal->kind) {
  case chk_wchar_t:
    literal->width = targ_sizeof_wchar_t * targ_char_bit;
    literal->is_signed = int_kind_is_signed[targ_wchar_t_int_kind];
    break;
  case chk_char16_t: literal->width = 32; break;
  case chk_char32_t: literal->width = targ_sizeof_char32_t * targ_char_bit; break;
  default:
    literal->width = targ_char_bit;
    literal->is_signed = targ_has_signed_chars;
    break;
  }
  literal->mask = mask_of_bits(literal->width);
}

static long long sign_extend(unsigned long long value, unsigned width)
{
  unsigned shift = 64 - width;
  return (long long)(value << shift) >> shift;
}

// Adds a character to the packed value.
static void pack_char(a_char_literal *literal, unsigned long character)
{
  unsigned long long extended = character;
  if (literal->is_signed) extended = (unsigned long long)sign_extend(character, literal->width);
  if (literal->count == 0) {
    literal->value = extended;
  } else if (targ_char_constant_first_char_most_significant) {
    literal->value = literal->width < 64 ? literal->value << literal->width | character : character;
  } else if (literal->count * literal->width < 64) {
    literal->value |= (unsigned long long)character << (literal->count * literal->width);
  }
  ++literal->count;
}

static void convert_chars(a_char_literal *literal)
{
  char *loc = start_of_curr_token + (literal->kind == chk_char ? 1 : 2);
  char *end = end_of_curr_token;
  a_char_conversion_state state;
  clear_char_conversion_state(&state, &loc);
  while (loc < end || state.pending_count > 0) {
    unsigned long character = 0;
    bool narrow = literal->kind == chk_char;
    an_error_code code = narrow ? conv_single_char(&state, true, &character, literal->mask, true)
                                : take_wide_char(&state, &character, literal->mask);
    char_fault(literal, code, state.fault_loc);
    if (literal->kind == chk_char16_t) {
      if (character > 0xFFFF) char_fault(literal, ec_no_char16_t_representation, state.fault_loc);
      if (literal->count == 1) char_fault(literal, ec_too_many_characters, state.fault_loc);
    }
    if (literal->kind == chk_char32_t && literal->count == 1) {
      char_fault(literal, ec_too_many_characters, state.fault_loc);
    }
    pack_char(literal, character);
  }
}

// Too many characters, or merely several.
static void check_char_count(a_char_literal *literal)
{
  bool narrow = literal->kind == chk_char;
  bool too_many = literal->count > targ_sizeof_int;
  if (narrow && too_many && !in_gnu_mode()) {
    char_fault(literal, ec_too_many_characters, start_of_curr_token);
  }
  if (literal->count < 2 || literal->code != ec_no_error) return;
  if (narrow && too_many) {
    pos_warning(ec_leading_character_ignored_in_char_literal, pos_curr_token);
  } else {
    pos_warning(narrow ? ec_multi_char_literal : ec_too_many_characters, pos_curr_token);
  }
}

static a_type *type_of_char_literal(const a_char_literal *literal)
{
  switch (literal->kind) {
  case chk_wchar_t: return eff_wchar_t_type();
  case chk_char16_t: return eff_char16_t_type();
  case chk_char32_t: return eff_char32_t_type();
  default: return integer_type(C_dialect == 2 && literal->count == 1 ? ik_char : ik_int);
  }
}

void conv_char_literal(unsigned long length, an_error_code *err, char **err_loc)
{
  (void)length;
  a_char_literal literal;
  describe_char_literal(&literal);
  convert_chars(&literal);
  check_char_count(&literal);
  *err = literal.code;
  *err_loc = literal.code_loc;
  a_constant *constant = &const_for_curr_token;
  if (literal.code != ec_no_error) {
    set_error_constant(constant);
    return;
  }
  a_type *type = type_of_char_literal(&literal);
  long long value = (long long)literal.value;
  if (literal.kind == chk_char) {
    value = sign_extend(literal.value, targ_sizeof_int * targ_char_bit);
  } else if (literal.width < 64) {
    value = literal.is_signed ? sign_extend(literal.value, literal.width)
                              : (long long)(literal.value & literal.mask);
  }
  set_integer_constant(constant, value, ik_int);
  constant->type = type;
  constant->char_kind = literal.kind;
  constant->from_literal = true;
  constant->from_character_constant = true;
}

//---------------------------------------------------------------------------------------------
// Strings
//---------------------------------------------------------------------------------------------

// Writes one element in the target's byte order.
static void put_element(char *text, unsigned long value, unsigned size)
{
  for (unsigned k = 0; k < size; ++k) {
    unsigned shift = (targ_little_endian ? k : size - 1 - k) * 8;
    text[k] = (char)(value >> shift);
  }
}

static unsigned long get_element(const char *text, unsigned size)
{
  unsigned long value = 0;
  for (unsigned k = 0; k < size; ++k) {
    unsigned shift = (targ_little_endian ? k : size - 1 - k) * 8;
    value |= (unsigned long)(unsigned char)text[k] << shift;
  }
  return value;
}

// Where escapes or other special characters are missing the text is copied as it stands.
static unsigned long copy_plain_run(char *text, char *loc, const char *end)
{
  char *from = loc;
  while (loc < end && *loc != '\\' && *loc != 0 && (signed char)*loc > 0)
    ++loc;
  memcpy(text, from, (size_t)(loc - from));
  return (unsigned long)(loc - from);
}

// Converts the characters between the quotes; returns the number of elements.
static unsigned long convert_string_elements(a_char_kind kind, char *text, an_error_code *err,
                                             char **err_loc)
{
  char *loc = start_of_curr_token + (kind == chk_char ? 1 : 2);
  char *end = end_of_curr_token;
  unsigned size = element_size(kind);
  unsigned bits = targ_host_string_char_bit * size;
  unsigned long mask = mask_of_bits(bits);
  a_char_conversion_state state;
  clear_char_conversion_state(&state, &loc);
  state.is_16_bits = kind != chk_char && bits == 16;
  unsigned long count = 0;
  while (loc < end || state.pending_count > 0 || state.pending_surrogate != 0) {
    if (kind == chk_char && state.pending_count == 0) {
      unsigned long run = copy_plain_run(text + count, loc, end);
      count += run;
      loc += run;
      if (loc >= end) break;
    }
    unsigned long value = 0;
    an_error_code code = kind == chk_char ? conv_single_char(&state, true, &value, mask, true)
                                          : take_wide_char(&state, &value, mask);
    if (code != ec_no_error && *err == ec_no_error) {
      *err = code;
      *err_loc = state.fault_loc;
    }
    put_element(text + count * size, value, size);
    ++count;
  }
  return count;
}

// Makes const_for_curr_token a string of `count` elements, the terminator included.
static void set_string_constant(a_constant *constant, char *text, unsigned long count,
                                a_char_kind kind)
{
  clear_constant(constant, ck_string);
  constant->type = string_literal_type(kind, count);
  constant->char_kind = kind;
  constant->from_literal = true;
  string_of(constant).text = text;
  string_of(constant).length = (uint64_t)count * element_size(kind);
  string_of(constant).string_literal_number = f_assign_string_literal_sequence_number();
}

void conv_string_literal(unsigned long length, an_error_code *err, char **err_loc)
{
  a_char_kind kind = char_kind_of_prefix(*start_of_curr_token);
  unsigned size = element_size(kind);
  char *text = alloc_text_of_string_literal((uint64_t)(length + 1) * size);
  *err = ec_no_error;
  *err_loc = start_of_curr_token;
  unsigned long count = convert_string_elements(kind, text, err, err_loc);
  if (*err != ec_no_error) {
    set_error_constant(&const_for_curr_token);
    const_for_curr_token.char_kind = kind;
    return;
  }
  put_element(text + count * size, 0, size);
  set_string_constant(&const_for_curr_token, text, count + 1, kind);
}

//---------------------------------------------------------------------------------------------
// Concatenation
//---------------------------------------------------------------------------------------------

void widen_string_literal(a_constant *constant)
{
  if (constant->kind != ck_string || constant->char_kind != chk_char) return;
  unsigned size = element_size(chk_wchar_t);
  uint64_t count = string_of(constant).length;
  const char *narrow = string_of(constant).text;
  char *text = alloc_text_of_string_literal(count * size);
  for (uint64_t k = 0; k < count; ++k) {
    put_element(text + k * size, (unsigned char)narrow[k], size);
  }
  unsigned number = string_of(constant).string_literal_number;
  constant->type = string_literal_type(chk_wchar_t, count);
  constant->char_kind = chk_wchar_t;
  string_of(constant).text = text;
  string_of(constant).length = count * size;
  string_of(constant).string_literal_number = number;
}

bool another_string_may_follow()
{
  const char *loc = curr_char_loc;
  while (*loc == ' ' || *loc == '\t')
    ++loc;
  switch (*loc) {
  case ')':
  case ',':
  case ';':
  case '}':
  case ']':
  case ':':
  case '[':
  case '+':
  case '=': return any_initial_get_token_tests_needed;
  default: return true;
  }
}

// What the strings gathered so far come to.
struct a_concatenation {
  a_char_kind kind;
  unsigned pieces;
  bool is_mixed; // wide strings of different kinds
};

static bool is_empty_error_string(const a_constant *constant)
{
  return constant->kind != ck_string;
}

// Adds the current string's kind to the combined one.
static void combine_kinds(a_concatenation *joined)
{
  a_char_kind kind = const_for_curr_token.char_kind;
  if (joined->pieces++ == 0) {
    joined->kind = kind;
    return;
  }
  if (kind == joined->kind || is_empty_error_string(&const_for_curr_token)) return;
  if (kind != chk_char && joined->kind != chk_char) {
    joined->is_mixed = true;
    pos_error(ec_mixed_string_concatenation, pos_curr_token);
    return;
  }
  if (!mixed_string_concat_enabled) {
    pos_diagnostic(es_discretionary_error, ec_mixed_string_concatenation, pos_curr_token);
  }
  if (joined->kind == chk_char) joined->kind = kind;
}

// Writes the elements of a string without its terminator; returns the place behind them.
static char *append_piece(char *text, const a_constant *piece, a_char_kind kind)
{
  unsigned size = element_size(kind), piece_size = element_size(piece->char_kind);
  uint64_t count = string_of(piece).length / piece_size - 1;
  const char *from = string_of(piece).text;
  if (size == piece_size) {
    memcpy(text, from, count * size);
    return text + count * size;
  }
  for (uint64_t k = 0; k < count; ++k, text += size) {
    put_element(text, get_element(from + k * piece_size, piece_size), size);
  }
  return text;
}

static bool sum_of_pieces(a_token_cache *cache, uint64_t *count)
{
  *count = 1;
  for (a_cached_token *token = cache->first; token != nullptr; token = token->next) {
    if (token->extra_kind != cte_constant) continue;
    a_constant *piece = constant_of_cached_token(token);
    if (piece->kind != ck_string) return false;
    *count += string_of(piece).length / element_size(piece->char_kind) - 1;
  }
  return true;
}

static void make_first_constant_error(a_token_cache *cache)
{
  a_cached_token *token = cache->first;
  while (token->extra_kind != cte_constant)
    token = token->next;
  set_error_constant(constant_of_cached_token(token));
}

void concat_string_literals(a_token_cache *cache, a_char_kind kind)
{
  a_cached_token *first = cache->first;
  while (first->extra_kind != cte_constant)
    first = first->next;
  a_constant *result = constant_of_cached_token(first);
  uint64_t count;
  if (!sum_of_pieces(cache, &count)) {
    set_error_constant(result);
    result->char_kind = kind;
  } else {
    unsigned size = element_size(kind);
    char *text = alloc_text_of_string_literal(count * size);
    char *place = text;
    for (a_cached_token *token = first; token != nullptr; token = token->next) {
      if (token->extra_kind != cte_constant) continue;
      place = append_piece(place, constant_of_cached_token(token), kind);
    }
    put_element(place, 0, size);
    unsigned number = string_of(result).string_literal_number;
    set_string_constant(result, text, count, kind);
    string_of(result).string_literal_number = number;
    result->is_string_from_concatenation = true;
  }
  first->end_position = cache->last->end_position;
  first->last_sequence_number = cache->last->last_sequence_number;
  drop_constant_tokens_after(first, cache);
}

static bool curr_token_counts_as_string(bool allow_function_names)
{
  if (curr_token == tok_string_literal) return true;
  return allow_function_names && token_is_function_name_string_literal_hook != nullptr &&
         token_is_function_name_string_literal_hook();
}

void concat_adjacent_string_literals(bool allow_function_names)
{
  a_token_cache strings;
  a_concatenation joined = {};
  bool saved_concatenation = do_string_literal_concatenation;
  push_lexical_state_stack();
  clear_token_cache(&strings, false);
  do_string_literal_concatenation = false;
  while (curr_token_counts_as_string(allow_function_names)) {
    combine_kinds(&joined);
    cache_curr_token(&strings);
    get_token();
  }
  do_string_literal_concatenation = saved_concatenation;
  if (joined.is_mixed) make_first_constant_error(&strings);
  if (joined.pieces > 1) concat_string_literals(&strings, joined.kind);
  pop_lexical_state_stack();
  rescan_cached_tokens(&strings);
}
