// token_dump.cpp - see token_dump.h.
#include "token_dump.h"
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>
#include "consts/const_ints.h"
#include "consts/float_pt.h"
#include "driver/cfe.h"
#include "driver/cmd_line.h"
#include "driver/fe_init.h"
#include "driver/host_envir.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/symbol_tbl.h"

namespace {

std::string text_of_string(const a_constant &constant)
{
  static const char digits[] = "0123456789abcdef";
  std::string text = std::to_string(constant.char_kind) + " ";
  const auto &string = constant.variant.string;
  for (size_t k = 0; k < string.length; ++k) {
    unsigned char c = (unsigned char)string.text[k];
    text += digits[c >> 4];
    text += digits[c & 15];
  }
  return text;
}

std::string text_of_constant(const a_constant &constant)
{
  switch (constant.kind) {
  case ck_integer: {
    an_integer_kind kind = constant.type->variant.integer.int_kind;
    return std::string(int_kind_name_full(kind)) + " " + str_for_integer_constant(&constant);
  }
  case ck_float: {
    a_float_kind kind = float_kind_of_type(constant.type);
    return std::to_string(kind) + " " + fp_to_string(kind, &constant.variant.floating);
  }
  case ck_complex: return "complex";
  case ck_string: return text_of_string(constant);
  default: return "error";
  }
}

} // namespace

std::string text_of_curr_token()
{
  std::string text = token_names[curr_token];
  switch (curr_token) {
  case tok_identifier: return text + " " + locator_for_curr_id.header->identifier;
  case tok_int_constant:
  case tok_char_constant:
  case tok_float_constant:
  case tok_string_literal: return text + " " + text_of_constant(const_for_curr_token);
  default: return text;
  }
}

namespace {

// In the child: the pipeline up to the parser, whose place the loop takes.
[[noreturn]] void scan_file(const std::vector<std::string> &options, const std::string &file,
                            FILE *tokens, FILE *messages, void (*steps)(FILE *))
{
  std::vector<char *> arguments{const_cast<char *>("rvparse")};
  for (const std::string &option : options)
    arguments.push_back(const_cast<char *>(option.c_str()));
  arguments.push_back(const_cast<char *>(file.c_str()));
  f_error = messages;
  fe_early_init();
  f_error = messages;
  error_hooks.exit_compilation = [](an_error_severity) { _exit(0); };
  proc_command_line((int)arguments.size(), arguments.data());
  fe_one_time_init();
  error_hooks.exit_compilation = [](an_error_severity) { _exit(0); };
  trans_unit_init();
  is_primary_translation_unit = true;
  trans_unit_file_name = primary_source_file_name;
  fe_init_part_1();
  static a_translation_unit unit;
  curr_translation_unit = translation_units = &unit;
  fe_translation_unit_init();
  fe_init_part_2();
  get_token();
  steps(tokens);
  fflush(tokens);
  fflush(messages);
  _exit(0);
}

std::string contents(FILE *file)
{
  std::string text;
  rewind(file);
  for (int c = getc(file); c != EOF; c = getc(file))
    text += (char)c;
  fclose(file);
  return text;
}

} // namespace

static void print_all_tokens(FILE *out)
{
  for (; curr_token != tok_end_of_source; get_token()) {
    fprintf(out, "%s\n", text_of_curr_token().c_str());
    fflush(out);
  }
}

a_token_dump dump_tokens(const std::string &text, const std::vector<std::string> &options,
                         const char *suffix)
{
  return run_on_tokens(text, print_all_tokens, options, suffix);
}

a_token_dump run_on_tokens(const std::string &text, void (*steps)(FILE *),
                           const std::vector<std::string> &options, const char *suffix)
{
  char name[] = "/tmp/tokensXXXXXX";
  int descriptor = mkstemp(name);
  close(descriptor);
  std::string file = std::string(name) + suffix;
  FILE *source = fopen(file.c_str(), "wb");
  fwrite(text.data(), 1, text.size(), source);
  fclose(source);
  FILE *tokens = tmpfile(), *messages = tmpfile();
  pid_t child = fork();
  if (child == 0) scan_file(options, file, tokens, messages, steps);
  int status = 0;
  waitpid(child, &status, 0);
  unlink(name);
  unlink(file.c_str());
  a_token_dump dump{contents(tokens), contents(messages)};
  if (WIFSIGNALED(status)) dump.tokens += "signal " + std::to_string(WTERMSIG(status));
  return dump;
}
