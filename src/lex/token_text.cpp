// token_text.cpp - stored tokens as text: for pragmas in the generated code, for template text.
// Uses:    the printer of constants (il/il_to_str.h).
// Entry:   add_token_cache_to_string, il_string_for_curr_token.
#include <cstring>

#include "driver/flags.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/il_to_str.h"
#include "lex/cached_token.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/symbol_tbl.h"

a_text_buffer *temp_text_buffer;
bool reproduce_layout_of_tokens;

// Where the token written last ended; null before the first.
static a_source_position end_of_previous_token;

//---------------------------------------------------------------------------------------------
// Pieces of text
//---------------------------------------------------------------------------------------------

static void prepare_buffer()
{
  if (temp_text_buffer == nullptr) temp_text_buffer = alloc_text_buffer(256);
}

static void put_text(const char *text)
{
  add_to_text_buffer(temp_text_buffer, text, strlen(text));
}

static void put_printed_text(const char *text, an_il_to_str_output_control_block *)
{
  put_text(text);
}

static void put_constant(const a_constant *constant)
{
  an_il_to_str_output_control_block block;
  clear_il_to_str_output_control_block(&block);
  block.output_text = put_printed_text;
  block.no_string_split = true;
  form_constant(constant, false, &block);
}

// Names of token kinds that GNU modes write in their own form.
static const char *text_of_token_kind(a_token_kind kind)
{
  if (gcc_mode || gpp_mode) {
    switch (kind) {
    case tok_gnu_asm: return "__asm__";
    case tok_va_start: return "__builtin_va_start";
    case tok_va_arg: return "__builtin_va_arg";
    case tok_va_end: return "__builtin_va_end";
    case tok_va_copy: return "__builtin_va_copy";
    default: break;
    }
  }
  return token_names[kind];
}

//---------------------------------------------------------------------------------------------
// Tokens
//---------------------------------------------------------------------------------------------

// Line breaks and blanks as in the source.
static void reproduce_gap(const a_cached_token *token)
{
  a_seq_number line = end_of_previous_token.seq;
  unsigned column = end_of_previous_token.column + 1;
  if (token->position.seq > line) {
    for (; line < token->position.seq; ++line)
      add_char_to_text_buffer(temp_text_buffer, '\n');
    column = 1;
  }
  for (; column < token->position.column; ++column)
    add_char_to_text_buffer(temp_text_buffer, ' ');
}

static void put_gap(const a_cached_token *token)
{
  if (is_null_position(end_of_previous_token)) return;
  if (reproduce_layout_of_tokens) {
    reproduce_gap(token);
    return;
  }
  bool adjacent = token->position.seq == end_of_previous_token.seq &&
                  token->position.column == end_of_previous_token.column + 1;
  if (!adjacent) add_char_to_text_buffer(temp_text_buffer, ' ');
}

static void put_token(a_cached_token *token)
{
  put_gap(token);
  end_of_previous_token = token->end_position;
  switch (token->extra_kind) {
  case cte_identifier: put_text(locator_of_cached_token(token).header->identifier); return;
  case cte_constant: put_constant(constant_of_cached_token(token)); return;
  case cte_pp_text:
    add_to_text_buffer(temp_text_buffer, token->variant.text.start,
                       (size_t)(token->variant.text.end - token->variant.text.start + 1));
    return;
  case cte_asm_string:
    put_text(text_of_token_kind(token->kind));
    add_char_to_text_buffer(temp_text_buffer, ' ');
    if (token->variant.asm_string != nullptr) put_text(token->variant.asm_string);
    return;
  case cte_plain:
  case cte_removed_text: put_text(text_of_token_kind(token->kind)); return;
  case cte_pragma_list:
  case cte_stop_marker: return;
  }
}

static void put_pragma(a_pending_pragma *pragma)
{
  bool comment_form = (pragma->description->flags2 & prf2_comment_form) != 0;
  const char *opening = comment_form                      ? "/*"
                        : pragma->from_microsoft_operator ? "__pragma("
                                                          : "#pragma ";
  put_text(opening);
  put_text(pragma_ids[pragma->description->kind]);
  if (pragma->tokens.first != nullptr) {
    add_char_to_text_buffer(temp_text_buffer, ' ');
    a_source_position saved = end_of_previous_token;
    end_of_previous_token = null_source_position;
    add_token_cache_segment_to_string(&pragma->tokens, 0, 0);
    end_of_previous_token = saved;
  } else if (pragma->text != nullptr) {
    add_char_to_text_buffer(temp_text_buffer, ' ');
    put_text(pragma->text);
  }
  put_text(comment_form ? "*/" : pragma->from_microsoft_operator ? ")" : "\n");
}

// A default argument or body that was taken out of the stream.  Returns the token after which to go on.
static a_cached_token *put_removed_text(a_cached_token *token)
{
  if (token->last_of_removed != nullptr) {
    add_char_to_text_buffer(temp_text_buffer, ';');
    return token->last_of_removed;
  }
  a_token_cache *cache = nullptr;
  if (token_cache_hooks.removed_text_of_symbol != nullptr) {
    cache = token_cache_hooks.removed_text_of_symbol(token->variant.symbol);
  }
  if (cache != nullptr) add_token_cache_segment_to_string(cache, 0, 0);
  if (token->kind != tok_removed_template_body) put_token(token);
  return token;
}

void add_token_cache_segment_to_string(a_token_cache *cache, unsigned first_seq, unsigned end_seq)
{
  prepare_buffer();
  for (a_cached_token *token = cache->first; token != nullptr; token = token->next) {
    if (token->sequence_number < first_seq) continue;
    if (end_seq != 0 && token->sequence_number >= end_seq) break;
    if (token->extra_kind == cte_pragma_list) {
      for (a_pending_pragma *pragma = pragmas_of_cached_token(token); pragma != nullptr;
           pragma = pragma->next) {
        put_pragma(pragma);
      }
      continue;
    }
    if (token->kind == tok_end_of_source) break;
    if (token->extra_kind == cte_removed_text) {
      token = put_removed_text(token);
    } else {
      put_token(token);
    }
  }
}

const char *text_of_token_cache_segment(a_token_cache *cache, unsigned end_seq)
{
  prepare_buffer();
  reset_text_buffer(temp_text_buffer);
  end_of_previous_token = null_source_position;
  add_token_cache_segment_to_string(cache, 0, end_seq);
  add_char_to_text_buffer(temp_text_buffer, '\0');
  return temp_text_buffer->buffer;
}

void add_token_cache_to_string(a_token_cache *cache)
{
  end_of_previous_token = null_source_position;
  add_token_cache_segment_to_string(cache, 0, 0);
}

const char *il_string_for_curr_token()
{
  if (curr_token == tok_identifier && !fetch_pp_tokens) {
    return locator_for_curr_id.header->identifier;
  }
  if (curr_token == tok_error || curr_token == tok_removed_default_arg ||
      curr_token == tok_removed_template_body) {
    return "<placeholder error token>";
  }
  a_token_cache cache;
  a_pending_pragma *pragmas = curr_token_pragmas;
  curr_token_pragmas = nullptr;
  clear_token_cache(&cache, false);
  cache_curr_token(&cache);
  curr_token_pragmas = pragmas;
  prepare_buffer();
  reset_text_buffer(temp_text_buffer);
  add_token_cache_to_string(&cache);
  discard_token_cache(&cache);
  add_char_to_text_buffer(temp_text_buffer, '\0');
  return copy_string_to_region(true, temp_text_buffer->buffer);
}
