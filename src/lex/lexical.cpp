// lexical.cpp - the token scanner's main switch.
// Owns:    the globals of the current token and the scanner's modes.
// Uses:    lines and modifications (source_input.h), macros, directives, token caches.
// Rule:    bad characters never stop the scan: they become tokens of kind tok_error.
// Entry:   get_token.
#include "lex/lexical.h"

#include "driver/flags.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "il/il_entities.h"
#include "lex/lex_private.h"
#include "lex/literals.h"
#include "lex/macro.h"
#include "lex/preproc.h"
#include "lex/source_input.h"
#include "lex/token_cache.h"
#include "mem/registered_vars.h"
#include "parse/symbol_tbl.h"

a_token_kind curr_token;
char *start_of_curr_token;
char *end_of_curr_token;
unsigned len_of_curr_token;
a_source_position pos_curr_token;
a_source_position end_pos_curr_token;
a_constant const_for_curr_token;
a_symbol_locator locator_for_curr_id;
const char *curr_token_asm_string;
unsigned curr_token_sequence_number;
unsigned last_token_sequence_number_of_token;
unsigned last_token_sequence_number_used;
a_cached_token *curr_cached_token_handle;
a_pending_pragma *curr_token_pragmas;
bool curr_token_is_inert_macro;
bool curr_token_is_temporarily_inert_macro;
an_error_code err_code_for_error_token;
bool id_contains_ucn_or_multibyte_char;
bool any_tokens_fetched_from_curr_input_file;
unsigned char kind_of_white_space_skipped;

bool fetch_pp_tokens;
bool expand_macros;
bool in_preprocessing_directive;
bool treat_newline_as_token;
bool in_pp_if_expression;
bool exp_header_name;
bool exp_system_header_name;
bool exp_digit_sequence;
bool suppress_keyword_recognition;
bool caching_pragma_tokens;
bool recognize_keywords_in_pragma;
bool do_string_literal_concatenation;
bool any_initial_get_token_tests_needed;
bool token_seen_on_line;
bool building_pch_prefix;

unsigned char char_class[256];
unsigned char lex_action[256];

const char *const token_names[tok_last + 1] = {
#define TOKEN(kind, spelling) spelling,
#include "lex/tokens.def"
    "",
};

//---------------------------------------------------------------------------------------------
// Kinds of tokens
//---------------------------------------------------------------------------------------------

bool is_keyword_token(a_token_kind kind)
{
  return kind >= tok_lbracket && is_id_start_char(token_names[kind][0]);
}

//---------------------------------------------------------------------------------------------
// Small steps of the scan
//---------------------------------------------------------------------------------------------

void begin_token(char *start)
{
  start_of_curr_token = start;
  conv_line_loc_to_source_pos(start, &pos_curr_token);
  error_position = pos_curr_token;
}

int error_token(an_error_code code, char *end)
{
  err_code_for_error_token = code;
  if (!fetch_pp_tokens) error(code);
  curr_char_loc = end;
  return tok_error;
}

// A punctuator of `length` characters.
static inline int punctuator(a_token_kind kind, char *start, unsigned length)
{
  curr_char_loc = start + length;
  return kind;
}

// The end of the source is placed at the last real character of the line; behind the last file's last line
// it has a number of its own, by which messages know it.
static int end_of_source_token(char *loc)
{
  char *place = loc;
  if (loc_is_in_curr_source_line(loc)) {
    if (loc - curr_source_line >= 2 && loc[-2] == 0 && loc[-1] == lesc_newline) {
      place = loc - 2;
    } else if (loc > curr_source_line) {
      place = loc - 1;
    }
  }
  begin_token(place);
  if (no_more_input && pos_curr_token.seq == seq_number_last_read) {
    ++pos_curr_token.seq;
    error_position = pos_curr_token;
  }
  start_of_curr_token = loc;
  return tok_end_of_source;
}

// A character without a meaning.
static int scan_bad_character(char *start)
{
  begin_token(start);
  unsigned length = 1;
  if (multibyte_chars_in_source_enabled && (signed char)*start < 0) {
    length = pass_multibyte_char(start);
  }
  return error_token(ec_bad_token, start + length);
}

