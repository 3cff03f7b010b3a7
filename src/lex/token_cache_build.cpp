// token_cache_build.cpp - storing tokens: single ones, stretches, function bodies.
// Owns:    the free lists of cached tokens and constant copies.
// Rule:    every cache that is to be replayed ends in an end-of-source token.
// Entry:   cache_curr_token, cache_token_stream, cache_function_body.
#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "lex/cached_token.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/token_cache.h"
#include "lex/token_cache_private.h"
#include "mem/mem_manage.h"

struct a_constant_copy {
  a_constant constant;
  a_constant_copy *next; // on the free list; the constant stays intact in use
};

static a_cached_token *avail_cached_tokens;
static a_constant_copy *avail_constant_copies;

//---------------------------------------------------------------------------------------------
// Records
//---------------------------------------------------------------------------------------------

static a_constant_copy *alloc_constant_copy(const a_constant *constant)
{
  a_constant_copy *copy = avail_constant_copies;
  if (copy != nullptr) {
    avail_constant_copies = copy->next;
  } else {
    copy = (a_constant_copy *)alloc_in_region(0, sizeof *copy);
  }
  copy->next = nullptr;
  copy_constant(constant, &copy->constant);
  return copy;
}

static a_cached_token *alloc_cached_token()
{
  a_cached_token *token = avail_cached_tokens;
  if (token != nullptr) {
    avail_cached_tokens = token->next;
  } else {
    token = (a_cached_token *)alloc_in_region(0, sizeof *token);
  }
  memset((void *)token, 0, sizeof *token);
  return token;
}

void free_cached_token(a_cached_token *token)
{
  if (token->extra_kind == cte_constant) {
    token->variant.constant->next = avail_constant_copies;
    avail_constant_copies = token->variant.constant;
  } else if (token->extra_kind == cte_pragma_list) {
    free_pending_pragma_list(token->variant.pragmas);
  }
  token->next = avail_cached_tokens;
  avail_cached_tokens = token;
}

a_constant *constant_of_cached_token(a_cached_token *token)
{
  check(token->extra_kind == cte_constant);
  return &token->variant.constant->constant;
}

void clear_token_cache(a_token_cache *cache, bool reusable)
{
  cache->reserved_word = 0;
  cache->first = nullptr;
  cache->last = nullptr;
  cache->reusable = reusable;
}

void discard_token_cache(a_token_cache *cache)
{
  free_tokens_from_reusable_cache(cache->first, cache);
}

void free_tokens_from_reusable_cache(a_cached_token *first, a_token_cache *cache)
{
  while (first != nullptr) {
    a_cached_token *next = first->next;
    free_cached_token(first);
    first = next;
  }
  cache->first = cache->last = nullptr;
}

void append_to_cache(a_token_cache *cache, a_cached_token *token)
{
  token->next = nullptr;
  if (cache->last == nullptr) {
    cache->first = token;
  } else {
    cache->last->next = token;
  }
  cache->last = token;
  if (cache->reusable) token->handle = token;
}

a_cached_token *build_cached_token(a_token_kind kind, unsigned sequence_number,
                                   a_source_position position)
{
  a_cached_token *token = alloc_cached_token();
  token->kind = kind;
  token->position = token->end_position = position;
  token->sequence_number = token->last_sequence_number = sequence_number;
  return token;
}

//---------------------------------------------------------------------------------------------
// The current token
//---------------------------------------------------------------------------------------------

// Copies the current token's spelling to region 0, with a null character behind it.
static void make_copy_of_token_string(a_cached_token *token)
{
  char *text = (char *)alloc_in_region(0, len_of_curr_token + 1);
  memcpy(text, start_of_curr_token, len_of_curr_token);
  text[len_of_curr_token] = 0;
  token->extra_kind = cte_pp_text;
  token->variant.text.start = text;
  token->variant.text.end = text + len_of_curr_token - 1;
}

static void store_pp_token(a_cached_token *token)
{
  if (start_of_curr_token == nullptr || curr_token == tok_newline ||
      curr_token == tok_end_of_source) {
    return;
  }
  make_copy_of_token_string(token);
}

