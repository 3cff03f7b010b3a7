// token_cache.cpp - delivery of stored tokens, lookahead, the lexical state stack.
// Owns:    cached_tokens_to_deliver, reusable_cache_stack, the lexical state stack and their free lists.
// Rule:    any_initial_get_token_tests_needed is set while anything is pending; get_token looks no further.
// Entry:   deliver_pending_token, rescan_cached_tokens, next_token_full, push_lexical_state_stack.
#include "lex/token_cache.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "lex/cached_token.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/pragma.h"
#include "lex/source_input.h"
#include "lex/token_cache_private.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"

a_cached_token *cached_tokens_to_deliver;
a_reusable_cache_rescan *reusable_cache_stack;
bool caching_tokens;
a_lexical_state_stack_entry *curr_lexical_state_stack_entry;
a_token_cache_hooks token_cache_hooks;

static a_reusable_cache_rescan *avail_rescans;
static a_lexical_state_stack_entry *avail_lexical_states;

//---------------------------------------------------------------------------------------------
// What is pending
//---------------------------------------------------------------------------------------------

static inline void update_pending_flag()
{
  any_initial_get_token_tests_needed = cached_tokens_to_deliver != nullptr ||
                                       reusable_cache_stack != nullptr ||
                                       curr_token_pragmas != nullptr;
}

void deliver_first(a_token_cache *cache)
{
  if (cache->first == nullptr) return;
  cache->last->next = cached_tokens_to_deliver;
  cached_tokens_to_deliver = cache->first;
  cache->first = cache->last = nullptr;
  any_initial_get_token_tests_needed = true;
}

// A token of a cache becomes the current one.
static void make_cached_token_current(a_cached_token *token)
{
  curr_token = token->kind;
  pos_curr_token = error_position = token->position;
  end_pos_curr_token = token->end_position;
  curr_token_sequence_number = token->sequence_number;
  last_token_sequence_number_of_token = token->last_sequence_number;
  curr_cached_token_handle = token->handle;
  start_of_curr_token = end_of_curr_token = nullptr;
  len_of_curr_token = 0;
  curr_token_is_inert_macro = curr_token_is_temporarily_inert_macro = false;
  kind_of_white_space_skipped = 0;
  switch (token->extra_kind) {
  case cte_identifier: locator_for_curr_id = token->variant.locator; return;
  case cte_constant: copy_constant(constant_of_cached_token(token), &const_for_curr_token); return;
  case cte_pp_text:
    start_of_curr_token = token->variant.text.start;
    end_of_curr_token = token->variant.text.end;
    len_of_curr_token = (unsigned)(end_of_curr_token - start_of_curr_token + 1);
    return;
  case cte_asm_string: curr_token_asm_string = token->variant.asm_string; return;
  case cte_plain:
  case cte_removed_text: return;
  case cte_pragma_list:
  case cte_stop_marker: break;
  }
  unexpected_kind("cached token");
}

static void append_pragmas(a_pending_pragma *list)
{
  a_pending_pragma **link = &curr_token_pragmas;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = list;
}

// Preprocessing tokens can't become tokens of the language: they are dropped.
static void drop_pp_text_tokens()
{
  bool dropped = false;
  while (cached_tokens_to_deliver != nullptr &&
         cached_tokens_to_deliver->extra_kind == cte_pp_text) {
    a_cached_token *token = cached_tokens_to_deliver;
    cached_tokens_to_deliver = token->next;
    free_cached_token(token);
    dropped = true;
  }
  if (dropped && cached_tokens_to_deliver != nullptr) {
    pos_warning(ec_end_of_flush, cached_tokens_to_deliver->position);
  }
}

// The next token of cached_tokens_to_deliver; false if only pragmas were left there.
static bool deliver_from_list()
{
  while (cached_tokens_to_deliver != nullptr) {
    a_cached_token *token = cached_tokens_to_deliver;
    if (token->extra_kind == cte_pragma_list) {
      cached_tokens_to_deliver = token->next;
      append_pragmas(token->variant.pragmas);
      token->variant.pragmas = nullptr;
      free_cached_token(token);
    } else if (token->extra_kind == cte_pp_text && !fetch_pp_tokens) {
      drop_pp_text_tokens();
    } else {
      break;
    }
  }
  a_cached_token *token = cached_tokens_to_deliver;
  if (token == nullptr || token->extra_kind == cte_stop_marker) return false;
  cached_tokens_to_deliver = token->next;
  make_cached_token_current(token);
  free_cached_token(token);
  return true;
}

