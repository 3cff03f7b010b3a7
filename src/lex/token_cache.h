// token_cache.h - tokens at rest: storing them, replaying them, looking ahead.
// Delivery goes through get_token; a parser never sees whether a token is new.
#pragma once
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "lex/tokens.h"

// A chain of stored tokens, embedded in its owner.  The tokens' records are in cached_token.h.
struct a_token_cache {
  unsigned reserved_word;
  a_cached_token *first;
  a_cached_token *last;
  bool reusable; // is replayed without being consumed
};

struct a_reusable_cache_rescan;

// Chain that get_token consumes; written by this module only.
extern a_cached_token *cached_tokens_to_deliver;
// Caches that are being replayed and stay as they are, innermost first; written by this module only.
extern a_reusable_cache_rescan *reusable_cache_stack;
// The next token is to be cached by the caller: lookups that coalescing would do are postponed.
extern bool caching_tokens;

struct a_lexical_state_stack_entry {
  a_lexical_state_stack_entry *next;
  int caching_count; // while positive, get_token stores every new token in `cache`
  unsigned last_cached_sequence_number;
  a_source_position saved_error_position;
  a_token_cache cache;
  bool saved_caching_tokens;
  bool saved_fetch_pp_tokens; // by begin_rescan_of_pragma_tokens
};
extern a_lexical_state_stack_entry *curr_lexical_state_stack_entry;

//---------------------------------------------------------------------------------------------
// Building caches.

void clear_token_cache(a_token_cache *cache, bool reusable);
// Frees all tokens, pragma lists included, and leaves an empty cache.
void discard_token_cache(a_token_cache *cache);
a_cached_token *build_cached_token(a_token_kind kind, unsigned sequence_number,
                                   a_source_position position);
// Appends a copy of the current token, its pragmas in front of it.
void cache_curr_token(a_token_cache *cache);
// Appends the end-of-source token that every cache to be replayed ends in; takes it off again.
void terminate_token_cache(a_token_cache *cache);
void remove_cache_terminator(a_token_cache *cache);
void remove_token_from_cache(a_cached_token *token, a_cached_token **link_to_token,
                             a_token_cache *cache);
void free_tokens_from_reusable_cache(a_cached_token *first, a_token_cache *cache);
// Moves the tokens of `from` from `first` on to `to`, with a terminator of its own.
void move_cached_tokens(a_cached_token *first, a_token_cache *from, a_token_cache *to);
// Splits `cache` at the token with that number, or one real token earlier with `keep_previous`.
void split_token_cache(a_token_cache *cache, a_token_cache *rest, unsigned sequence_number,
                       bool keep_previous, bool ignore_if_not_found, bool move_rescan);
// Appends to `to` copies of the tokens numbered first_seq up to, but not with, end_seq.
void copy_tokens_from_cache(a_token_cache *from, unsigned first_seq, unsigned end_seq,
                            bool include_terminator, a_token_cache *to);
// Reads and stores tokens until stop_counts[kind] is nonzero for one that isn't nested.  A null cache
// only skips.
void cache_token_stream(a_token_cache *cache, const unsigned char *stop_counts);
void cache_token_stream_coalesce_identifiers(a_token_cache *cache,
                                             const unsigned char *stop_counts);
void cache_token_stream_with_coalesce_flag(a_token_cache *cache, const unsigned char *stop_counts,
                                           bool coalesce);
// From an opening bracket to its match, which stays current and isn't stored; true when it stopped at an
// unmatched "}".
bool cache_token_stream_until_matching_token(a_token_cache *cache, bool coalesce);
void cache_std_attribute(a_token_cache *cache, bool do_cache);
// Stores a function's body, with constructor initializers, try block and handlers.  Returns false where no
// body could be stored.
bool cache_function_body(a_token_cache *cache, bool allow_base_init, bool *error_found,
                         unsigned *first_seq, unsigned *last_seq, a_source_position *start_pos,
                         a_source_position *end_pos);
// get_token with caching_tokens set around it.
a_token_kind get_token_to_be_cached();
// Splits the current ">>" into two ">" tokens; the first stays current.
void split_right_shift_token();

//---------------------------------------------------------------------------------------------
// Replaying.