//---------------------------------------------------------------------------------------------
// Escapes and modifications
//---------------------------------------------------------------------------------------------

// At the character 0: passes what is no token.  Notes marks of inert macros.
static int scan_escape(char *loc, bool *inert, bool *temporarily_inert)
{
  switch (loc[1]) {
  case lesc_newline:
    if (in_preprocessing_directive || treat_newline_as_token) {
      begin_token(loc);
      return tok_newline;
    }
    break;
  case lesc_token_separator: curr_char_loc = loc + 2; return scan_goes_on;
  case lesc_inert_macro:
    *inert = true;
    curr_char_loc = loc + 2;
    return scan_goes_on;
  case lesc_temp_inert_macro:
    *temporarily_inert = true;
    curr_char_loc = loc + 2;
    return scan_goes_on;
  case lesc_comma_from_arg:
    comma_is_from_argument = true;
    curr_char_loc = loc + 2;
    return scan_goes_on;
  case lesc_end_of_buffer:
  case lesc_end_of_modif:
  case lesc_end_of_invocation:
  case lesc_null_char: break;
  default: begin_token(loc); return error_token(ec_bad_token, loc + 2);
  }
  skip_white_space();
  loc = curr_char_loc;
  if (loc[0] == 0 && (loc[1] == lesc_end_of_buffer || loc[1] == lesc_end_of_modif)) {
    return end_of_source_token(loc);
  }
  return scan_goes_on;
}

//---------------------------------------------------------------------------------------------
// Punctuators
//---------------------------------------------------------------------------------------------

// Punctuators that have no more than two characters: the kind of the first alone, and for up to two
// second characters the kind of both.
struct a_punctuator_row {
  unsigned char first;
  unsigned char second[2];
  a_token_kind alone;
  a_token_kind with_second[2];
};

static const a_punctuator_row punctuator_rows[] = {
    {'[', {0, 0}, tok_lbracket, {tok_error, tok_error}},
    {']', {0, 0}, tok_rbracket, {tok_error, tok_error}},
    {'(', {0, 0}, tok_lparen, {tok_error, tok_error}},
    {')', {0, 0}, tok_rparen, {tok_error, tok_error}},
    {'{', {0, 0}, tok_lbrace, {tok_error, tok_error}},
    {'}', {0, 0}, tok_rbrace, {tok_error, tok_error}},
    {',', {0, 0}, tok_comma, {tok_error, tok_error}},
    {';', {0, 0}, tok_semicolon, {tok_error, tok_error}},
    {'?', {0, 0}, tok_quest_mark, {tok_error, tok_error}},
    {'~', {0, 0}, tok_compl, {tok_error, tok_error}},
    {'+', {'+', '='}, tok_plus, {tok_plus_plus, tok_plus_assign}},
    {'&', {'&', '='}, tok_ampersand, {tok_and_and, tok_and_assign}},
    {'|', {'|', '='}, tok_or, {tok_or_or, tok_or_assign}},
    {'*', {'=', 0}, tok_star, {tok_times_assign, tok_error}},
    {'=', {'=', 0}, tok_assign, {tok_eq, tok_error}},
    {'!', {'=', 0}, tok_not, {tok_ne, tok_error}},
    {'^', {'=', 0}, tok_excl_or, {tok_excl_or_assign, tok_error}},
};

static unsigned char punctuator_row_of[256]; // by first character

static inline int scan_punctuator(char *start)
{
  const a_punctuator_row *row = &punctuator_rows[punctuator_row_of[(unsigned char)*start]];
  unsigned char next = (unsigned char)start[1];
  if (next != 0) {
    if (next == row->second[0]) return punctuator(row->with_second[0], start, 2);
    if (next == row->second[1]) return punctuator(row->with_second[1], start, 2);
  }
  return punctuator(row->alone, start, 1);
}

