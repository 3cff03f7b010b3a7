// cached_token.h - the record of one stored token, for the modules that look into caches.
#pragma once
#include "lex/source_position.h"
#include "lex/token_cache.h"
#include "mem/check.h"
#include "parse/symbol_tbl.h"

enum a_cached_token_extra_kind : unsigned char {
  cte_plain,        // punctuators and keywords
  cte_identifier,   // a locator
  cte_constant,     // a copy of a constant
  cte_pragma_list,  // an entry of its own in front of the token that the pragmas precede
  cte_pp_text,      // spelling of a preprocessing token
  cte_removed_text, // symbol whose default argument or body was taken out
  cte_asm_string,
  cte_stop_marker, // tokens come from the source line while this is in front
};

struct a_constant_copy; // a_constant with a link for the free list

struct a_cached_token {
  a_cached_token *next;
  a_source_position position;
  a_source_position end_position;
  a_token_kind kind;
  a_cached_token_extra_kind extra_kind;
  unsigned sequence_number;
  unsigned last_sequence_number;
  a_cached_token *handle; // its own address in a reusable cache, else null
  union {
    a_symbol_locator locator;  // cte_identifier
    a_constant_copy *constant; // cte_constant
    a_pending_pragma *pragmas; // cte_pragma_list
    struct {
      char *start, *end;
    } text;                 // cte_pp_text; end is the last character
    a_symbol *symbol;       // cte_removed_text
    const char *asm_string; // cte_asm_string
  } variant;
  a_cached_token
      *last_of_removed; // cte_removed_text: last token of a stretch that stays in the chain
};

struct a_reusable_cache_rescan {
  a_reusable_cache_rescan *next;
  a_cached_token *saved_tokens_to_deliver;
  a_cached_token *next_token; // null: at the end
  a_token_cache *cache;
  a_token_cache saved_cache;
  unsigned variadic_rescans;
  bool pop_at_end_marker;
  bool cache_freed_during_rescan;
};

a_constant *constant_of_cached_token(a_cached_token *token);
// Frees the constants that follow `token` in the cache; entries of pragmas stay.
void drop_constant_tokens_after(a_cached_token *token, a_token_cache *cache);
// The first entry from `token` on that is a token, not a list of pragmas; or null.
inline a_cached_token *first_real_token(a_cached_token *token)
{
  while (token != nullptr && token->extra_kind == cte_pragma_list)
    token = token->next;
  return token;
}
inline a_symbol_locator &locator_of_cached_token(a_cached_token *token)
{
  check(token->extra_kind == cte_identifier);
  return token->variant.locator;
}
inline a_pending_pragma *&pragmas_of_cached_token(a_cached_token *token)
{
  check(token->extra_kind == cte_pragma_list);
  return token->variant.pragmas;
}
