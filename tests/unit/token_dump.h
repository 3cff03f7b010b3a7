// token_dump.h - the tokens of a text as the scanner gives them to the parser, one line each.
// Each scan runs in a child process: the scanner's state is the whole program's.
#pragma once
#include <string>
#include <vector>

struct a_token_dump {
  std::string tokens;   // "int constant int 42", "identifier x", ...
  std::string messages; // as on the error stream
};

// Scans `text` as a file ending in `suffix` under the options.
a_token_dump dump_tokens(const std::string &text, const std::vector<std::string> &options = {},
                         const char *suffix = ".c");

// The same with `steps` in place of the loop that prints every token: it is called with the first token current
// and prints what it likes.
a_token_dump run_on_tokens(const std::string &text, void (*steps)(FILE *out),
                           const std::vector<std::string> &options = {}, const char *suffix = ".c");

// For `steps`: the current token as dump_tokens prints it.
std::string text_of_curr_token();