// "<:" and what begins with it: C++ programs that mean "<" and "::" are warned.
static int scan_lbracket_digraph(char *start)
{
  if (C_dialect == 2 && start[2] == ':' && start[3] != ':' && start[3] != '>' && !fetch_pp_tokens) {
    warning(ec_probable_inadvertent_lbracket_digraph);
  }
  return punctuator(tok_lbracket, start, 2);
}

static int scan_less(char *start)
{
  if (exp_system_header_name) return scan_header_name(start, '>');
  switch (start[1]) {
  case '<':
    if (start[2] == '=') return punctuator(tok_shift_left_assign, start, 3);
    return punctuator(tok_shift_left, start, 2);
  case '=': return punctuator(tok_le, start, 2);
  case '%':
    if (alternative_tokens_allowed) return punctuator(tok_lbrace, start, 2);
    break;
  case ':':
    if (alternative_tokens_allowed) return scan_lbracket_digraph(start);
    break;
  case '?':
    if (gpp_mode) return punctuator(tok_gnu_min, start, 2);
    break;
  }
  return punctuator(tok_lt, start, 1);
}

static int scan_greater(char *start)
{
  switch (start[1]) {
  case '>':
    if (start[2] == '=') return punctuator(tok_shift_right_assign, start, 3);
    return punctuator(tok_shift_right, start, 2);
  case '=': return punctuator(tok_ge, start, 2);
  case '?':
    if (gpp_mode) return punctuator(tok_gnu_max, start, 2);
    break;
  }
  return punctuator(tok_gt, start, 1);
}

static int scan_minus(char *start)
{
  switch (start[1]) {
  case '>':
    if (start[2] == '*' && C_dialect == 2) return punctuator(tok_arrow_star, start, 3);
    return punctuator(tok_arrow, start, 2);
  case '-': return punctuator(tok_minus_minus, start, 2);
  case '=': return punctuator(tok_minus_assign, start, 2);
  }
  return punctuator(tok_minus, start, 1);
}

static int scan_colon(char *start)
{
  if (start[1] == ':' && C_dialect == 2) return punctuator(tok_colon_colon, start, 2);
  if (start[1] == '>' && alternative_tokens_allowed) return punctuator(tok_rbracket, start, 2);
  return punctuator(tok_colon, start, 1);
}

static int scan_period(char *start)
{
  if (start[1] == '.' && start[2] == '.') return punctuator(tok_ellipsis, start, 3);
  if (start[1] == '*' && C_dialect == 2) return punctuator(tok_dot_star, start, 2);
  return punctuator(tok_period, start, 1);
}

static int scan_at_sign(char *start)
{
  if (ulp_standalone_ext) return punctuator(tok_at_sign, start, 1);
  return error_token(ec_bad_token, start + 1);
}

static int scan_slash(char *start)
{
  if (fetch_pp_tokens && start[1] == '/') return error_token(ec_bad_token, start + 2);
  if (start[1] == '=') return punctuator(tok_divide_assign, start, 2);
  return punctuator(tok_divide, start, 1);
}

static unsigned sharp_length(const char *loc)
{
  if (*loc == '#') return 1;
  return alternative_tokens_allowed && loc[0] == '%' && loc[1] == ':' ? 2 : 0;
}

// "#" or its digraph: an operator of a macro definition, the start of a directive, or an error.
static int scan_sharp(char *start, unsigned length)
{
  if (in_preprocessing_directive && !caching_pragma_tokens) {
    begin_token(start);
    unsigned second = sharp_length(start + length);
    if (second != 0) return punctuator(tok_sharp_sharp, start, length + second);
    if (length == 2 && C_dialect == 2 && start[2] == ':' && start[3] != ':' && !fetch_pp_tokens) {
      warning(ec_probable_inadvertent_sharp_digraph);
    }
    return punctuator(tok_sharp, start, length);
  }
  if (token_seen_on_line || fixed_position_in_use ||
      (pcc_preprocessing_mode && start != curr_source_line)) {
    begin_token(start);
    return error_token(ec_bad_use_of_sharp, start + length + sharp_length(start + length));
  }
  token_seen_on_line = true;
  begin_token(start);
  curr_char_loc = start + length;
  if (currently_in_pp_if_skip) return tok_sharp;
  end_of_curr_token = curr_char_loc - 1;
  curr_token = tok_sharp;
  if (check_misra_c_2004 && macro_depth > 0) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_19_9, pos_curr_token);
  }
  pp_directive();
  skip_white_space();
  return scan_goes_on;
}

