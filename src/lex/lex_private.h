// lex_private.h - what the files of the scanner share among themselves.
#pragma once
#include "lex/lexical.h"
#include "lex/token_cache.h"

// Result of a scanning routine: no token yet, the scan goes on at curr_char_loc.
inline constexpr int scan_goes_on = -1;

// What the scanner does with a token's first character.
enum a_lex_action : unsigned char {
  la_bad,
  la_escape, // 0
  la_modif,  // 10
  la_white,  // vertical tab, form feed, carriage return
  la_id,
  la_id_prefix,    // L, u, U: may begin a string
  la_id_backslash, // \u where universal names are allowed
  la_multibyte,    // may begin an identifier
  la_digit,
  la_period,
  la_double_quote,
  la_single_quote,
  la_slash,
  la_sharp,
  la_lt,
  la_gt,
  la_percent,
  la_colon,
  la_minus,
  la_punct, // a punctuator of one or two characters, by the tables
  la_at,
};
extern unsigned char lex_action[256];

// Makes `start` the start of the current token.
void begin_token(char *start);

// A token of kind tok_error from start_of_curr_token up to `end`: reports `code` unless only preprocessing
// tokens are fetched; then the code is kept.
int error_token(an_error_code code, char *end);

// Each scans the token that begins at curr_char_loc, sets curr_char_loc behind it and returns its kind or
// scan_goes_on.
int scan_identifier(char *start, bool inert);
int scan_number(char *start);
int scan_string_literal(char *start, unsigned prefix_length);
int scan_char_constant(char *start, unsigned prefix_length);
int scan_header_name(char *start, char closing);

// A violation of a rule of MISRA-C:2004 in the text at hand, which may be a macro of the command line: that has no
// position, and the run goes on whatever the severity is.
void report_misra_rule(an_error_severity severity, an_error_code code, a_source_position position);

// A macro is defined or undefined at pos_curr_token: 1478 inside a function.
void check_macro_directive_for_misra();

// Passes a comment that begins at curr_char_loc.  Returns false if there is none.
bool skip_comment();
void comment_scanner_init();

// Finds the end of an identifier with universal or multibyte characters.
char *scan_extended_identifier(char *loc, char *start);
// Do the `length` bytes at `loc`, which f_mbc_length has measured, make a character?
bool is_valid_multibyte_char(const char *loc, unsigned length);
bool multibyte_id_char(const char *loc, unsigned *length, bool must_be_start);
// Notes the continuation bytes of the multibyte character at `loc`; returns its length.
unsigned pass_multibyte_char(char *loc);

// Looks at the characters behind a string: could another one follow?  May say yes wrongly.
bool another_string_may_follow();

// Stores the current token in the cache of the lexical state, which is collecting tokens.
void cache_new_token();
inline void cache_new_token_if_wanted()
{
  if (__builtin_expect(curr_lexical_state_stack_entry->caching_count > 0, 0)) cache_new_token();
}
void token_cache_one_time_init();
