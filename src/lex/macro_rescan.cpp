// macro_rescan.cpp - K&R preprocessing: a replacement text is scanned again at once, and a token may grow
// out of it into the source behind the call.
// Owns:    the buffer of rescanned text.
// Entry:   rescan_replacement_text.
#include <cstring>
#include "driver/flags.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "mem/mem_manage.h"

static an_arg_text rescanned;  // grows as the texts of arguments do

static constexpr unsigned initial_rescan_capacity = 1000;

// Reads the tokens of the modification's text with macros expanded.  Stops where a call inside has
// run out of the text; the token that was read there is left to the scanner.
static void scan_replacement(a_source_line_modif *modif)
{
  bool saved_fetch = fetch_pp_tokens;
  bool saved_expand = expand_macros;
  bool saved_newline = treat_newline_as_token;
  fetch_pp_tokens = expand_macros = treat_newline_as_token = true;
  modif->rescan_in_progress = true;
  modif->spans_lines = true;
  ++macro_depth;
  for (;;) {
    if (get_token() == tok_end_of_source || curr_token == tok_newline) break;
    if (!modif->rescan_in_progress) {
      curr_char_loc = start_of_curr_token;
      break;
    }
    append_curr_token(&rescanned, false);
  }
  --macro_depth;
  modif->rescan_in_progress = false;
  fetch_pp_tokens = saved_fetch;
  expand_macros = saved_expand;
  treat_newline_as_token = saved_newline;
}

static char *pass_comment(char *p)
{
  while (p[0] == '/' && p[1] == '*') {
    char *end = p + 2;
    while (*end != 0 && !(end[0] == '*' && end[1] == '/')) ++end;
    if (*end == 0) return p;
    p = end + 2;
  }
  return p;
}

// The last token of the text goes on in the source where the next character could belong to it.
static void add_tail_of_source(a_source_line_modif *modif)
{
  if (rescanned.length == 0) return;
  unsigned char category = pp_lexical_category[(unsigned char)rescanned.text[rescanned.length - 1]];
  char *start = after_source_line_modif(modif);
  char *p = pass_comment(start);
  if (category == ppc_never_joins) return;
  bool grew = false;
  while (*p != 0 && *p != modif_mark && pp_lexical_category[(unsigned char)*p] == category) {
    ensure_arg_text_space(&rescanned, 1);
    rescanned.text[rescanned.length++] = *p++;
    grew = true;
  }
  if (grew) modif->deletion_count += (unsigned)(p - start);
}

void rescan_replacement_text(a_macro_call *)
{
  a_source_line_modif *modif = nested_source_line_modif(curr_char_loc);
  if (modif == nullptr) return;
  if (rescanned.text == nullptr) {
    rescanned.text = alloc_resizable_buffer(initial_rescan_capacity + 1);
    rescanned.capacity = initial_rescan_capacity;
  }
  rescanned.length = 0;
  unsigned char white_space = kind_of_white_space_skipped;
  scan_replacement(modif);
  kind_of_white_space_skipped = white_space;
  add_tail_of_source(modif);
  ensure_expansion_buffer_space(rescanned.length + 4);
  char *text = next_free_in_expansion_buffer;
  memcpy(text, rescanned.text, rescanned.length);
  char *to = text + rescanned.length;
  to[0] = 0;
  to[1] = lesc_end_of_invocation;
  to[2] = 0;
  to[3] = lesc_end_of_modif;
  next_free_in_expansion_buffer = to + 4;
  modif->first_char = text;
  modif->last_char = to + 2;
  curr_char_loc = text;
}
