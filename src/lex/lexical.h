// lexical.h - the token scanner: the current token, the modes that decide what characters become,
// and the routines by which a parser asks for tokens and recovers from wrong ones.
// The globals of the current token are written by get_token and by the token caches only.
#pragma once
#include "errors/error_codes.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "lex/tokens.h"

//---------------------------------------------------------------------------------------------
// The current token.  All are registered as translation-unit variables.

extern a_token_kind curr_token;
extern char *start_of_curr_token; // null when the token came from a cache and has no spelling
extern char *end_of_curr_token;   // its last character, not the one behind
extern unsigned len_of_curr_token;
extern a_source_position pos_curr_token;
extern a_source_position end_pos_curr_token;
extern a_constant const_for_curr_token;
extern a_symbol_locator locator_for_curr_id;
extern const a_symbol_locator cleared_locator;
extern const char *curr_token_asm_string;
extern unsigned curr_token_sequence_number; // steps by 2 for each scanned token
extern unsigned last_token_sequence_number_of_token;
extern unsigned last_token_sequence_number_used;
extern a_cached_token *curr_cached_token_handle; // null for a new token
extern a_pending_pragma *curr_token_pragmas;     // waiting in front of this token
extern bool curr_token_is_inert_macro;
extern bool curr_token_is_temporarily_inert_macro;
extern an_error_code err_code_for_error_token; // the message due for a token of kind tok_error
extern bool id_contains_ucn_or_multibyte_char;
extern bool any_tokens_fetched_from_curr_input_file;

enum a_white_space_kind : unsigned char { ws_comment = 1, ws_blank = 2 };
extern unsigned char kind_of_white_space_skipped;

//---------------------------------------------------------------------------------------------
// Modes.  Whoever sets one restores it; each is a translation-unit variable.

extern bool fetch_pp_tokens;              // preprocessing tokens: no keywords, no conversions
extern bool expand_macros;                // macro names are expanded
extern bool in_preprocessing_directive;   // a newline is a token
extern bool treat_newline_as_token;       // so outside directives
extern bool in_pp_if_expression;          // names that are no macros become 0
extern bool exp_header_name;              // a double quote starts a header name
extern bool exp_system_header_name;       // and so does a "<"
extern bool exp_digit_sequence;           // digits give a digit sequence, not a number
extern bool suppress_keyword_recognition; // keywords are identifiers
extern bool caching_pragma_tokens;        // the tokens of a pragma are being collected
extern bool recognize_keywords_in_pragma; // and keywords are seen in them
extern bool do_string_literal_concatenation;
extern bool right_shift_can_be_angle_brackets;  // ">>" may close two template argument lists
extern bool any_initial_get_token_tests_needed; // cached tokens or pragmas are waiting
extern bool token_seen_on_line;                 // so a "#" doesn't begin a directive
extern bool building_pch_prefix;                // lines are read ahead for a precompiled header

// Bits of a character's class; indexed by an unsigned character.
enum a_char_class : unsigned char {
  cc_id_start = 1, // letter, "_", or an allowed "$"
  cc_digit = 2,
  cc_blank = 4, // blank or tab
};
extern unsigned char char_class[256];

inline bool is_id_char(char c)
{
  return char_class[(unsigned char)c] & (cc_id_start | cc_digit);
}
inline bool is_id_start_char(char c)
{
  return char_class[(unsigned char)c] & cc_id_start;
}
inline bool is_digit_char(char c)
{
  return (unsigned)(c - '0') < 10;
}

//---------------------------------------------------------------------------------------------
// Scanning.

// Scans the next token, sets the globals above and returns its kind.  Carries out directives, expands
// macros, joins strings and serves cached tokens.  Issues all messages about characters and tokens.
a_token_kind get_token();

// Where comments passed in lines of the source are collected, each behind a blank; null: they aren't.  Set by
// the search for the "(" of a call, which takes what it passes out of the output.
extern a_text_buffer *passed_comments;

// Advances curr_char_loc over white space, comments and modifications; returns the character reached.
// Reads further lines.  Issues 6, 9, 2581 and the like about comments.
int skip_white_space();

// If the current token is `kind`, advances past it and returns true.  Otherwise sets error_position
// to the current token and returns false.
bool loop_token(a_token_kind kind);

// False when the current token is `kind` or the end of the source: ends a loop over a list.
inline bool token_loop_continues(a_token_kind kind)
{
  return curr_token != kind && curr_token != tok_end_of_source;
}

// If the current token is `kind`, advances past it and returns true.  Otherwise issues syntax error
// `code`, skips to a stop token with `kind` among them, takes `kind` if it was reached; returns
// whether `kind` was there or was reached.
bool required_token(a_token_kind kind, an_error_code code);
// The same, but leaves the current token at `kind`.
bool required_token_no_advance(a_token_kind kind, an_error_code code);

//---------------------------------------------------------------------------------------------
// Stop tokens.  A parser raises the counter of a kind while a construct that it ends is open.

struct a_stop_token_stack_entry {
  a_stop_token_stack_entry *next;
  unsigned char counts[tok_last];
};
extern a_stop_token_stack_entry *curr_stop_token_stack_entry;

inline void add_stop_token(a_token_kind kind)
{
  ++curr_stop_token_stack_entry->counts[kind];
}
inline void remove_stop_token(a_token_kind kind)
{
  --curr_stop_token_stack_entry->counts[kind];
}

void push_stop_token_stack(); // opens a recovery context with all counters at 0
void pop_stop_token_stack();

// Skip tokens up to one that the current context stops at.  The first reports 12 when more than two
// lines were skipped.
void flush_tokens();
void flush_tokens_without_warning();
void flush_tokens_with_stop_tokens_and_warning_flag(const unsigned char *stop_counters,
                                                    bool no_warning);
void flush_to_closing_paren();
void flush_to_end_of_arg_list();
// At an opening bracket: skips to its match, which stays the current token; gives up after 2 lines,
// or 20 for braces.
void flush_until_matching_token();

//---------------------------------------------------------------------------------------------
// Characters and names.

// At the backslash of \u or \U: returns the code point and moves *loc behind the digits.  `report`
// asks for messages 1019 to 1022, 1091, 1930 and 2484.
unsigned long scan_universal_character(char **loc, bool in_identifier, bool at_identifier_start,
                                       bool report);

// The one spelling of a name with universal or multibyte characters: in the temporary text buffer, its
// length in *length.
char *make_canonical_identifier(char *text, unsigned *length);

// Is there an identifier character at `loc`?  *length gets its bytes.
bool is_identifier_char(const char *loc, int *length, bool must_be_start);
bool is_nonstandard_character(char c);
// Are two names the same but for underscores in front and behind?
bool same_string_ignoring_underscores(const char *a, const char *b);

// May the code point stand in an identifier (C99 Annex D)?  *not_at_start tells whether it may not
// be the first.
bool ucn_is_identifier_char(unsigned long code_point, bool *not_at_start);

//---------------------------------------------------------------------------------------------
// Keywords.

// Enters all keywords of the dialect.  Called once for each translation unit, before macros.
void enter_keywords();
// Enters a word in its GNU forms: "_x" as it is and with "__" behind, "x" with "__" before it, with
// "__" on both sides, and plain only where nonstandard GNU keywords are enabled.
void enter_gnu_keyword(a_token_kind kind, const char *name);

//---------------------------------------------------------------------------------------------
// Start-up of the scanner and the token caches; called by lexical_one_time_init and its kin of
// source_input.h.

void scanner_one_time_init();
void scanner_init();
void scanner_trans_unit_init();