static void store_extra(a_cached_token *token)
{
  switch (curr_token) {
  case tok_identifier:
  case tok_ptr_to_member:
    token->extra_kind = cte_identifier;
    token->variant.locator = locator_for_curr_id;
    break;
  case tok_float_constant:
  case tok_fixed_point_constant:
  case tok_int_constant:
  case tok_char_constant:
  case tok_string_literal:
  case tok_false:
  case tok_true:
    token->extra_kind = cte_constant;
    token->variant.constant = alloc_constant_copy(&const_for_curr_token);
    break;
  case tok_gnu_asm:
    token->extra_kind = cte_asm_string;
    token->variant.asm_string = curr_token_asm_string;
    break;
  default: break;
  }
}

static void cache_curr_token_pragmas(a_token_cache *cache)
{
  a_cached_token *entry = build_cached_token(tok_error, curr_token_sequence_number, pos_curr_token);
  entry->extra_kind = cte_pragma_list;
  entry->variant.pragmas = curr_token_pragmas;
  curr_token_pragmas = nullptr;
  append_to_cache(cache, entry);
}

void cache_curr_token(a_token_cache *cache)
{
  if (curr_token_pragmas != nullptr && !fetch_pp_tokens) cache_curr_token_pragmas(cache);
  a_cached_token *token = alloc_cached_token();
  token->kind = curr_token;
  token->position = pos_curr_token;
  token->end_position = end_pos_curr_token;
  token->sequence_number = curr_token_sequence_number;
  token->last_sequence_number = last_token_sequence_number_of_token;
  token->handle = curr_cached_token_handle;
  if (fetch_pp_tokens) {
    store_pp_token(token);
  } else {
    store_extra(token);
  }
  append_to_cache(cache, token);
}

//---------------------------------------------------------------------------------------------
// Parts of caches
//---------------------------------------------------------------------------------------------

void terminate_token_cache(a_token_cache *cache)
{
  unsigned number = cache->last == nullptr ? 0 : cache->last->sequence_number;
  append_to_cache(cache, build_cached_token(tok_end_of_source, number, pos_curr_token));
}

void remove_token_from_cache(a_cached_token *token, a_cached_token **link_to_token,
                             a_token_cache *cache)
{
  check(*link_to_token == token);
  *link_to_token = token->next;
  if (cache->last == token) {
    a_cached_token *last = cache->first;
    while (last != nullptr && last->next != nullptr)
      last = last->next;
    cache->last = last;
  }
  token->next = nullptr;
}

void remove_cache_terminator(a_token_cache *cache)
{
  a_cached_token **link = &cache->first;
  while (*link != nullptr && (*link)->next != nullptr)
    link = &(*link)->next;
  a_cached_token *last = *link;
  if (last == nullptr || last->kind != tok_end_of_source) return;
  remove_token_from_cache(last, link, cache);
  free_cached_token(last);
}

void drop_constant_tokens_after(a_cached_token *token, a_token_cache *cache)
{
  cache->last = token;
  a_cached_token **link = &token->next;
  while (*link != nullptr) {
    a_cached_token *other = *link;
    if (other->extra_kind == cte_constant) {
      *link = other->next;
      free_cached_token(other);
    } else {
      cache->last = other;
      link = &other->next;
    }
  }
}

void move_cached_tokens(a_cached_token *first, a_token_cache *from, a_token_cache *to)
{
  if (first == nullptr) {
    terminate_token_cache(to);
    return;
  }
  a_cached_token **link = &from->first;
  a_cached_token *previous = nullptr;
  while (*link != first) {
    previous = *link;
    link = &previous->next;
  }
  *link = nullptr;
  a_cached_token *last = from->last;
  from->last = previous;
  if (to->last == nullptr) {
    to->first = first;
  } else {
    to->last->next = first;
  }
  to->last = last;
  terminate_token_cache(to);
}

