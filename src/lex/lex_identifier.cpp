// lex_identifier.cpp - identifiers, keywords, universal and multibyte characters in names.
// Uses:    headers and symbols (parse/symbol_tbl.h), macro invocation.
// Rule:    a name has one spelling in the symbol table, however its characters were written.
// Entry:   scan_identifier, scan_universal_character, make_canonical_identifier, enter_keywords.
// See:     C99 6.4.2, 6.4.3, annex D.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwctype>

#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/preproc.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"
#include "parse/symbol_tbl.h"

struct a_ucn_range {
  unsigned short first, last;
  bool not_at_start; // digits
};

// Characters outside the basic set that identifiers may hold (C99 annex D).
// clang-format off
static const a_ucn_range ucn_ranges[] = {
  {0x00aa, 0x00aa, 0}, {0x00b5, 0x00b5, 0}, {0x00b7, 0x00b7, 0}, {0x00ba, 0x00ba, 0},
  {0x00c0, 0x00d6, 0}, {0x00d8, 0x00f6, 0}, {0x00f8, 0x01f5, 0}, {0x01fa, 0x0217, 0},
  {0x0250, 0x02a8, 0}, {0x02b0, 0x02b8, 0}, {0x02bb, 0x02bb, 0}, {0x02bd, 0x02c1, 0},
  {0x02d0, 0x02d1, 0}, {0x02e0, 0x02e4, 0}, {0x037a, 0x037a, 0}, {0x0386, 0x0386, 0},
  {0x0388, 0x038a, 0}, {0x038c, 0x038c, 0}, {0x038e, 0x03a1, 0}, {0x03a3, 0x03ce, 0},
  {0x03d0, 0x03d6, 0}, {0x03da, 0x03da, 0}, {0x03dc, 0x03dc, 0}, {0x03de, 0x03de, 0},
  {0x03e0, 0x03e0, 0}, {0x03e2, 0x03f3, 0}, {0x0401, 0x040c, 0}, {0x040e, 0x044f, 0},
  {0x0451, 0x045c, 0}, {0x045e, 0x0481, 0}, {0x0490, 0x04c4, 0}, {0x04c7, 0x04c8, 0},
  {0x04cb, 0x04cc, 0}, {0x04d0, 0x04eb, 0}, {0x04ee, 0x04f5, 0}, {0x04f8, 0x04f9, 0},
  {0x0531, 0x0556, 0}, {0x0559, 0x0559, 0}, {0x0561, 0x0587, 0}, {0x05b0, 0x05b9, 0},
  {0x05bb, 0x05bd, 0}, {0x05bf, 0x05bf, 0}, {0x05c1, 0x05c2, 0}, {0x05d0, 0x05ea, 0},
  {0x05f0, 0x05f2, 0}, {0x0621, 0x063a, 0}, {0x0640, 0x0652, 0}, {0x0660, 0x0669, 1},
  {0x0670, 0x06b7, 0}, {0x06ba, 0x06be, 0}, {0x06c0, 0x06ce, 0}, {0x06d0, 0x06dc, 0},
  {0x06e5, 0x06e8, 0}, {0x06ea, 0x06ed, 0}, {0x06f0, 0x06f9, 1}, {0x0901, 0x0903, 0},
  {0x0905, 0x0939, 0}, {0x093d, 0x093d, 0}, {0x093e, 0x094d, 0}, {0x0950, 0x0952, 0},
  {0x0958, 0x0963, 0}, {0x0966, 0x096f, 1}, {0x0981, 0x0983, 0}, {0x0985, 0x098c, 0},
  {0x098f, 0x0990, 0}, {0x0993, 0x09a8, 0}, {0x09aa, 0x09b0, 0}, {0x09b2, 0x09b2, 0},
  {0x09b6, 0x09b9, 0}, {0x09be, 0x09c4, 0}, {0x09c7, 0x09c8, 0}, {0x09cb, 0x09cd, 0},
  {0x09dc, 0x09dd, 0}, {0x09df, 0x09e3, 0}, {0x09e6, 0x09ef, 1}, {0x09f0, 0x09f1, 0},
  {0x0a02, 0x0a02, 0}, {0x0a05, 0x0a0a, 0}, {0x0a0f, 0x0a10, 0}, {0x0a13, 0x0a28, 0},
  {0x0a2a, 0x0a30, 0}, {0x0a32, 0x0a33, 0}, {0x0a35, 0x0a36, 0}, {0x0a38, 0x0a39, 0},
  {0x0a3e, 0x0a42, 0}, {0x0a47, 0x0a48, 0}, {0x0a4b, 0x0a4d, 0}, {0x0a59, 0x0a5c, 0},
  {0x0a5e, 0x0a5e, 0}, {0x0a66, 0x0a6f, 1}, {0x0a74, 0x0a74, 0}, {0x0a81, 0x0a83, 0},
  {0x0a85, 0x0a8b, 0}, {0x0a8d, 0x0a8d, 0}, {0x0a8f, 0x0a91, 0}, {0x0a93, 0x0aa8, 0},
  {0x0aaa, 0x0ab0, 0}, {0x0ab2, 0x0ab3, 0}, {0x0ab5, 0x0ab9, 0}, {0x0abd, 0x0ac5, 0},
  {0x0ac7, 0x0ac9, 0}, {0x0acb, 0x0acd, 0}, {0x0ad0, 0x0ad0, 0}, {0x0ae0, 0x0ae0, 0},
  {0x0ae6, 0x0aef, 1}, {0x0b01, 0x0b03, 0}, {0x0b05, 0x0b0c, 0}, {0x0b0f, 0x0b10, 0},
  {0x0b13, 0x0b28, 0}, {0x0b2a, 0x0b30, 0}, {0x0b32, 0x0b33, 0}, {0x0b36, 0x0b39, 0},
  {0x0b3d, 0x0b3d, 0}, {0x0b3e, 0x0b43, 0}, {0x0b47, 0x0b48, 0}, {0x0b4b, 0x0b4d, 0},
  {0x0b5c, 0x0b5d, 0}, {0x0b5f, 0x0b61, 0}, {0x0b66, 0x0b6f, 1}, {0x0b82, 0x0b83, 0},
  {0x0b85, 0x0b8a, 0}, {0x0b8e, 0x0b90, 0}, {0x0b92, 0x0b95, 0}, {0x0b99, 0x0b9a, 0},
  {0x0b9c, 0x0b9c, 0}, {0x0b9e, 0x0b9f, 0}, {0x0ba3, 0x0ba4, 0}, {0x0ba8, 0x0baa, 0},
  {0x0bae, 0x0bb5, 0}, {0x0bb7, 0x0bb9, 0}, {0x0bbe, 0x0bc2, 0}, {0x0bc6, 0x0bc8, 0},
  {0x0bca, 0x0bcd, 0}, {0x0be7, 0x0bef, 1}, {0x0c01, 0x0c03, 0}, {0x0c05, 0x0c0c, 0},
  {0x0c0e, 0x0c10, 0}, {0x0c12, 0x0c28, 0}, {0x0c2a, 0x0c33, 0}, {0x0c35, 0x0c39, 0},
  {0x0c3e, 0x0c44, 0}, {0x0c46, 0x0c48, 0}, {0x0c4a, 0x0c4d, 0}, {0x0c60, 0x0c61, 0},
  {0x0c66, 0x0c6f, 1}, {0x0c82, 0x0c83, 0}, {0x0c85, 0x0c8c, 0}, {0x0c8e, 0x0c90, 0},
  {0x0c92, 0x0ca8, 0}, {0x0caa, 0x0cb3, 0}, {0x0cb5, 0x0cb9, 0}, {0x0cbe, 0x0cc4, 0},
  {0x0cc6, 0x0cc8, 0}, {0x0cca, 0x0ccd, 0}, {0x0cde, 0x0cde, 0}, {0x0ce0, 0x0ce1, 0},
  {0x0ce6, 0x0cef, 1}, {0x0d02, 0x0d03, 0}, {0x0d05, 0x0d0c, 0}, {0x0d0e, 0x0d10, 0},
  {0x0d12, 0x0d28, 0}, {0x0d2a, 0x0d39, 0}, {0x0d3e, 0x0d43, 0}, {0x0d46, 0x0d48, 0},
  {0x0d4a, 0x0d4d, 0}, {0x0d60, 0x0d61, 0}, {0x0d66, 0x0d6f, 1}, {0x0e01, 0x0e3a, 0},
  {0x0e40, 0x0e4f, 0}, {0x0e50, 0x0e59, 1}, {0x0e5a, 0x0e5b, 0}, {0x0e81, 0x0e82, 0},
  {0x0e84, 0x0e84, 0}, {0x0e87, 0x0e88, 0}, {0x0e8a, 0x0e8a, 0}, {0x0e8d, 0x0e8d, 0},
  {0x0e94, 0x0e97, 0}, {0x0e99, 0x0e9f, 0}, {0x0ea1, 0x0ea3, 0}, {0x0ea5, 0x0ea5, 0},
  {0x0ea7, 0x0ea7, 0}, {0x0eaa, 0x0eab, 0}, {0x0ead, 0x0eae, 0}, {0x0eb0, 0x0eb9, 0},
  {0x0ebb, 0x0ebd, 0}, {0x0ec0, 0x0ec4, 0}, {0x0ec6, 0x0ec6, 0}, {0x0ec8, 0x0ecd, 0},
  {0x0ed0, 0x0ed9, 1}, {0x0edc, 0x0edd, 0}, {0x0f00, 0x0f00, 0}, {0x0f18, 0x0f19, 0},
  {0x0f20, 0x0f33, 1}, {0x0f35, 0x0f35, 0}, {0x0f37, 0x0f37, 0}, {0x0f39, 0x0f39, 0},
  {0x0f3e, 0x0f47, 0}, {0x0f49, 0x0f69, 0}, {0x0f71, 0x0f84, 0}, {0x0f86, 0x0f8b, 0},
  {0x0f90, 0x0f95, 0}, {0x0f97, 0x0f97, 0}, {0x0f99, 0x0fad, 0}, {0x0fb1, 0x0fb7, 0},
  {0x0fb9, 0x0fb9, 0}, {0x10a0, 0x10c5, 0}, {0x10d0, 0x10f6, 0}, {0x1e00, 0x1e9b, 0},
  {0x1ea0, 0x1ef9, 0}, {0x1f00, 0x1f15, 0}, {0x1f18, 0x1f1d, 0}, {0x1f20, 0x1f45, 0},
  {0x1f48, 0x1f4d, 0}, {0x1f50, 0x1f57, 0}, {0x1f59, 0x1f59, 0}, {0x1f5b, 0x1f5b, 0},
  {0x1f5d, 0x1f5d, 0}, {0x1f5f, 0x1f7d, 0}, {0x1f80, 0x1fb4, 0}, {0x1fb6, 0x1fbc, 0},
  {0x1fbe, 0x1fbe, 0}, {0x1fc2, 0x1fc4, 0}, {0x1fc6, 0x1fcc, 0}, {0x1fd0, 0x1fd3, 0},
  {0x1fd6, 0x1fdb, 0}, {0x1fe0, 0x1fec, 0}, {0x1ff2, 0x1ff4, 0}, {0x1ff6, 0x1ffc, 0},
  {0x203f, 0x2040, 0}, {0x207f, 0x207f, 0}, {0x2102, 0x2102, 0}, {0x2107, 0x2107, 0},
  {0x210a, 0x2113, 0}, {0x2115, 0x2115, 0}, {0x2118, 0x211d, 0}, {0x2124, 0x2124, 0},
  {0x2126, 0x2126, 0}, {0x2128, 0x2128, 0}, {0x212a, 0x2131, 0}, {0x2133, 0x2138, 0},
  {0x2160, 0x2182, 0}, {0x3005, 0x3007, 0}, {0x3021, 0x3029, 0}, {0x3041, 0x3093, 0},
  {0x309b, 0x309c, 0}, {0x30a1, 0x30f6, 0}, {0x30fb, 0x30fc, 0}, {0x3105, 0x312c, 0},
  {0x4e00, 0x9fa5, 0}, {0xac00, 0xd7a3, 0},
};
// clang-format on

