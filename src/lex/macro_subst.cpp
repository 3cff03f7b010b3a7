// macro_subst.cpp - the replacement text of a macro call.
// Rule:    two passes over the encoded replacement list: one adds up the size, one writes the text, so
//          that the buffer moves at most once, and before anything points to the new text.
// Entry:   substitute_macro_call.
// See:     C99 6.10.3.1 to 6.10.3.3.
#include <cstring>
#include "driver/flags.h"
#include "errors/error.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "mem/check.h"

namespace {
// The text being written.
struct a_substitution {
  a_macro_call *call;
  char *start; // of the replacement text
  char *to;
  bool behind_paste; // the next item joins the text
  a_concatenation_record **concatenations_tail;
};
} // namespace

static inline const unsigned char *next_item(const unsigned char *item)
{
  return item + size_of_item + (item[0] == rli_text ? operand_of_item(item) : 0);
}

// Deletions of invocations count only for output.
static inline bool is_rest_param(const a_macro_def *macro, unsigned long number)
{
  return macro->variadic && number == macro->param_count;
}

//---------------------------------------------------------------------------------------------
// # of an argument.

namespace {
// Writes characters, or only counts them while `to` is null.
struct a_string_writer {
  char *to;
  unsigned long length;

  void put(char c)
  {
    if (to != nullptr) *to++ = c;
    ++length;
  }
};
} // namespace

// Where the literal that begins at the quote ends: behind its closing quote.
static const char *end_of_literal(const char *quote, const char *end)
{
  const char *p = quote + 1;
  while (p < end && *p != *quote) {
    if ((*p == '\\' || *p == 0) && p + 1 < end) ++p;
    ++p;
  }
  return p < end ? p + 1 : end;
}

static const char *write_literal_in_string(a_string_writer *writer, const char *quote,
                                           const char *end)
{
  const char *literal_end = end_of_literal(quote, end);
  for (const char *p = quote; p < literal_end; ++p) {
    if (*p == 0) {
      if (*++p == lesc_null_char) {
        for (const char *q = "\\000"; *q != 0; ++q)
          writer->put(*q);
      }
      continue;
    }
    if (*p == '"' || *p == '\\') writer->put('\\');
    writer->put(*p);
  }
  return literal_end;
}

// Writes the string literal that spells the argument; returns its length.
static unsigned long write_string_of_arg(const a_macro_arg *arg, char *to)
{
  a_string_writer writer = {to, 0};
  const char *p = arg->raw.text;
  const char *end = p + arg->raw.length - 2;
  writer.put('"');
  while (p < end) {
    if (*p == '"' || *p == '\'') {
      p = write_literal_in_string(&writer, p, end);
    } else if (*p == 0) {
      p += 2;
    } else {
      writer.put(*p++);
    }
  }
  writer.put('"');
  return writer.length;
}

//---------------------------------------------------------------------------------------------
// Sizes.

static unsigned long size_of_replacement(const a_macro_call *call)
{
  unsigned long size = 0;
  for (const unsigned char *item = call->macro->replacement; *item != rli_end;
       item = next_item(item)) {
    unsigned long operand = operand_of_item(item);
    switch (item[0]) {
    case rli_text: size += operand; break;
    case rli_raw_param: size += arg_of_call(call, (unsigned)operand)->raw.length; break;
    case rli_string_param:
      size += write_string_of_arg(arg_of_call(call, (unsigned)operand), nullptr);
      break;
    case rli_param:
      size += expanded_text_of_arg(call, arg_of_call(call, (unsigned)operand))->length;
      break;
    }
  }
  return size;
}

//---------------------------------------------------------------------------------------------
// Writing.

static inline void copy_text(a_substitution *s, const char *text, unsigned long length)
{
  memcpy(s->to, text, length);
  s->to += length;
}

// The operand of ## that ends in a name with a mark: joined to something else, the name is a new one.
static void unmark_last_name(char *start, char *end)
{
  char *p = end;
  while (p > start && is_id_char(p[-1]))
    --p;
  if (p == end || p - start < 2 || p[-2] != 0) return;
  if (p[-1] == lesc_inert_macro || p[-1] == lesc_temp_inert_macro) p[-1] = lesc_token_separator;
}

static void write_raw_arg(a_substitution *s, const a_macro_arg *arg, bool before_paste)
{
  const char *text = arg->raw.text;
  unsigned long length = arg->raw.length - 2;
  if (s->behind_paste && length >= 2 && text[0] == 0 &&
      (text[1] == lesc_inert_macro || text[1] == lesc_temp_inert_macro)) {
    text += 2;
    length -= 2;
  }
  char *start = s->to;
  copy_text(s, text, length);
  if (before_paste) unmark_last_name(start, s->to);
}