static int scan_percent(char *start)
{
  if (alternative_tokens_allowed) {
    if (start[1] == ':') return scan_sharp(start, 2);
    if (start[1] == '>') {
      begin_token(start);
      return punctuator(tok_rbrace, start, 2);
    }
  }
  begin_token(start);
  if (start[1] == '=') return punctuator(tok_remainder_assign, start, 2);
  return punctuator(tok_remainder, start, 1);
}

//---------------------------------------------------------------------------------------------
// The scan
//---------------------------------------------------------------------------------------------

static int scan_prefixed(char *start, bool inert)
{
  bool prefix = *start == 'L' || uliterals_enabled;
  if (prefix && start[1] == '"') return scan_string_literal(start, 1);
  if (prefix && start[1] == '\'') return scan_char_constant(start, 1);
  return scan_identifier(start, inert);
}

static int scan_digits(char *start)
{
  if (!exp_digit_sequence) return scan_number(start);
  char *loc = start;
  while (is_digit_char(*loc))
    ++loc;
  curr_char_loc = loc;
  return tok_digit_sequence;
}

static int scan_quote(char *start)
{
  if (exp_header_name) return scan_header_name(start, '"');
  return scan_string_literal(start, 0);
}

// One step: the token at curr_char_loc, or scan_goes_on when something else was passed.
static inline int scan_once(bool *inert, bool *temporarily_inert)
{
  char *loc = curr_char_loc;
  while (*loc == ' ' || *loc == '\t') {
    ++loc;
    kind_of_white_space_skipped |= ws_blank;
  }
  curr_char_loc = loc;
  a_lex_action action = (a_lex_action)lex_action[(unsigned char)*loc];
  switch (action) {
  case la_escape: return scan_escape(loc, inert, temporarily_inert);
  case la_modif:
    if (skip_white_space() == modif_mark) return end_of_source_token(curr_char_loc);
    return scan_goes_on;
  case la_white: skip_white_space(); return scan_goes_on;
  case la_slash:
    if (skip_comment()) return scan_goes_on;
    break;
  case la_sharp: return scan_sharp(loc, 1);
  case la_percent: token_seen_on_line |= loc[1] != ':'; return scan_percent(loc);
  case la_bad: token_seen_on_line = true; return scan_bad_character(loc);
  default: break;
  }
  token_seen_on_line = true;
  begin_token(loc);
  switch (action) {
  case la_id: return scan_identifier(loc, *inert || *temporarily_inert);
  case la_id_prefix: return scan_prefixed(loc, *inert || *temporarily_inert);
  case la_id_backslash:
    if (loc[1] == 'u' || loc[1] == 'U') {
      return scan_identifier(loc, *inert || *temporarily_inert);
    }
    return error_token(ec_bad_token, loc + 1);
  case la_multibyte: {
    unsigned length;
    if (!multibyte_id_char(loc, &length, true)) return scan_bad_character(loc);
    return scan_identifier(loc, *inert || *temporarily_inert);
  }
  case la_digit: return scan_digits(loc);
  case la_period:
    if (is_digit_char(loc[1])) return scan_number(loc);
    return scan_period(loc);
  case la_double_quote: return scan_quote(loc);
  case la_single_quote: return scan_char_constant(loc, 0);
  case la_slash: return scan_slash(loc);
  case la_lt: return scan_less(loc);
  case la_gt: return scan_greater(loc);
  case la_colon: return scan_colon(loc);
  case la_minus: return scan_minus(loc);
  case la_punct: return scan_punctuator(loc);
  case la_at: return scan_at_sign(loc);
  case la_bad:
  case la_escape:
  case la_modif:
  case la_white:
  case la_sharp:
  case la_percent: break;
  }
  unexpected_kind("character class");
}