// Delivers the cache's tokens, then the current one again; the cache becomes empty.
void rescan_cached_tokens(a_token_cache *cache);
void f_rescan_cached_tokens(a_token_cache *cache, bool curr_token_already_consumed);
// Delivers the cache's tokens and leaves the cache as it is.
void rescan_reusable_cache(a_token_cache *cache);
void rescan_reusable_cache_full(a_token_cache *cache, bool pop_at_end_marker);
void rescan_copy_of_cache(a_token_cache *cache);
void update_reusable_cache_rescan_location(a_cached_token *token);
void increment_variadic_rescans_for_reusable_cache();
void decrement_variadic_rescans_for_reusable_cache();
// Opens and closes the parse of a pragma's tokens; the second issues 14 for what is left over unless
// suppressed.
void begin_rescan_of_pragma_tokens(a_pending_pragma *pragma);
void wrapup_rescan_of_pragma_tokens(bool suppress_extra_token_error);
// Makes tokens of a text and delivers them before the current token.
void insert_string_into_token_stream(const char *text, unsigned length, bool expand,
                                     a_source_position position);
// Called at the top of get_token while any_initial_get_token_tests_needed is set; true if it delivered.
bool deliver_pending_token();

//---------------------------------------------------------------------------------------------
// Lookahead.

// The current token stays current and arrives once more.
void unget_token();
// Kind of the next token, which isn't consumed.  Both out-arguments may be null.
a_token_kind next_token_full(unsigned *sequence_number, a_symbol_header **symbol_header);
inline a_token_kind next_token()
{
  return next_token_full(nullptr, nullptr);
}
// As above; when the next kind is `kind`, *second gets the kind after it, else 0 (tok_error).
a_token_kind next_two_tokens(a_token_kind kind, a_token_kind *second);

//---------------------------------------------------------------------------------------------
// Lexical state: a tentative parse can be wound back.

void push_lexical_state_stack();
void pop_lexical_state_stack();
// While the count is raised, every new token is also stored in the top entry's cache.
void begin_caching_fetched_tokens(bool get_next);
void end_caching_fetched_tokens();

//---------------------------------------------------------------------------------------------
// Names.  In C++ a whole qualified name becomes one identifier token; in C nothing changes.

enum a_generalized_id_flag : unsigned {
  gid_caching = 0x1,             // the tokens are being stored: no errors about the name yet
  gid_no_qualifier = 0x4,        // 285
  gid_no_global_qualifier = 0x8, // 283
  gid_no_operator_name = 0x10,   // 504
  gid_destructor_name_allowed = 0x20,
  gid_no_period_qualifier = 0x200, // not the "." of cfront 2.1
  gid_in_declaration = 0x400,
  gid_no_partial_specialization = 0x2000, // 794
  gid_expression_start = 0x4000,
  gid_must_be_qualifier = 0x20000, // 1000
  gid_no_diagnostics = 0x80000,
};

// What the parser installs: qualified names, template names and the scope of a pragma's operands.
struct a_token_cache_hooks {
  bool (*is_generalized_identifier_start)(unsigned flags, a_type *scope_hint);
  bool (*is_template_name)(a_symbol_header *header); // of the current identifier
  void (*push_pragma_scope)();
  void (*pop_pragma_scope)();
  // The text kept for a removed default argument or body.
  a_token_cache *(*removed_text_of_symbol)(a_symbol *symbol);
};
extern a_token_cache_hooks token_cache_hooks;

// Does a generalized identifier begin at the current token?  In C++ it is then one identifier token.
bool f_is_generalized_identifier_start(unsigned flags, a_type *scope_hint);
// The current token begins a generalized identifier: coalesces and looks it up with the option bits of
// lookup.h; returns the symbol or null, and leaves the identifier current.
a_symbol *coalesce_and_lookup_qualified_name(unsigned flags, unsigned lookup_mode,
                                             bool *error_found);
a_symbol *coalesce_and_lookup_generalized_identifier(unsigned flags, unsigned lookup_mode,
                                                     bool *error_found);
// At `~` of a destructor's name for an object of class_type (or a member of it): the name becomes one
// identifier token.  281 for the name of another class; false, with a message, where no name follows.
bool scan_destructor_name(a_type *class_type);
void coalesce_template_class_reference(a_symbol *symbol, unsigned flags, bool *error_found);

//---------------------------------------------------------------------------------------------
// Tokens as text.

// A buffer for text that is used up at once.
extern a_text_buffer *temp_text_buffer;

// These append to temp_text_buffer, without a null character.

void add_token_cache_to_string(a_token_cache *cache);
void add_token_cache_segment_to_string(a_token_cache *cache, unsigned first_seq, unsigned end_seq);
// The tokens up to the one numbered end_seq (0: all) as a string, which stays until the next such call.
const char *text_of_token_cache_segment(a_token_cache *cache, unsigned end_seq);
// Source lines and columns are reproduced in such text; otherwise one blank stands for white space.
extern bool reproduce_layout_of_tokens;
// The current token as a string of the IL region.
const char *il_string_for_curr_token();

void token_cache_trans_unit_init();
// Installs token_cache_hooks (parse/qualified_name.cpp).
void qualified_name_one_time_init();
