// macro_tokens.cpp - where a preprocessing token ends in plain text, without the scanner's globals.
// Entry:   end_of_plain_pp_token.
#include "driver/flags.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"

static const char *end_of_pp_number(const char *p)
{
  for (;;) {
    char c = *++p;
    if (is_id_char(c) || c == '.') continue;
    if ((c == '+' || c == '-') && (p[-1] == 'e' || p[-1] == 'E' || p[-1] == 'p' || p[-1] == 'P')) {
      continue;
    }
    return p;
  }
}

// A string or character constant that is closed and has nothing unusual in it.
static const char *end_of_plain_literal(const char *quote)
{
  for (const char *p = quote + 1;; ++p) {
    if (*p == *quote) return p + 1;
    if (*p == '\\') ++p;
    if (*p == 0 || *p == modif_mark || (signed char)*p < 0) return quote;
  }
}

const char *end_of_plain_pp_token(const char *p)
{
  char c = *p;
  if (is_id_start_char(c)) {
    const char *end = p;
    while (is_id_char(*end))
      ++end;
    if (*end == '\\' || (signed char)*end < 0) return p;
    if ((*end == '"' || *end == '\'') && end - p == 1 && (c == 'L' || c == 'u' || c == 'U'))
      return p;
    return end;
  }
  if (is_digit_char(c) || (c == '.' && is_digit_char(p[1]))) return end_of_pp_number(p);
  switch (c) {
  case '"':
  case '\'': return end_of_plain_literal(p);
  case '(':
  case ')':
  case '[':
  case ']':
  case '{':
  case '}':
  case ',':
  case ';':
  case '?':
  case '~': return p + 1;
  case '+':
  case '&':
  case '|': return p + (p[1] == c || p[1] == '=' ? 2 : 1);
  case '*':
  case '=':
  case '!':
  case '^': return p + (p[1] == '=' ? 2 : 1);
  case '-':
    if (p[1] == '>') return C_dialect == 2 && p[2] == '*' ? p + 3 : p + 2;
    return p + (p[1] == '-' || p[1] == '=' ? 2 : 1);
  default: return p;
  }
}