static bool rescan_is_over(const a_reusable_cache_rescan *rescan)
{
  if (rescan->variadic_rescans > 0) return false;
  const a_cached_token *token = rescan->next_token;
  if (token == nullptr) return true;
  return rescan->pop_at_end_marker && token->kind == tok_end_of_source && token->next == nullptr;
}

// The owner of the cache is gone: its tokens go to an enclosing rescan of it, or are freed.
static void dispose_of_freed_cache(a_reusable_cache_rescan *rescan)
{
  for (a_reusable_cache_rescan *outer = rescan->next; outer != nullptr; outer = outer->next) {
    if (outer->cache != rescan->cache) continue;
    outer->saved_cache = rescan->saved_cache;
    outer->cache = &outer->saved_cache;
    outer->cache_freed_during_rescan = true;
    return;
  }
  free_tokens_from_reusable_cache(rescan->saved_cache.first, &rescan->saved_cache);
}

static void pop_finished_rescans()
{
  while (reusable_cache_stack != nullptr && rescan_is_over(reusable_cache_stack)) {
    a_reusable_cache_rescan *rescan = reusable_cache_stack;
    reusable_cache_stack = rescan->next;
    cached_tokens_to_deliver = rescan->saved_tokens_to_deliver;
    if (rescan->cache_freed_during_rescan) dispose_of_freed_cache(rescan);
    rescan->next = avail_rescans;
    avail_rescans = rescan;
    if (cached_tokens_to_deliver != nullptr) return;
  }
}

static void deliver_end_of_rescan()
{
  curr_token = tok_end_of_source;
  start_of_curr_token = end_of_curr_token = nullptr;
  len_of_curr_token = 0;
  curr_token_sequence_number = last_token_sequence_number_of_token = 0;
  curr_cached_token_handle = nullptr;
}

static void deliver_from_reusable_cache()
{
  a_reusable_cache_rescan *rescan = reusable_cache_stack;
  a_cached_token *token = rescan->next_token;
  while (token != nullptr && token->extra_kind == cte_pragma_list) {
    append_pragmas(make_copy_of_pragma_list(token->variant.pragmas));
    token = token->next;
  }
  if (token == nullptr) {
    deliver_end_of_rescan();
    rescan->next_token = nullptr;
  } else {
    make_cached_token_current(token);
    rescan->next_token = token->next;
  }
  pop_finished_rescans();
}

bool deliver_pending_token()
{
  if (cached_tokens_to_deliver != nullptr &&
      cached_tokens_to_deliver->extra_kind == cte_stop_marker) {
    return false;
  }
  if (curr_token_pragmas != nullptr && !fetch_pp_tokens && !in_preprocessing_directive) {
    process_curr_token_pragmas();
  }
  bool delivered = cached_tokens_to_deliver != nullptr && deliver_from_list();
  if (!delivered && cached_tokens_to_deliver == nullptr && reusable_cache_stack != nullptr) {
    deliver_from_reusable_cache();
    delivered = true;
  }
  update_pending_flag();
  if (!delivered) return false;
  if (curr_token == tok_string_literal && const_for_curr_token.kind == ck_string) {
    string_of(&const_for_curr_token).string_literal_number =
        f_assign_string_literal_sequence_number();
  }
  cache_new_token_if_wanted();
  return true;
}

//---------------------------------------------------------------------------------------------
// Rescanning
//---------------------------------------------------------------------------------------------

void f_rescan_cached_tokens(a_token_cache *cache, bool curr_token_already_consumed)
{
  if (cache->first == nullptr) {
    if (curr_token_already_consumed) get_token();
    return;
  }
  if (!curr_token_already_consumed) cache_curr_token(cache);
  deliver_first(cache);
  get_token();
}

void rescan_cached_tokens(a_token_cache *cache)
{
  f_rescan_cached_tokens(cache, false);
}