static a_text_buffer *canonical_name_buffer;
static a_symbol_header *va_args_header; // of __VA_ARGS__

//---------------------------------------------------------------------------------------------
// Universal characters
//---------------------------------------------------------------------------------------------

bool ucn_is_identifier_char(unsigned long code_point, bool *not_at_start)
{
  unsigned low = 0, high = sizeof ucn_ranges / sizeof ucn_ranges[0];
  while (low < high) {
    unsigned middle = (low + high) / 2;
    if (code_point > ucn_ranges[middle].last) {
      low = middle + 1;
    } else if (code_point < ucn_ranges[middle].first) {
      high = middle;
    } else {
      *not_at_start = ucn_ranges[middle].not_at_start;
      return true;
    }
  }
  return false;
}

static bool in_basic_set(unsigned long code_point)
{
  if (code_point >= 128) return false;
  if (code_point >= '\t' && code_point <= '\f') return true;
  return code_point >= 32 && code_point < 127 && code_point != '$' && code_point != '@' &&
         code_point != '`';
}

static an_error_code check_ucn_in_c(unsigned long code_point, bool in_identifier)
{
  if (code_point < 160) {
    bool allowed = code_point == '$' || code_point == '@' || code_point == '`';
    if (in_identifier) allowed = code_point == '$' && allow_dollar_in_id_chars;
    if (!allowed) return ec_UCN_names_basic_char;
  }
  if (code_point >= 0xD800 && code_point <= 0xDFFF) return ec_UCN_names_surrogate_code_point;
  if (code_point > 0x10FFFF) return ec_UCN_names_invalid_code_point;
  return ec_no_error;
}

