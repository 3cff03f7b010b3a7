// lex_recovery.cpp - stop tokens and skipping: how a parser finds its way after an error.
// Owns:    the stack of stop tokens.
// Entry:   required_token, loop_token, flush_tokens and its kin.
#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/symbol_tbl.h"

a_stop_token_stack_entry *curr_stop_token_stack_entry;
static a_stop_token_stack_entry *avail_stop_token_entries;

// Lines that may pass before a search for a closing bracket is given up.
static constexpr unsigned max_lines_to_match = 2;
static constexpr unsigned max_lines_to_match_brace = 20;

void push_stop_token_stack()
{
  a_stop_token_stack_entry *entry = avail_stop_token_entries;
  if (entry != nullptr) {
    avail_stop_token_entries = entry->next;
  } else {
    entry = (a_stop_token_stack_entry *)alloc_in_region(0, sizeof *entry);
  }
  memset(entry->counts, 0, sizeof entry->counts);
  entry->next = curr_stop_token_stack_entry;
  curr_stop_token_stack_entry = entry;
}

void pop_stop_token_stack()
{
  a_stop_token_stack_entry *entry = curr_stop_token_stack_entry;
  curr_stop_token_stack_entry = entry->next;
  entry->next = avail_stop_token_entries;
  avail_stop_token_entries = entry;
}

bool loop_token(a_token_kind kind)
{
  if (curr_token == kind) {
    get_token();
    return true;
  }
  error_position = pos_curr_token;
  return false;
}

bool required_token_no_advance(a_token_kind kind, an_error_code code)
{
  if (curr_token == kind) return true;
  add_stop_token(kind);
  error_position = pos_curr_token;
  syntax_error(code);
  remove_stop_token(kind);
  return curr_token == kind;
}

bool required_token(a_token_kind kind, an_error_code code)
{
  if (!required_token_no_advance(kind, code)) return false;
  get_token();
  return true;
}

//---------------------------------------------------------------------------------------------
// Skipping
//---------------------------------------------------------------------------------------------

// Open brackets inside the stretch that is skipped.
struct a_flush_count {
  int parens, brackets, braces;
};

static bool closes(a_token_kind closing, const a_flush_count *count)
{
  return curr_token == closing && count->parens == 0 && count->brackets == 0 && count->braces == 0;
}

static void count_for_flush(a_flush_count *count)
{
  switch (curr_token) {
  case tok_lparen: ++count->parens; break;
  case tok_rparen: count->parens -= count->parens > 0; break;
  case tok_lbracket: ++count->brackets; break;
  case tok_rbracket: count->brackets -= count->brackets > 0; break;
  case tok_lbrace: ++count->braces; break;
  case tok_rbrace: count->braces -= count->braces > 0; break;
  default: break;
  }
}

static a_token_kind matching_token(a_token_kind opening)
{
  switch (opening) {
  case tok_lparen: return tok_rparen;
  case tok_lbracket: return tok_rbracket;
  case tok_lbrace: return tok_rbrace;
  default: return tok_gt;
  }
}

void flush_until_matching_token()
{
  a_token_kind closing = matching_token(curr_token);
  a_seq_number start = pos_curr_token.seq;
  unsigned limit = closing == tok_rbrace ? max_lines_to_match_brace : max_lines_to_match;
  a_flush_count count = {};
  for (get_token(); curr_token != tok_end_of_source && curr_token != tok_newline; get_token()) {
    if (closing == tok_gt && curr_token == tok_shift_right && right_shift_can_be_angle_brackets) {
      split_right_shift_token();
    }
    if (closes(closing, &count)) return;
    if (pos_curr_token.seq - start > limit) return;
    if (curr_token == tok_rbrace && count.braces == 0) return;
    count_for_flush(&count);
  }
}

static bool is_template_name()
{
  return C_dialect == 2 && !fetch_pp_tokens && curr_token == tok_identifier &&
         token_cache_hooks.is_template_name != nullptr &&
         token_cache_hooks.is_template_name(locator_for_curr_id.header);
}

static bool opens_nested_stretch(bool after_template_name)
{
  switch (curr_token) {
  case tok_lparen:
  case tok_lbracket:
  case tok_lbrace: return true;
  case tok_lt: return after_template_name;
  default: return false;
  }
}

void flush_tokens_with_stop_tokens_and_warning_flag(const unsigned char *stop_counters,
                                                    bool no_warning)
{
  a_seq_number start = pos_curr_token.seq;
  bool after_template_name = false;
  while (curr_token != tok_end_of_source && curr_token != tok_newline &&
         stop_counters[curr_token] == 0) {
    if (opens_nested_stretch(after_template_name)) {
      a_token_kind closing = matching_token(curr_token);
      flush_until_matching_token();
      after_template_name = false;
      if (curr_token != closing) continue; // given up: look at this token anew
    } else {
      after_template_name = is_template_name();
    }
    get_token();
  }
  error_position = pos_curr_token;
  if (!no_warning && pos_curr_token.seq > start + 2) warning(ec_end_of_flush);
}

void flush_tokens()
{
  flush_tokens_with_stop_tokens_and_warning_flag(curr_stop_token_stack_entry->counts, false);
}

void flush_tokens_without_warning()
{
  flush_tokens_with_stop_tokens_and_warning_flag(curr_stop_token_stack_entry->counts, true);
}

void flush_to_closing_paren()
{
  unsigned char counts[tok_last] = {};
  counts[tok_end_of_source] = counts[tok_newline] = counts[tok_rparen] = counts[tok_rbrace] = 1;
  flush_tokens_with_stop_tokens_and_warning_flag(counts, false);
}

void flush_to_end_of_arg_list()
{
  unsigned char counts[tok_last];
  memcpy(counts, curr_stop_token_stack_entry->counts, sizeof counts);
  counts[tok_comma] = 0;
  flush_tokens_with_stop_tokens_and_warning_flag(counts, false);
}