void rescan_reusable_cache_full(a_token_cache *cache, bool pop_at_end_marker)
{
  if (cache->first == nullptr) return;
  a_token_cache current;
  clear_token_cache(&current, false);
  cache_curr_token(&current);
  deliver_first(&current);
  a_reusable_cache_rescan *rescan = avail_rescans;
  if (rescan != nullptr) {
    avail_rescans = rescan->next;
  } else {
    rescan = (a_reusable_cache_rescan *)alloc_in_region(0, sizeof *rescan);
  }
  memset(rescan, 0, sizeof *rescan);
  rescan->next = reusable_cache_stack;
  rescan->saved_tokens_to_deliver = cached_tokens_to_deliver;
  rescan->next_token = cache->first;
  rescan->cache = cache;
  rescan->pop_at_end_marker = pop_at_end_marker;
  cached_tokens_to_deliver = nullptr;
  reusable_cache_stack = rescan;
  any_initial_get_token_tests_needed = true;
  get_token();
}

void rescan_reusable_cache(a_token_cache *cache)
{
  rescan_reusable_cache_full(cache, false);
}

void rescan_copy_of_cache(a_token_cache *cache)
{
  a_token_cache copy;
  bool saved_caching_tokens = caching_tokens;
  clear_token_cache(&copy, false);
  caching_tokens = true;
  rescan_reusable_cache(cache);
  while (curr_token != tok_end_of_source) {
    cache_curr_token(&copy);
    get_token();
  }
  terminate_token_cache(&copy);
  get_token();
  caching_tokens = saved_caching_tokens;
  rescan_cached_tokens(&copy);
}

void update_reusable_cache_rescan_location(a_cached_token *token)
{
  while (cached_tokens_to_deliver != nullptr)
    get_token();
  reusable_cache_stack->next_token = token;
  any_initial_get_token_tests_needed = true;
  get_token();
}

void increment_variadic_rescans_for_reusable_cache()
{
  check(reusable_cache_stack != nullptr);
  ++reusable_cache_stack->variadic_rescans;
}

void decrement_variadic_rescans_for_reusable_cache()
{
  check(reusable_cache_stack != nullptr && reusable_cache_stack->variadic_rescans > 0);
  --reusable_cache_stack->variadic_rescans;
}