void split_token_cache(a_token_cache *cache, a_token_cache *rest, unsigned sequence_number,
                       bool keep_previous, bool ignore_if_not_found, bool move_rescan)
{
  a_cached_token *before = nullptr;      // last entry of the front part
  a_cached_token *before_real = nullptr; // entry in front of the real token before the place
  a_cached_token *token = cache->first;
  a_cached_token *previous = nullptr, *previous_of_real = nullptr;
  for (; token != nullptr; previous = token, token = token->next) {
    if (token->extra_kind == cte_pragma_list) continue;
    if (token->sequence_number == sequence_number) break;
    before_real = previous;
    previous_of_real = token;
  }
  if (token == nullptr) {
    check(ignore_if_not_found);
    return;
  }
  before = previous;
  if (keep_previous && previous_of_real != nullptr) before = before_real;
  clear_token_cache(rest, cache->reusable);
  rest->first = before == nullptr ? cache->first : before->next;
  rest->last = cache->last;
  if (before == nullptr) {
    cache->first = cache->last = nullptr;
  } else {
    before->next = nullptr;
    cache->last = before;
  }
  terminate_token_cache(cache);
  if (move_rescan && reusable_cache_stack != nullptr && reusable_cache_stack->cache == cache) {
    reusable_cache_stack->cache = rest;
  }
}

static a_cached_token *copy_of_cached_token(a_cached_token *token)
{
  a_cached_token *copy = alloc_cached_token();
  *copy = *token;
  copy->next = nullptr;
  copy->handle = nullptr;
  if (token->extra_kind == cte_constant) {
    copy->variant.constant = alloc_constant_copy(constant_of_cached_token(token));
  } else if (token->extra_kind == cte_pragma_list) {
    copy->variant.pragmas = make_copy_of_pragma_list(token->variant.pragmas);
  }
  return copy;
}

void copy_tokens_from_cache(a_token_cache *from, unsigned first_seq, unsigned end_seq,
                            bool include_terminator, a_token_cache *to)
{
  a_cached_token *last = nullptr;
  for (a_cached_token *token = from->first; token != nullptr; token = token->next) {
    if (token->sequence_number < first_seq) continue;
    if (token->sequence_number >= end_seq && token->kind != tok_end_of_source) break;
    if (token->kind == tok_end_of_source && token->extra_kind == cte_plain) {
      if (include_terminator) append_to_cache(to, copy_of_cached_token(token));
      break;
    }
    last = copy_of_cached_token(token);
    append_to_cache(to, last);
  }
  // The front half of a ">>" that the parser split.
  if (last != nullptr && last->sequence_number + 1 == end_seq && last->kind == tok_shift_right) {
    last->kind = tok_gt;
  }
}

a_token_kind get_token_to_be_cached()
{
  bool saved = caching_tokens;
  caching_tokens = true;
  a_token_kind kind = get_token();
  caching_tokens = saved;
  return kind;
}

void split_right_shift_token()
{
  check(curr_token == tok_shift_right);
  curr_token = tok_gt;
  a_lexical_state_stack_entry *entry = curr_lexical_state_stack_entry;
  a_cached_token *stored = entry->cache.last;
  if (entry->caching_count > 0 && stored != nullptr &&
      stored->sequence_number == curr_token_sequence_number) {
    stored->kind = tok_gt;
  }
  a_token_cache cache;
  clear_token_cache(&cache, false);
  cache_curr_token(&cache);
  ++curr_token_sequence_number;
  ++last_token_sequence_number_of_token;
  cache_curr_token(&cache);
  deliver_first(&cache);
  get_token();
}

//---------------------------------------------------------------------------------------------
// Stretches of tokens
//---------------------------------------------------------------------------------------------

static void store_in(a_token_cache *cache)
{
  if (cache != nullptr) cache_curr_token(cache);
}

static a_token_kind closing_kind(a_token_kind opening)
{
  switch (opening) {
  case tok_lparen: return tok_rparen;
  case tok_lbracket: return tok_rbracket;
  case tok_lbrace: return tok_rbrace;
  default: return tok_gt;
  }
}

static bool at_std_attribute()
{
  return std_attributes_enabled && curr_token == tok_lbracket && next_token() == tok_lbracket;
}

static void coalesce_curr_identifier(unsigned flags)
{
  if (C_dialect != 2 || token_cache_hooks.is_generalized_identifier_start == nullptr) return;
  if (curr_token != tok_identifier && curr_token != tok_colon_colon && curr_token != tok_operator) {
    return;
  }
  token_cache_hooks.is_generalized_identifier_start(flags, nullptr);
}

// Counters of the three kinds of brackets inside a stretch.
struct a_bracket_count {
  int parens, brackets, braces;
  bool none_open() const
  {
    return parens == 0 && brackets == 0 && braces == 0;
  }
};