// The scanned token becomes current: end position, caching, the marks of its file.
static inline void finish_token(a_token_kind kind, bool inert, bool temporarily_inert)
{
  if (kind == tok_end_of_source) {
    end_of_curr_token = start_of_curr_token;
    end_pos_curr_token = pos_curr_token;
    len_of_curr_token = 1;
  } else {
    end_of_curr_token = curr_char_loc - 1;
    if (kind == tok_newline) ++end_of_curr_token;
    len_of_curr_token = (unsigned)(end_of_curr_token - start_of_curr_token + 1);
    conv_line_loc_to_source_pos(end_of_curr_token, &end_pos_curr_token);
    if (check_concatenations && !loc_is_in_curr_source_line(start_of_curr_token)) {
      check_concatenation_at(start_of_curr_token, end_of_curr_token);
    }
  }
  curr_token = kind;
  curr_token_is_inert_macro = inert;
  curr_token_is_temporarily_inert_macro = temporarily_inert;
  if (!in_preprocessing_directive && kind != tok_end_of_source && kind != tok_newline) {
    any_tokens_fetched_from_curr_input_file = true;
    if (curr_ise != nullptr && kind != tok_sharp) curr_ise->any_real_token = true;
  }
}

static inline void number_new_token()
{
  last_token_sequence_number_used += 2;
  curr_token_sequence_number = last_token_sequence_number_used;
  last_token_sequence_number_of_token = last_token_sequence_number_used;
}

a_token_kind get_token()
{
  if (__builtin_expect(any_initial_get_token_tests_needed, 0) && deliver_pending_token()) {
    return curr_token;
  }
  bool inert = false, temporarily_inert = false;
  kind_of_white_space_skipped = 0;
  comma_is_from_argument = false;
  curr_cached_token_handle = nullptr;
  int kind = scan_once(&inert, &temporarily_inert);
  while (kind == scan_goes_on)
    kind = scan_once(&inert, &temporarily_inert);
  number_new_token();
  finish_token((a_token_kind)kind, inert, temporarily_inert);
  if (kind == tok_string_literal && do_string_literal_concatenation && !fetch_pp_tokens &&
      (!in_preprocessing_directive || caching_pragma_tokens) && another_string_may_follow()) {
    concat_adjacent_string_literals(false); // delivers, and stores, the joined string
  } else {
    cache_new_token_if_wanted();
  }
  return curr_token;
}

//---------------------------------------------------------------------------------------------
// Start-up
//---------------------------------------------------------------------------------------------

static void set_char_classes()
{
  for (int c = 0; c < 256; ++c) {
    unsigned char bits = 0;
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_') bits |= cc_id_start;
    if (c >= '0' && c <= '9') bits |= cc_digit;
    if (c == ' ' || c == '\t') bits |= cc_blank;
    char_class[c] = bits;
  }
  if (allow_dollar_in_id_chars) char_class['$'] |= cc_id_start;
}

static void set_lex_actions()
{
  for (int c = 0; c < 256; ++c) {
    lex_action[c] = char_class[c] & cc_id_start ? la_id
                    : char_class[c] & cc_digit  ? la_digit
                                                : la_bad;
    if (c >= 128 && multibyte_chars_in_source_enabled) lex_action[c] = la_multibyte;
  }
  static const struct {
    unsigned char character;
    a_lex_action action;
  } rows[] = {{0, la_escape},
              {modif_mark, la_modif},
              {'\v', la_white},
              {'\f', la_white},
              {'\r', la_white},
              {'L', la_id_prefix},
              {'u', la_id_prefix},
              {'U', la_id_prefix},
              {'.', la_period},
              {'"', la_double_quote},
              {'\'', la_single_quote},
              {'/', la_slash},
              {'#', la_sharp},
              {'<', la_lt},
              {'>', la_gt},
              {'%', la_percent},
              {':', la_colon},
              {'-', la_minus},
              {'@', la_at}};
  for (auto &row : rows)
    lex_action[row.character] = row.action;
  if (universal_character_names_allowed) lex_action['\\'] = la_id_backslash;
  unsigned char number = 0;
  for (const a_punctuator_row &row : punctuator_rows) {
    lex_action[row.first] = la_punct;
    punctuator_row_of[row.first] = number++;
  }
}