// The cache that a rescan replays goes away: the rescan takes over its tokens.
bool hand_cache_to_rescan(a_token_cache *cache)
{
  for (a_reusable_cache_rescan *rescan = reusable_cache_stack; rescan != nullptr;
       rescan = rescan->next) {
    if (rescan->cache != cache) continue;
    rescan->saved_cache = *cache;
    rescan->cache = &rescan->saved_cache;
    rescan->cache_freed_during_rescan = true;
    return true;
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Pragmas
//---------------------------------------------------------------------------------------------

void begin_rescan_of_pragma_tokens(a_pending_pragma *pragma)
{
  push_lexical_state_stack();
  curr_lexical_state_stack_entry->saved_fetch_pp_tokens = fetch_pp_tokens;
  fetch_pp_tokens = (pragma->description->flags & prf_raw_pp_tokens) != 0;
  rescan_reusable_cache(&pragma->tokens);
  if (token_cache_hooks.push_pragma_scope != nullptr) token_cache_hooks.push_pragma_scope();
}

void wrapup_rescan_of_pragma_tokens(bool suppress_extra_token_error)
{
  if (curr_token != tok_end_of_source && !suppress_extra_token_error) {
    pos_error(ec_extra_text_in_pp_directive, pos_curr_token);
  }
  while (curr_token != tok_end_of_source)
    get_token();
  fetch_pp_tokens = curr_lexical_state_stack_entry->saved_fetch_pp_tokens;
  get_token();
  if (token_cache_hooks.pop_pragma_scope != nullptr) token_cache_hooks.pop_pragma_scope();
  pop_lexical_state_stack();
}

//---------------------------------------------------------------------------------------------
// Lookahead
//---------------------------------------------------------------------------------------------

void unget_token()
{
  a_token_cache cache;
  clear_token_cache(&cache, false);
  cache_curr_token(&cache);
  cache_curr_token(&cache);
  deliver_first(&cache);
  get_token();
}

static bool at_newline_of_directive()
{
  return in_preprocessing_directive && curr_token == tok_newline;
}

// The token that is delivered next, if it is known without scanning.
static a_cached_token *pending_token()
{
  a_cached_token *token = first_real_token(cached_tokens_to_deliver);
  if (token == nullptr && cached_tokens_to_deliver == nullptr && reusable_cache_stack != nullptr) {
    token = first_real_token(reusable_cache_stack->next_token);
  }
  if (token == nullptr || token->kind == tok_end_of_source) return nullptr;
  if (token->extra_kind == cte_stop_marker || token->extra_kind == cte_pp_text) return nullptr;
  return token;
}

static a_symbol_header *header_of_cached_token(a_cached_token *token)
{
  return token->extra_kind == cte_identifier ? token->variant.locator.header : nullptr;
}

static a_symbol_header *header_of_curr_token()
{
  return curr_token == tok_identifier && !fetch_pp_tokens ? locator_for_curr_id.header : nullptr;
}

a_token_kind next_token_full(unsigned *sequence_number, a_symbol_header **symbol_header)
{
  if (at_newline_of_directive()) {
    if (sequence_number != nullptr) *sequence_number = 0;
    if (symbol_header != nullptr) *symbol_header = nullptr;
    return tok_newline;
  }
  a_cached_token *token = pending_token();
  if (token != nullptr) {
    if (sequence_number != nullptr) *sequence_number = token->sequence_number;
    if (symbol_header != nullptr) *symbol_header = header_of_cached_token(token);
    return token->kind;
  }
  a_source_position saved_error_position = error_position;
  a_token_cache cache;
  clear_token_cache(&cache, false);
  cache_curr_token(&cache);
  a_token_kind kind = get_token();
  if (sequence_number != nullptr) *sequence_number = curr_token_sequence_number;
  if (symbol_header != nullptr) *symbol_header = header_of_curr_token();
  rescan_cached_tokens(&cache);
  error_position = saved_error_position;
  return kind;
}

a_token_kind next_two_tokens(a_token_kind kind, a_token_kind *second)
{
  *second = tok_error;
  if (at_newline_of_directive()) return tok_newline;
  a_cached_token *token = pending_token();
  if (token != nullptr && token->kind != kind) return token->kind;
  a_source_position saved_error_position = error_position;
  a_token_cache cache;
  clear_token_cache(&cache, false);
  cache_curr_token(&cache);
  a_token_kind next = get_token();
  if (next == kind) {
    cache_curr_token(&cache);
    *second = get_token();
  }
  rescan_cached_tokens(&cache);
  error_position = saved_error_position;
  return next;
}

//---------------------------------------------------------------------------------------------
// Lexical state
//---------------------------------------------------------------------------------------------

void push_lexical_state_stack()
{
  a_lexical_state_stack_entry *entry = avail_lexical_states;
  if (entry != nullptr) {
    avail_lexical_states = entry->next;
  } else {
    entry = (a_lexical_state_stack_entry *)alloc_in_region(0, sizeof *entry);
  }
  entry->next = curr_lexical_state_stack_entry;
  entry->caching_count = 0;
  entry->last_cached_sequence_number = 0;
  entry->saved_error_position = error_position;
  clear_token_cache(&entry->cache, false);
  entry->saved_caching_tokens = caching_tokens;
  entry->saved_fetch_pp_tokens = fetch_pp_tokens;
  curr_lexical_state_stack_entry = entry;
  caching_tokens = false;
  push_stop_token_stack();
}

void pop_lexical_state_stack()
{
  a_lexical_state_stack_entry *entry = curr_lexical_state_stack_entry;
  pop_stop_token_stack();
  error_position = entry->saved_error_position;
  caching_tokens = entry->saved_caching_tokens;
  if (entry->cache.first != nullptr && !hand_cache_to_rescan(&entry->cache)) {
    discard_token_cache(&entry->cache);
  }
  curr_lexical_state_stack_entry = entry->next;
  entry->next = avail_lexical_states;
  avail_lexical_states = entry;
}

// The current token is copied with its pragmas, which stay with it as well.
void cache_new_token()
{
  a_lexical_state_stack_entry *entry = curr_lexical_state_stack_entry;
  if (curr_token_sequence_number <= entry->last_cached_sequence_number) return;
  a_pending_pragma *pragmas = curr_token_pragmas;
  if (pragmas != nullptr) curr_token_pragmas = make_copy_of_pragma_list(pragmas);
  cache_curr_token(&entry->cache);
  curr_token_pragmas = pragmas;
  entry->last_cached_sequence_number = last_token_sequence_number_of_token;
}

void begin_caching_fetched_tokens(bool get_next)
{
  ++curr_lexical_state_stack_entry->caching_count;
  cache_new_token();
  if (get_next) get_token();
}

void end_caching_fetched_tokens()
{
  check(curr_lexical_state_stack_entry->caching_count > 0);
  --curr_lexical_state_stack_entry->caching_count;
}

//---------------------------------------------------------------------------------------------
// Tokens of a string
//---------------------------------------------------------------------------------------------

// What is put aside while the scanner reads a string in place of the source line.
struct a_saved_source_line {
  char *curr_source_line, *after_end, *curr_char_loc, *delete_source_from_loc;
  a_source_line_modif *modifs;
  unsigned logical_char_info_entries_used;
  a_source_position fixed_position;
  bool no_modifs_in_curr_line, fixed_position_in_use, treat_newline_as_token;
  bool caching_tokens, expand_macros, token_seen_on_line;
};

static void save_source_line(a_saved_source_line *saved)
{
  *saved = {curr_source_line,       after_end_of_curr_source_line,
            curr_char_loc,          delete_source_from_loc,
            source_line_modif_list, logical_char_info_entries_used,
            fixed_position,         no_modifs_in_curr_line,
            fixed_position_in_use,  treat_newline_as_token,
            caching_tokens,         expand_macros,
            token_seen_on_line};
}

static void restore_source_line(const a_saved_source_line *saved)
{
  while (source_line_modif_list != nullptr && source_line_modif_list != saved->modifs) {
    a_source_line_modif *modif = source_line_modif_list;
    rem_source_line_modif(modif);
    free_source_line_modif(&modif);
  }
  curr_source_line = saved->curr_source_line;
  after_end_of_curr_source_line = saved->after_end;
  curr_char_loc = saved->curr_char_loc;
  delete_source_from_loc = saved->delete_source_from_loc;
  logical_char_info_entries_used = saved->logical_char_info_entries_used;
  fixed_position = saved->fixed_position;
  no_modifs_in_curr_line = saved->no_modifs_in_curr_line;
  fixed_position_in_use = saved->fixed_position_in_use;
  treat_newline_as_token = saved->treat_newline_as_token;
  caching_tokens = saved->caching_tokens;
  expand_macros = saved->expand_macros;
  token_seen_on_line = saved->token_seen_on_line;
}

static void push_stop_marker()
{
  a_cached_token *marker = build_cached_token(tok_error, 0, null_source_position);
  marker->extra_kind = cte_stop_marker;
  marker->next = cached_tokens_to_deliver;
  cached_tokens_to_deliver = marker;
}

static void pop_stop_marker()
{
  a_cached_token *marker = cached_tokens_to_deliver;
  check(marker != nullptr && marker->extra_kind == cte_stop_marker);
  cached_tokens_to_deliver = marker->next;
  free_cached_token(marker);
}

void insert_string_into_token_stream(const char *text, unsigned length, bool expand,
                                     a_source_position position)
{
  a_token_cache tokens, current;
  a_saved_source_line saved;
  clear_token_cache(&current, false);
  clear_token_cache(&tokens, false);
  cache_curr_token(&current);
  save_source_line(&saved);
  char *line = (char *)alloc_general(length + 4);
  memcpy(line, text, length);
  memcpy(line + length, "\0\2\0\1", 4);
  curr_source_line = curr_char_loc = line;
  after_end_of_curr_source_line = line + length + 4;
  delete_source_from_loc = nullptr;
  logical_char_info_entries_used = 0;
  fixed_position_in_use = true;
  fixed_position = position;
  treat_newline_as_token = true;
  caching_tokens = true;
  expand_macros = expand;
  token_seen_on_line = false;
  push_stop_marker();
  any_initial_get_token_tests_needed = true;
  while (get_token() != tok_newline && curr_token != tok_end_of_source)
    cache_curr_token(&tokens);
  pop_stop_marker();
  restore_source_line(&saved);
  free_general(line, length + 4);
  deliver_first(&current);
  deliver_first(&tokens);
  get_token();
}

//---------------------------------------------------------------------------------------------
// Start-up
//---------------------------------------------------------------------------------------------

void token_cache_one_time_init()
{
  register_trans_unit_variable(cached_tokens_to_deliver);
  register_trans_unit_variable(reusable_cache_stack);
  register_trans_unit_variable(caching_tokens);
  register_trans_unit_variable(curr_lexical_state_stack_entry);
  avail_rescans = nullptr;
  avail_lexical_states = nullptr;
  token_cache_build_one_time_init();
}

void token_cache_trans_unit_init()
{
  cached_tokens_to_deliver = nullptr;
  reusable_cache_stack = nullptr;
  caching_tokens = false;
  curr_lexical_state_stack_entry = nullptr;
  push_lexical_state_stack();
}