// GNU: ", ## __VA_ARGS__" with nothing for the rest loses its comma.
static void remove_comma_before_empty_rest(a_substitution *s)
{
  char *p = s->to;
  while (p > s->start && (p[-1] == ' ' || p[-1] == '\t'))
    --p;
  if (p - s->start >= 2 && p[-1] == lesc_token_separator && p[-2] == 0) p -= 2;
  if (p == s->start || p[-1] != ',') return;
  --p;
  if (p - s->start >= 2 && p[-1] == lesc_token_separator && p[-2] == 0) p -= 2;
  s->to = p;
}

// Notes where ## joins; an empty operand joins nothing.
static void note_concatenation(a_substitution *s, const unsigned char *right)
{
  if (!check_concatenations || s->to == s->start) return;
  if ((gcc_mode || gpp_mode) && right[0] == rli_raw_param &&
      is_rest_param(s->call->macro, operand_of_item(right))) {
    return;
  }
  *s->concatenations_tail = alloc_concatenation_record(s->to);
  s->concatenations_tail = &(*s->concatenations_tail)->next;
}

static void write_paste(a_substitution *s, const unsigned char *right)
{
  a_macro_def *macro = s->call->macro;
  s->behind_paste = true;
  if (right[0] == rli_raw_param) {
    unsigned long number = operand_of_item(right);
    if (arg_of_call(s->call, (unsigned)number)->raw.length <= 2) {
      if (extended_variadic_macros_allowed && is_rest_param(macro, number)) {
        remove_comma_before_empty_rest(s);
      }
      return;
    }
  }
  if (right[0] != rli_end) note_concatenation(s, right);
}

static void write_replacement(a_substitution *s)
{
  const unsigned char *item = s->call->macro->replacement;
  while (*item != rli_end) {
    unsigned long operand = operand_of_item(item);
    const unsigned char *next = next_item(item);
    switch (item[0]) {
    case rli_text:
      copy_text(s, (const char *)item + size_of_item, operand);
      s->behind_paste = false;
      break;
    case rli_paste: write_paste(s, next); break;
    case rli_raw_param:
      write_raw_arg(s, arg_of_call(s->call, (unsigned)operand), *next == rli_paste);
      s->behind_paste = false;
      break;
    case rli_string_param:
      s->to += write_string_of_arg(arg_of_call(s->call, (unsigned)operand), s->to);
      s->behind_paste = false;
      break;
    case rli_param: {
      const an_arg_text *text =
          expanded_text_of_arg(s->call, arg_of_call(s->call, (unsigned)operand));
      copy_text(s, text->text, text->length - 2);
      s->behind_paste = false;
      break;
    }
    }
    item = next;
  }
}

//---------------------------------------------------------------------------------------------
// Attaching.

void attach_expansion(a_macro_call *call, char *from, char *first_char, char *last_char)
{
  a_source_line_modif *modif =
      add_source_line_modif(from, (unsigned)(curr_char_loc - from), first_char, last_char);
  modif->pos = call->position;
  modif->macro = call->macro;
  modif->macro_symbol = call->symbol;
  modif->concatenations = call->concatenations;
  ++call->macro->active_expansions;
  text_of_outermost_call += last_char - first_char;
  note_text_in_expansion_buffer(modif);
  // An argument's text in two parts: the replacement takes place where the call ended.
  a_source_line_modif *parent = parent_source_line_modif(modif);
  if (parent != nullptr && parent->is_detached && !parent->stop_at_end) {
    modif->parent = nested_source_line_modif(curr_char_loc - 1);
  }
  enter_text_of_modif(modif);
  pos_of_macro_invocation = call->position;
}

// Nothing is left of the call: it is only taken out of the output.
static void attach_empty_expansion(char *from)
{
  char *saved_deletion = delete_source_from_loc;
  delete_source_from_loc = from;
  delete_collected_source(curr_char_loc);
  delete_source_from_loc = saved_deletion;
}

void substitute_macro_call(a_macro_call *call, char *from)
{
  if (*call->macro->replacement == rli_end) {
    attach_empty_expansion(from);
    return;
  }
  a_pointer_registration keep_from(&from);
  ensure_expansion_buffer_space(size_of_replacement(call) + 4);
  a_substitution s = {};
  s.call = call;
  check(next_free_in_expansion_buffer != nullptr);
  s.start = s.to = next_free_in_expansion_buffer;
  s.concatenations_tail = &call->concatenations;
  write_replacement(&s);
  if (loc_is_in_curr_source_line(from)) {
    *s.to++ = 0;
    *s.to++ = lesc_end_of_invocation;
  }
  s.to[0] = 0;
  s.to[1] = lesc_end_of_modif;
  next_free_in_expansion_buffer = s.to + 2;
  attach_expansion(call, from, s.start, s.to);
}