// Counts the current token; false at a "}" that closes nothing.
static bool count_bracket(a_bracket_count *count)
{
  switch (curr_token) {
  case tok_lparen: ++count->parens; break;
  case tok_rparen:
    if (count->parens > 0) --count->parens;
    break;
  case tok_lbracket: ++count->brackets; break;
  case tok_rbracket:
    if (count->brackets > 0) --count->brackets;
    break;
  case tok_lbrace: ++count->braces; break;
  case tok_rbrace:
    if (count->braces == 0) return false;
    --count->braces;
    break;
  default: break;
  }
  return true;
}

bool cache_token_stream_until_matching_token(a_token_cache *cache, bool coalesce)
{
  a_token_kind closing = closing_kind(curr_token);
  a_bracket_count count = {};
  store_in(cache);
  get_token();
  while (curr_token != tok_end_of_source) {
    if (closing == tok_gt && curr_token == tok_shift_right && right_shift_can_be_angle_brackets &&
        count.none_open()) {
      split_right_shift_token();
    }
    if (curr_token == closing && count.none_open()) return false;
    if (at_std_attribute()) {
      cache_std_attribute(cache, cache != nullptr);
      continue;
    }
    if (!count_bracket(&count)) return true;
    if (coalesce) coalesce_curr_identifier(gid_caching | gid_expression_start);
    store_in(cache);
    get_token();
  }
  return false;
}

void cache_std_attribute(a_token_cache *cache, bool do_cache)
{
  a_token_cache *target = do_cache ? cache : nullptr;
  a_bracket_count count = {};
  do {
    if (!count_bracket(&count)) return;
    store_in(target);
    get_token();
  } while (!count.none_open() && curr_token != tok_end_of_source);
}

// Tokens behind which "<" opens a template argument list.
static bool template_brackets_follow(a_token_kind kind)
{
  switch (kind) {
  case tok_const_cast:
  case tok_dynamic_cast:
  case tok_reinterpret_cast:
  case tok_static_cast:
  case tok_template: return true;
  default: return false;
  }
}

static void cache_stream(a_token_cache *cache, const unsigned char *stop_counts, bool coalesce)
{
  bool brackets_expected = false;
  unsigned flags = gid_caching;
  while (curr_token != tok_end_of_source && stop_counts[curr_token] == 0) {
    if (coalesce) coalesce_curr_identifier(flags);
    flags = gid_caching | gid_expression_start;
    bool nested = curr_token == tok_lparen || curr_token == tok_lbracket ||
                  curr_token == tok_lbrace || (curr_token == tok_lt && brackets_expected);
    brackets_expected = template_brackets_follow(curr_token);
    if (at_std_attribute()) {
      cache_std_attribute(cache, cache != nullptr);
      continue;
    }
    if (nested) {
      if (cache_token_stream_until_matching_token(cache, coalesce)) continue;
      if (curr_token == tok_end_of_source) return;
    }
    store_in(cache);
    get_token();
  }
}

// The tokens are stored by get_token, in their coalesced form, and copied to the caller's cache.
static void cache_stream_by_lexical_state(a_token_cache *cache, const unsigned char *stop_counts)
{
  a_lexical_state_stack_entry *entry = curr_lexical_state_stack_entry;
  if (entry->caching_count == 0) {
    if (entry->cache.first != nullptr && !hand_cache_to_rescan(&entry->cache)) {
      discard_token_cache(&entry->cache);
    }
    clear_token_cache(&entry->cache, false);
    entry->last_cached_sequence_number = 0;
  }
  unsigned first = curr_token_sequence_number;
  begin_caching_fetched_tokens(false);
  cache_stream(nullptr, stop_counts, true);
  end_caching_fetched_tokens();
  if (cache != nullptr) {
    copy_tokens_from_cache(&entry->cache, first, curr_token_sequence_number,
                           curr_token == tok_end_of_source, cache);
  }
}

void cache_token_stream_with_coalesce_flag(a_token_cache *cache, const unsigned char *stop_counts,
                                           bool coalesce)
{
  bool saved = caching_tokens;
  caching_tokens = true;
  if (coalesce && C_dialect == 2) {
    cache_stream_by_lexical_state(cache, stop_counts);
  } else {
    cache_stream(cache, stop_counts, false);
  }
  error_position = pos_curr_token;
  caching_tokens = saved;
}

