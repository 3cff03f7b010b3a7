// preproc.h - directives, the stack of conditionals, and the driver of a preprocess-only run.
#pragma once
#include "il/il_fwd.h"
#include "lex/source_position.h"

enum a_pp_directive_kind : unsigned char {
  ppd_if,
  ppd_ifdef,
  ppd_ifndef,
  ppd_elif,
  ppd_else,
  ppd_endif,
  ppd_include,
  ppd_define,
  ppd_undef,
  ppd_line,
  ppd_error,
  ppd_warn,
  ppd_pragma,
  ppd_null,           // "#" alone on its line
  ppd_digit_sequence, // "#" and a line number, as preprocessed text has it
  ppd_include_next,
  ppd_warning,
  ppd_unknown,
};

// Is a file wholly wrapped in one conditional?
enum an_ifg_state : unsigned char {
  ifg_initial,     // nothing but white space so far
  ifg_after_guard, // the wrapping conditional is closed: anything more spoils it
  ifg_no_guard,
  ifg_in_guard,
  ifg_once, // "#pragma once" was seen: the state doesn't change any more
};

struct a_pp_if_stack_entry {
  a_source_position position;
  bool else_seen;
};

// Written by this module; the file stack saves and restores the depths.
extern a_pp_if_stack_entry *pp_if_stack;
extern int pp_if_stack_depth;      // index of the top, -1 when empty
extern int base_pp_if_stack_depth; // depth at the start of the current file

extern bool currently_in_pp_if_skip;
extern bool some_error_in_curr_directive;
extern bool do_not_put_curr_line_in_pp_output;
extern bool pass_pp_directive_to_output;
extern bool no_token_separators_in_this_line_of_pp_output;
extern bool actual_include_was_suppressed;
extern bool prev_pp_output_line_was_complete;

// Carries out the directive whose "#" is the current token; returns with the line finished.
void pp_directive();
// The whole of a preprocess-only run, after the primary file was opened.
void cpp_driver();
// Reads the macro preinclude files, of which only the macros stay.
void process_macro_preincludes();
// At a file's end: 38 for each conditional of it that is open; closes them.
void verify_that_all_pp_ifs_were_closed();

void once_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement);
void hdrstop_or_no_pch_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement);

// Installed by the driver: <stdarg.h> isn't opened, its names are entered instead.
struct a_preproc_hooks {
  bool (*builtin_va_list_is_declared)();
  void (*declare_builtin_va_list_type)(bool is_cstdarg);
};
extern a_preproc_hooks preproc_hooks;

void preproc_one_time_init();
void preproc_init();
void preproc_trans_unit_init();
