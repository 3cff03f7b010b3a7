// macro_misra.cpp - what MISRA-C:2004 wants of a macro's replacement list.
// Rule:    19.4 lets a macro expand to a braced or parenthesized text, a constant, a string, a type
//          qualifier or storage class, or do { ... } while (0), and to nothing else.
// Entry:   note_token_for_misra, finish_misra_check_of_macro, report_misra_rule.
#include <cstring>
#include <initializer_list>
#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "parse/scope_stk.h"

void report_misra_rule(an_error_severity severity, an_error_code code, a_source_position position)
{
  if (curr_command_line_macro_def != nullptr) {
    misra_hooks.misra_c_cmdline_macro_diagnostic(code, severity);
  } else {
    pos_diagnostic(severity, code, position);
  }
}

void check_macro_directive_for_misra()
{
  if (check_misra_c_2004 && depth_innermost_function_scope >= 0) {
    diagnostic(misra_required_severity, ec_misra_c_2004_19_5);
  }
}

enum a_form_state : unsigned char {
  fs_start,
  fs_braced,        // inside { ... }
  fs_parenthesized, // inside ( ... )
  fs_do,            // behind "do"
  fs_do_body,       // inside its braces
  fs_do_end,        // behind them
  fs_while,         // behind "while"
  fs_while_paren,   // behind its "("
  fs_zero,          // behind the 0
  fs_accepted,
  fs_rejected,
};

static bool current_word_is(const char *word)
{
  return curr_token == tok_identifier && strlen(word) == len_of_curr_token &&
         memcmp(start_of_curr_token, word, len_of_curr_token) == 0;
}

static bool is_qualifier_or_storage_class()
{
  for (const char *word :
       {"const", "volatile", "register", "auto", "static", "extern", "typedef"}) {
    if (current_word_is(word)) return true;
  }
  return false;
}

static a_form_state state_behind_first_token()
{
  if (curr_token == tok_lparen) return fs_parenthesized;
  if (curr_token == tok_lbrace) return fs_braced;
  if (curr_token == tok_pp_number || curr_token == tok_string_literal) return fs_accepted;
  if (current_word_is("do")) return fs_do;
  return is_qualifier_or_storage_class() ? fs_accepted : fs_rejected;
}

// Counts brackets; returns whether all are closed.
static bool count_bracket(a_misra_macro_check *check)
{
  switch (curr_token) {
  case tok_lparen: ++check->parens; break;
  case tok_rparen: --check->parens; break;
  case tok_lbracket: ++check->brackets; break;
  case tok_rbracket: --check->brackets; break;
  case tok_lbrace: ++check->braces; break;
  case tok_rbrace: --check->braces; break;
  default: break;
  }
  return check->parens == 0 && check->brackets == 0 && check->braces == 0;
}

static a_form_state next_state(a_misra_macro_check *check)
{
  bool all_closed = count_bracket(check);
  switch ((a_form_state)check->state) {
  case fs_start: return state_behind_first_token();
  case fs_braced:
  case fs_parenthesized:
    if (curr_token == tok_semicolon) return fs_rejected;
    return all_closed ? fs_accepted : (a_form_state)check->state;
  case fs_do: return curr_token == tok_lbrace ? fs_do_body : fs_rejected;
  case fs_do_body: return all_closed ? fs_do_end : fs_do_body;
  case fs_do_end: return current_word_is("while") ? fs_while : fs_rejected;
  case fs_while: return curr_token == tok_lparen ? fs_while_paren : fs_rejected;
  case fs_while_paren:
    return curr_token == tok_pp_number && len_of_curr_token == 1 && *start_of_curr_token == '0'
               ? fs_zero
               : fs_rejected;
  case fs_zero: return curr_token == tok_rparen ? fs_accepted : fs_rejected;
  case fs_accepted:
  case fs_rejected: break;
  }
  return fs_rejected;
}

// Rule 19.10: a parameter stands alone in parentheses, or is an operand of # or ##.
static void check_param_is_enclosed(a_misra_macro_check *check)
{
  if (is_null_position(check->open_param)) return;
  bool is_enclosed = curr_token == tok_rparen || curr_token == tok_sharp_sharp;
  if (!is_enclosed) {
    report_misra_rule(misra_required_severity, ec_misra_c_2004_19_10, check->open_param);
  }
  check->open_param = null_source_position;
}

// Rules 19.12 and 19.13.
static void note_operator(a_misra_macro_check *check)
{
  report_misra_rule(misra_advisory_severity, ec_misra_c_2004_19_13, pos_curr_token);
  if (++check->operators == 2) {
    report_misra_rule(misra_required_severity, ec_misra_c_2004_19_12, pos_curr_token);
  }
}

void note_token_for_misra(a_misra_macro_check *check, bool is_param, bool function_like)
{
  check_param_is_enclosed(check);
  bool is_operator = curr_token == tok_sharp_sharp || (curr_token == tok_sharp && function_like);
  if (is_operator) note_operator(check);
  if (is_param && !check->behind_operator) {
    if (check->behind_lparen) {
      check->open_param = pos_curr_token;
    } else {
      report_misra_rule(misra_required_severity, ec_misra_c_2004_19_10, pos_curr_token);
    }
  }
  bool is_free =
      check->state == fs_braced || check->state == fs_parenthesized || check->state == fs_do_body;
  check->state =
      (is_param || curr_token == tok_sharp) && !is_free ? fs_rejected : next_state(check);
  check->behind_lparen = curr_token == tok_lparen;
  check->behind_operator = is_operator;
}

void finish_misra_check_of_macro(a_misra_macro_check *check, bool function_like,
                                 a_source_position name)
{
  check_param_is_enclosed(check);
  if (function_like) report_misra_rule(misra_advisory_severity, ec_misra_c_2004_19_7, name);
  if (check->state != fs_start && check->state != fs_accepted) {
    report_misra_rule(misra_required_severity, ec_misra_c_2004_19_4, name);
  }
}