void cache_token_stream(a_token_cache *cache, const unsigned char *stop_counts)
{
  cache_token_stream_with_coalesce_flag(cache, stop_counts, false);
}

void cache_token_stream_coalesce_identifiers(a_token_cache *cache, const unsigned char *stop_counts)
{
  cache_token_stream_with_coalesce_flag(cache, stop_counts, true);
}

//---------------------------------------------------------------------------------------------
// Function bodies
//---------------------------------------------------------------------------------------------

struct a_body_cache {
  a_token_cache *cache;
  bool *error_found;
  a_source_position *end_pos;
};

static void stop_at(unsigned char *counts, a_token_kind kind)
{
  memset(counts, 0, tok_last);
  counts[kind] = 1;
}

// "= delete" and "= default".
static bool cache_special_body(a_body_cache *body)
{
  a_token_kind next = next_token();
  if (next != tok_delete && next != tok_default) {
    *body->error_found = true;
    return false;
  }
  unsigned char counts[tok_last];
  stop_at(counts, tok_semicolon);
  cache_token_stream(body->cache, counts);
  if (curr_token != tok_semicolon) {
    *body->error_found = true;
    return false;
  }
  *body->end_pos = end_pos_curr_token;
  return true;
}

// From "{" to "}", both stored.
static bool cache_braces(a_body_cache *body)
{
  if (curr_token != tok_lbrace) {
    *body->error_found = true;
    return false;
  }
  cache_token_stream_until_matching_token(body->cache, false);
  if (curr_token != tok_rbrace) {
    *body->error_found = true;
    return false;
  }
  *body->end_pos = end_pos_curr_token;
  cache_curr_token(body->cache);
  get_token();
  return true;
}

// From ":" to the "{" of the body; initializers may hold braces themselves.
static void cache_constructor_initializers(a_token_cache *cache)
{
  unsigned char counts[tok_last];
  stop_at(counts, tok_lbrace);
  counts[tok_semicolon] = 1;
  for (;;) {
    bool after_name = false;
    while (curr_token != tok_end_of_source && counts[curr_token] == 0) {
      if (curr_token == tok_lparen) {
        cache_token_stream_until_matching_token(cache, false);
        if (curr_token == tok_end_of_source) return;
        after_name = false;
      } else {
        after_name = curr_token == tok_identifier || curr_token == tok_gt;
      }
      cache_curr_token(cache);
      get_token();
    }
    if (curr_token != tok_lbrace || !after_name) return;
    cache_token_stream_until_matching_token(cache, false);
    if (curr_token != tok_rbrace) return;
    cache_curr_token(cache);
    get_token();
    if (curr_token != tok_comma && curr_token != tok_ellipsis) return;
  }
}

static bool cache_handlers(a_body_cache *body)
{
  while (curr_token == tok_catch) {
    cache_curr_token(body->cache);
    get_token();
    if (curr_token == tok_lparen) {
      cache_token_stream_until_matching_token(body->cache, false);
      cache_curr_token(body->cache);
      get_token();
    }
    if (!cache_braces(body)) return false;
  }
  return true;
}

bool cache_function_body(a_token_cache *cache, bool allow_base_init, bool *error_found,
                         unsigned *first_seq, unsigned *last_seq, a_source_position *start_pos,
                         a_source_position *end_pos)
{
  a_body_cache body = {cache, error_found, end_pos};
  *error_found = false;
  *first_seq = curr_token_sequence_number;
  *start_pos = pos_curr_token;
  if (curr_token == tok_assign) return cache_special_body(&body);
  if (curr_token != tok_lbrace && curr_token != tok_try &&
      !(curr_token == tok_colon && allow_base_init)) {
    return false;
  }
  bool is_try = curr_token == tok_try;
  if (is_try) {
    cache_curr_token(cache);
    get_token();
  }
  if (curr_token == tok_colon && allow_base_init) cache_constructor_initializers(cache);
  *start_pos = pos_curr_token;
  bool found = cache_braces(&body);
  if (found && is_try) found = cache_handlers(&body);
  *last_seq = cache->last == nullptr ? 0 : cache->last->sequence_number;
  terminate_token_cache(cache);
  return found;
}

void token_cache_build_one_time_init()
{
  avail_cached_tokens = nullptr;
  avail_constant_copies = nullptr;
}