static an_error_code check_ucn_in_cplusplus(unsigned long code_point)
{
  bool new_rules = cpp11_mode || uliterals_enabled;
  if (code_point < 256 && in_basic_set(code_point)) return ec_UCN_names_basic_char;
  if (!new_rules) {
    bool is_control = code_point < 32 || (code_point >= 127 && code_point <= 159);
    return is_control ? ec_invalid_UCN : ec_no_error;
  }
  if (code_point >= 0xD800 && code_point <= 0xDFFF) return ec_UCN_names_surrogate_code_point;
  if (code_point > 0x10FFFF) return ec_UCN_names_invalid_code_point;
  return ec_no_error;
}

static an_error_code check_ucn(unsigned long code_point, bool in_identifier, bool at_start)
{
  an_error_code code = C_dialect == 2 ? check_ucn_in_cplusplus(code_point)
                                      : check_ucn_in_c(code_point, in_identifier);
  if (code != ec_no_error || !in_identifier) return code;
  if (code_point == '$' && allow_dollar_in_id_chars) return ec_no_error;
  bool not_at_start;
  if (!ucn_is_identifier_char(code_point, &not_at_start)) return ec_invalid_identifier_UCN;
  return at_start && not_at_start ? ec_invalid_identifier_start_UCN : ec_no_error;
}

