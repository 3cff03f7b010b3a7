// tokens.h - kinds of tokens and their names.
#pragma once

enum a_token_kind : unsigned short {
#define TOKEN(kind, spelling) kind,
#include "lex/tokens.def"
  tok_last
};
static_assert(tok_lbracket == 17 && tok_auto == 67 && tok_colon_colon == 144 && tok_false == 175 &&
                  tok_nullptr == 224,
              "rows of tokens.def are numbered by their place");

// Text of each kind, as messages print it; indexed by a_token_kind.
extern const char *const token_names[tok_last + 1];

// True for a kind that is spelled as a word.
bool is_keyword_token(a_token_kind kind);