static void register_current_token()
{
  register_trans_unit_variable(curr_token);
  register_trans_unit_variable(start_of_curr_token);
  register_trans_unit_variable(end_of_curr_token);
  register_trans_unit_variable(len_of_curr_token);
  register_trans_unit_variable(pos_curr_token);
  register_trans_unit_variable(end_pos_curr_token);
  register_trans_unit_variable(const_for_curr_token);
  register_trans_unit_variable(locator_for_curr_id);
  register_trans_unit_variable(curr_token_asm_string);
  register_trans_unit_variable(curr_token_sequence_number);
  register_trans_unit_variable(last_token_sequence_number_of_token);
  register_trans_unit_variable(last_token_sequence_number_used);
  register_trans_unit_variable(curr_cached_token_handle);
  register_trans_unit_variable(curr_token_pragmas);
  register_trans_unit_variable(curr_token_is_inert_macro);
  register_trans_unit_variable(curr_token_is_temporarily_inert_macro);
  register_trans_unit_variable(err_code_for_error_token);
  register_trans_unit_variable(id_contains_ucn_or_multibyte_char);
  register_trans_unit_variable(any_tokens_fetched_from_curr_input_file);
  register_trans_unit_variable(kind_of_white_space_skipped);
}

static void register_modes()
{
  register_trans_unit_variable(fetch_pp_tokens);
  register_trans_unit_variable(expand_macros);
  register_trans_unit_variable(in_preprocessing_directive);
  register_trans_unit_variable(treat_newline_as_token);
  register_trans_unit_variable(in_pp_if_expression);
  register_trans_unit_variable(exp_header_name);
  register_trans_unit_variable(exp_system_header_name);
  register_trans_unit_variable(exp_digit_sequence);
  register_trans_unit_variable(suppress_keyword_recognition);
  register_trans_unit_variable(caching_pragma_tokens);
  register_trans_unit_variable(recognize_keywords_in_pragma);
  register_trans_unit_variable(do_string_literal_concatenation);
  register_trans_unit_variable(any_initial_get_token_tests_needed);
  register_trans_unit_variable(token_seen_on_line);
  register_trans_unit_variable(curr_stop_token_stack_entry);
}

void scanner_one_time_init()
{
  set_char_classes();
  set_lex_actions();
  comment_scanner_init();
  register_current_token();
  register_modes();
  token_cache_one_time_init();
  error_hooks.flush_tokens = flush_tokens;
}

void scanner_init()
{
}

void scanner_trans_unit_init()
{
  curr_token = tok_error;
  start_of_curr_token = end_of_curr_token = nullptr;
  len_of_curr_token = 0;
  pos_curr_token = end_pos_curr_token = null_source_position;
  locator_for_curr_id = cleared_locator;
  curr_token_asm_string = nullptr;
  curr_token_sequence_number = last_token_sequence_number_of_token = 0;
  last_token_sequence_number_used = 0;
  curr_cached_token_handle = nullptr;
  curr_token_pragmas = nullptr;
  curr_token_is_inert_macro = curr_token_is_temporarily_inert_macro = false;
  id_contains_ucn_or_multibyte_char = false;
  any_tokens_fetched_from_curr_input_file = false;
  kind_of_white_space_skipped = 0;
  any_initial_get_token_tests_needed = false;
  token_seen_on_line = false;
  exp_header_name = exp_system_header_name = exp_digit_sequence = false;
  suppress_keyword_recognition = caching_pragma_tokens = recognize_keywords_in_pragma = false;
  treat_newline_as_token = false;
  curr_stop_token_stack_entry = nullptr;
  token_cache_trans_unit_init();
}