static int hex_digit_value(char c)
{
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

unsigned long scan_universal_character(char **loc, bool in_identifier, bool at_identifier_start,
                                       bool report)
{
  char *start = *loc;
  char *digit = start + 2;
  unsigned long value = 0;
  an_error_code code = ec_no_error;
  for (int count = start[1] == 'u' ? 4 : 8; count > 0; --count, ++digit) {
    int digit_value = hex_digit_value(*digit);
    if (digit_value < 0) {
      code = ec_malformed_universal_character;
      break;
    }
    value = value << 4 | (unsigned)digit_value;
  }
  *loc = digit;
  if (!report || currently_in_pp_if_skip || building_pch_prefix) return value;
  a_source_position position;
  conv_line_loc_to_source_pos(start, &position);
  if (code != ec_no_error) {
    pos_error(code, position);
    return value;
  }
  code = check_ucn(value, in_identifier, at_identifier_start);
  if (code != ec_no_error) pos_diagnostic(strict_ansi_error_severity, code, position);
  return value;
}

//---------------------------------------------------------------------------------------------
// Multibyte characters
//---------------------------------------------------------------------------------------------

unsigned pass_multibyte_char(char *loc)
{
  unsigned length = f_mbc_length(loc);
  if (loc_is_in_curr_source_line(loc)) {
    for (unsigned k = 1; k < length; ++k)
      add_logical_char_info(loc + k);
  }
  return length;
}

bool is_valid_multibyte_char(const char *loc, unsigned length)
{
  return length > 1 || MB_CUR_MAX == 1 || (signed char)*loc >= 0;
}

bool multibyte_id_char(const char *loc, unsigned *length, bool must_be_start)
{
  unsigned long character = mbc_to_wide_char(loc, length);
  if (!is_valid_multibyte_char(loc, *length)) return false;
  if (iswalpha((wint_t)character)) return true;
  return !must_be_start && iswdigit((wint_t)character);
}

bool is_identifier_char(const char *loc, int *length, bool must_be_start)
{
  *length = 1;
  if (must_be_start ? is_id_start_char(*loc) : is_id_char(*loc)) return true;
  if (*loc == '\\' && (loc[1] == 'u' || loc[1] == 'U') && universal_character_names_allowed) {
    char *end = const_cast<char *>(loc);
    scan_universal_character(&end, true, must_be_start, false);
    *length = (int)(end - loc);
    return true;
  }
  if ((signed char)*loc < 0 && multibyte_chars_in_source_enabled) {
    unsigned bytes;
    bool found = multibyte_id_char(loc, &bytes, must_be_start);
    *length = (int)bytes;
    return found;
  }
  return false;
}

bool is_nonstandard_character(char c)
{
  return !in_basic_set((unsigned char)c);
}

bool same_string_ignoring_underscores(const char *a, const char *b)
{
  size_t a_length = strlen(a), b_length = strlen(b);
  while (*a == '_')
    ++a, --a_length;
  while (*b == '_')
    ++b, --b_length;
  while (a_length > 0 && a[a_length - 1] == '_')
    --a_length;
  while (b_length > 0 && b[b_length - 1] == '_')
    --b_length;
  return a_length == b_length && memcmp(a, b, a_length) == 0;
}

char *scan_extended_identifier(char *loc, char *start)
{
  for (;;) {
    if (is_id_char(*loc)) {
      ++loc;
    } else if (*loc == '\\' && (loc[1] == 'u' || loc[1] == 'U') &&
               universal_character_names_allowed) {
      id_contains_ucn_or_multibyte_char = true;
      scan_universal_character(&loc, true, loc == start, true);
    } else if ((signed char)*loc < 0 && multibyte_chars_in_source_enabled) {
      unsigned length;
      if (!multibyte_id_char(loc, &length, loc == start)) return loc;
      id_contains_ucn_or_multibyte_char = true;
      loc += pass_multibyte_char(loc);
    } else {
      return loc;
    }
  }
}

// Appends a character in the form that names have in the symbol table: that of a universal character name,
// so that a name is the same whether the character stands in the source or is named there.
static void add_canonical_char(unsigned long character)
{
  char text[12];
  int length = character <= 0xFFFF ? snprintf(text, sizeof text, "\\u%04lx", character)
                                   : snprintf(text, sizeof text, "\\U%08lx", character);
  add_to_text_buffer(canonical_name_buffer, text, (size_t)length);
}

char *make_canonical_identifier(char *text, unsigned *length)
{
  if (canonical_name_buffer == nullptr) canonical_name_buffer = alloc_text_buffer(256);
  reset_text_buffer(canonical_name_buffer);
  for (char *end = text + *length; text < end;) {
    if (*text == '\\') {
      add_canonical_char(scan_universal_character(&text, true, false, false));
    } else if ((signed char)*text < 0 && multibyte_chars_in_source_enabled) {
      unsigned bytes;
      add_canonical_char(mbc_to_wide_char(text, &bytes));
      text += bytes;
    } else {
      add_char_to_text_buffer(canonical_name_buffer, *text++);
    }
  }
  *length = (unsigned)canonical_name_buffer->size;
  add_char_to_text_buffer(canonical_name_buffer, '\0');
  return canonical_name_buffer->buffer;
}

//---------------------------------------------------------------------------------------------
// Identifiers
//---------------------------------------------------------------------------------------------

// The identifier is a macro: its expansion is attached and the scan goes on, or a token comes of it.
static int invoke_macro(a_symbol *macro, a_symbol_header *header)
{
  char *start = start_of_curr_token;
  a_source_position position = pos_curr_token;
  bool attached = false;
  end_of_curr_token = curr_char_loc - 1;
  len_of_curr_token = (unsigned)(curr_char_loc - start);
  curr_token = tok_identifier;
  if (check_concatenations && !loc_is_in_curr_source_line(start)) {
    check_concatenation_at(start, end_of_curr_token);
  }
  a_token_kind kind = macro_invocation(macro, &attached);
  if (attached || kind == tok_error) return scan_goes_on;
  if (kind == tok_identifier || kind == tok_int_constant) {
    pos_curr_token = error_position = position;
    locator_for_curr_id = cleared_locator;
    locator_for_curr_id.header = header;
    locator_for_curr_id.position = position;
  }
  return kind;
}

// What a keyword's symbol carries: the token, whether directives know the word, and the code of the message
// that is due at the first use of a word without a meaning.
static a_token_kind token_of_keyword(a_symbol *keyword)
{
  check(keyword->kind == sk_keyword);
  return (a_token_kind)keyword->variant.keyword.token;
}

static unsigned char &pp_flag_of_keyword(a_symbol *keyword)
{
  check(keyword->kind == sk_keyword);
  return keyword->variant.keyword.flag_1;
}

static void *&message_of_keyword(a_symbol *keyword)
{
  check(keyword->kind == sk_keyword);
  return keyword->variant.keyword.pointer;
}

static bool keyword_counts(a_symbol *keyword)
{
  if (fetch_pp_tokens || suppress_keyword_recognition) return false;
  if (!in_preprocessing_directive) return true;
  if (pp_flag_of_keyword(keyword) != 0) return true;
  if (caching_pragma_tokens && recognize_keywords_in_pragma) return true;
  a_token_kind kind = token_of_keyword(keyword);
  return in_pp_if_expression && (kind == tok_true || kind == tok_false);
}

// The word is reserved but has no meaning here: said once, and it stays a name.
static void report_unimplemented_keyword(a_symbol *keyword)
{
  int code = (int)(intptr_t)message_of_keyword(keyword);
  if (code == 0) return;
  sym_diagnostic(strict_ansi_mode ? strict_ansi_error_severity : es_remark, (an_error_code)code,
                 keyword);
  message_of_keyword(keyword) = nullptr;
}

// The kind of an identifier that is a keyword, or tok_identifier.
static int keyword_token(a_symbol *keyword)
{
  if (!keyword_counts(keyword)) return tok_identifier;
  a_token_kind kind = token_of_keyword(keyword);
  if (kind == tok_unimplemented) {
    report_unimplemented_keyword(keyword);
    return tok_identifier;
  }
  if (kind == tok_true || kind == tok_false) {
    set_integer_constant(&const_for_curr_token, kind == tok_true, targ_bool_int_kind);
    const_for_curr_token.type = bool_type();
    const_for_curr_token.is_true_false_keyword = true;
  }
  return kind;
}

// A name in #if that is no macro counts as 0.
static int pp_zero_token()
{
  make_pp_int_constant(0);
  const_for_curr_token.from_pp_identifier = true;
  return tok_int_constant;
}

int scan_identifier(char *start, bool inert)
{
  char *loc = start;
  id_contains_ucn_or_multibyte_char = false;
  while (is_id_char(*loc))
    ++loc;
  if (__builtin_expect(*loc == '\\' || (signed char)*loc < 0, 0)) {
    loc = scan_extended_identifier(loc, start);
  }
  curr_char_loc = loc;
  if ((fetch_pp_tokens || in_preprocessing_directive) && !expand_macros && !caching_pragma_tokens) {
    return tok_identifier;
  }
  a_symbol_header *header;
  if (__builtin_expect(id_contains_ucn_or_multibyte_char, 0)) {
    unsigned length = (unsigned)(loc - start);
    const char *name = make_canonical_identifier(start, &length);
    header = find_symbol_header(name, length);
    il_header.canonical_ids_used = true;
  } else {
    header = find_symbol_header(start, (uint32_t)(loc - start));
  }
  locator_for_curr_id = cleared_locator;
  locator_for_curr_id.header = header;
  locator_for_curr_id.position = pos_curr_token;
  if (__builtin_expect(header == va_args_header, 0) && variadic_macros_allowed) {
    error(ec_VA_ARGS_not_allowed);
  }
  if (header->macro_symbol != nullptr && expand_macros && !inert) {
    int kind = invoke_macro(header->macro_symbol, header);
    if (kind != tok_identifier) return kind; // otherwise the name is no call: a word as any other
  }
  if (header->keyword_symbol != nullptr) {
    int kind = keyword_token(header->keyword_symbol);
    if (kind != tok_identifier) return kind;
  }
  return in_pp_if_expression ? pp_zero_token() : (int)tok_identifier;
}

//---------------------------------------------------------------------------------------------
// Keywords
//---------------------------------------------------------------------------------------------

void enter_gnu_keyword(a_token_kind kind, const char *name)
{
  char text[64];
  if (name[0] == '_') {
    enter_keyword(kind, name);
    snprintf(text, sizeof text, "%s__", name);
    enter_keyword(kind, text);
    return;
  }
  if (nonstd_gnu_keywords_enabled) enter_keyword(kind, name);
  snprintf(text, sizeof text, "__%s", name);
  enter_keyword(kind, text);
  snprintf(text, sizeof text, "__%s__", name);
  enter_keyword(kind, text);
}

static void enter_pp_keyword(a_token_kind kind, const char *name)
{
  pp_flag_of_keyword(enter_keyword(kind, name)) = 1;
}

static void enter_reserved_keyword(bool enabled, a_token_kind kind, const char *name)
{
  if (enabled) {
    enter_keyword(kind, name);
  } else {
    a_symbol *symbol = enter_keyword(tok_unimplemented, name);
    message_of_keyword(symbol) = (void *)(intptr_t)ec_unimplemented_keyword;
  }
}

void enter_keywords()
{
  bool gnu = gcc_mode || gpp_mode;
#define KEYWORD(condition, kind, name)                                                             \
  if (condition) enter_keyword(kind, name);
#define GNU_KEYWORD(condition, kind, name)                                                         \
  if (condition) enter_gnu_keyword(kind, name);
#define PP_KEYWORD(condition, kind, name)                                                          \
  if (condition) enter_pp_keyword(kind, name);
#define RESERVED_KEYWORD(language, condition, kind, name)                                          \
  if (language) enter_reserved_keyword(condition, kind, name);
#include "lex/keywords.def"
  va_args_header = find_symbol_header("__VA_ARGS__", 11);
}
