// macro_rescan.cpp - K&R preprocessing: a replacement text is scanned again at once, and a token may grow
// out of it into the source behind the call.
// Owns:    the buffer of rescanned text.
// Rule:    a call that needs more than the text to end is left to the scanner, which reads the text again.
// Entry:   rescan_replacement_text.
#include <cstring>
#include "driver/flags.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "mem/mem_manage.h"

static an_arg_text rescanned; // grows as the texts of arguments do
static bool rescan_is_running;
static bool rescan_was_abandoned;

static constexpr unsigned initial_rescan_capacity = 1000;

bool abandon_rescan()
{
  if (!rescan_is_running) return false;
  rescan_was_abandoned = true;
  return true;
}

// Reads the tokens of the modification's text with macros expanded.
static void scan_replacement(a_source_line_modif *modif)
{
  bool saved_fetch = fetch_pp_tokens;
  bool saved_expand = expand_macros;
  bool saved_newline = treat_newline_as_token;
  fetch_pp_tokens = expand_macros = treat_newline_as_token = true;
  modif->stop_at_end = true;
  rescan_is_running = true;
  rescan_was_abandoned = false;
  ++macro_depth;
  while (!rescan_was_abandoned && get_token() != tok_end_of_source && curr_token != tok_newline) {
    append_curr_token(&rescanned, false);
  }
  --macro_depth;
  rescan_is_running = false;
  modif->stop_at_end = false;
  fetch_pp_tokens = saved_fetch;
  expand_macros = saved_expand;
  treat_newline_as_token = saved_newline;
}

static char *pass_comment(char *p)
{
  while (p[0] == '/' && p[1] == '*') {
    char *end = p + 2;
    while (*end != 0 && !(end[0] == '*' && end[1] == '/'))
      ++end;
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

// The rescanned text takes the place of the modification's text.
static void replace_text(a_source_line_modif *modif)
{
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
}

void rescan_replacement_text()
{
  a_source_line_modif *modif = nested_source_line_modif(curr_char_loc);
  if (modif == nullptr) return;
  // In #if the scan computes `defined` and replaces names: its tokens have no spelling to keep.
  if (in_pp_if_expression) {
    enter_text_of_modif(modif);
    return;
  }
  if (rescanned.text == nullptr) {
    rescanned.text = alloc_resizable_buffer(initial_rescan_capacity + 1);
    rescanned.capacity = initial_rescan_capacity;
  }
  rescanned.length = 0;
  unsigned newest = newest_source_line_modif();
  unsigned char white_space = kind_of_white_space_skipped;
  scan_replacement(modif);
  kind_of_white_space_skipped = white_space;
  if (rescan_was_abandoned) {
    rem_source_line_modifs_since(newest);
  } else {
    add_tail_of_source(modif);
    replace_text(modif);
  }
  enter_text_of_modif(modif);
}
