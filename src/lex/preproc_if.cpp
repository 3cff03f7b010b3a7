// preproc_if.cpp - conditional inclusion: the stack of conditionals, skipped groups, include guards.
// Owns:    pp_if_stack.
// Uses:    pp_expr.h for controlling expressions.
// Rule:    a skipped group is passed by lines, not by tokens: only comments, quotes and a "#" that begins
//          a line count there.  Nesting is counted, never recursed into.
// Entry:   proc_if and its kin, verify_that_all_pp_ifs_were_closed.
// See:     C99 6.10.1.
#include <cstring>

#include "driver/flags.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "il/il_entities.h"
#include "consts/const_ints.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/pp_expr.h"
#include "lex/preproc.h"
#include "lex/preproc_private.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

a_pp_if_stack_entry *pp_if_stack;
int pp_if_stack_depth = -1;
int base_pp_if_stack_depth = -1;

static int pp_if_stack_capacity;
static constexpr int pp_if_stack_increment = 30;
static constexpr unsigned macro_reference = 4; // the kind of a reference in the cross reference

//---------------------------------------------------------------------------------------------
// The stack
//---------------------------------------------------------------------------------------------

static void push_conditional()
{
  if (++pp_if_stack_depth >= pp_if_stack_capacity) {
    // Doubling beyond the first step: generated text nests deeply.
    int capacity = pp_if_stack_capacity + pp_if_stack_increment;
    if (capacity < 2 * pp_if_stack_capacity) capacity = 2 * pp_if_stack_capacity;
    pp_if_stack = (a_pp_if_stack_entry *)realloc_buffer(
        (char *)pp_if_stack, (size_t)pp_if_stack_capacity * sizeof *pp_if_stack,
        (size_t)capacity * sizeof *pp_if_stack);
    pp_if_stack_capacity = capacity;
  }
  pp_if_stack[pp_if_stack_depth].position = pos_of_directive;
  pp_if_stack[pp_if_stack_depth].else_seen = false;
}

static bool conditional_is_open()
{
  return pp_if_stack_depth > base_pp_if_stack_depth;
}

static bool at_top_level_of_file()
{
  return pp_if_stack_depth == curr_ise->saved_pp_if_depth + 1;
}

void verify_that_all_pp_ifs_were_closed()
{
  for (; pp_if_stack_depth > base_pp_if_stack_depth; --pp_if_stack_depth) {
    pos_error(ec_missing_endif, pp_if_stack[pp_if_stack_depth].position);
  }
}

//---------------------------------------------------------------------------------------------
// Include guards
//---------------------------------------------------------------------------------------------

// The file begins with a conditional on one macro.
static void open_guard(a_guard_kind kind, const char *name, unsigned length)
{
  an_include_file_history *history = curr_ise->include_history;
  if (history == nullptr) {
    find_include_history(curr_ise->full_name, &history, true, true);
    curr_ise->include_history = history;
  }
  char *copy = (char *)alloc_in_region(0, length + 1);
  memcpy(copy, name, length);
  copy[length] = 0;
  history->guard_kind = kind;
  history->guard_macro_name = copy;
  history->guard_name_length = length;
  curr_ise->guard_open_and_empty = true;
  set_ifg_state(ifg_in_guard);
}

// May the conditional at hand be the file's guard?  Otherwise the state is settled.
static bool guard_may_open()
{
  unsigned char state = get_ifg_state();
  if (state == ifg_initial && in_included_file()) {
    if (!any_tokens_fetched_from_curr_input_file) return true;
    set_ifg_state(ifg_no_guard);
  } else if (state < ifg_no_guard) {
    set_ifg_state(ifg_no_guard);
  }
  return false;
}

static const char *skip_blanks(const char *loc)
{
  while (*loc == ' ' || *loc == '\t')
    ++loc;
  return loc;
}

// "#if defined(X)" and "#if !defined(X)" are looked for in the text of the line.
struct a_test_of_one_macro {
  a_guard_kind kind;
  const char *name;
  unsigned length;
};

static bool is_test_of_one_macro(a_test_of_one_macro *test)
{
  const char *loc = skip_blanks(curr_char_loc);
  bool negated = *loc == '!';
  if (negated) loc = skip_blanks(loc + 1);
  if (strncmp(loc, "defined", 7) != 0 || is_id_char(loc[7])) return false;
  loc = skip_blanks(loc + 7);
  if (*loc != '(') return false;
  const char *name = skip_blanks(loc + 1), *end = name;
  while (is_id_char(*end))
    ++end;
  loc = skip_blanks(end);
  if (*loc != ')' || end == name || !is_id_start_char(*name)) return false;
  loc = skip_blanks(loc + 1);
  if (loc[0] != 0 || loc[1] != lesc_newline) return false;
  *test = {negated ? guard_is_ifndef : guard_is_ifdef, name, unsigned(end - name)};
  return true;
}

// The macro at the top level of the file isn't defined: if that is its next definition, it is a guard.
static void note_guard_candidate(a_symbol_header *header)
{
  if (pp_if_stack_depth == curr_ise->saved_pp_if_depth) curr_ise->guard_candidate = header;
}

static void check_if_for_guard()
{
  bool may_open = guard_may_open();
  a_test_of_one_macro test;
  if (!may_open && !check_misra_c_2004) return;
  bool is_test = is_test_of_one_macro(&test);
  if (is_test && check_misra_c_2004 && test.kind == guard_is_ifndef) {
    note_guard_candidate(find_symbol_header(test.name, test.length));
  }
  if (!may_open) return;
  if (is_test) {
    open_guard(test.kind, test.name, test.length);
  } else {
    set_ifg_state(ifg_no_guard);
  }
}

// An #else or #elif of the outermost conditional: the file isn't guarded.
static void spoil_guard_at_else()
{
  if (!at_top_level_of_file()) return;
  curr_ise->empty_group_before_else = curr_ise->guard_open_and_empty;
  curr_ise->guard_open_and_empty = false;
  unsigned char state = get_ifg_state();
  if (state != ifg_no_guard && state != ifg_once) set_ifg_state(ifg_no_guard);
}

static void close_guard_at_endif()
{
  if (!at_top_level_of_file()) return;
  unsigned char state = get_ifg_state();
  if (state == ifg_in_guard) {
    set_ifg_state(ifg_after_guard);
    any_tokens_fetched_from_curr_input_file = false; // the tokens inside don't count against it
  } else if (state != ifg_once) {
    set_ifg_state(ifg_no_guard);
  }
}

//---------------------------------------------------------------------------------------------
// Tests of #elif, #else, #endif
//---------------------------------------------------------------------------------------------

static void check_same_file_as_if()
{
  if (!check_misra_c_2004) return;
  a_line_number line;
  bool at_end;
  a_source_file *here = source_file_for_seq(pos_of_directive.seq, &line, &at_end, true);
  a_source_file *there =
      source_file_for_seq(pp_if_stack[pp_if_stack_depth].position.seq, &line, &at_end, true);
  if (here != there)
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_19_17, pos_of_directive);
}

static bool missing_if()
{
  if (conditional_is_open()) return false;
  pos_error(ec_missing_pp_if, pos_of_directive);
  flush_directive();
  return true;
}

static bool elif_is_allowed()
{
  if (missing_if()) return false;
  if (pp_if_stack[pp_if_stack_depth].else_seen) {
    pos_error(ec_pp_else_already_appeared, pos_of_directive);
    flush_directive();
    return false;
  }
  check_same_file_as_if();
  spoil_guard_at_else();
  return true;
}

static bool else_is_allowed()
{
  if (missing_if()) return false;
  if (pp_if_stack[pp_if_stack_depth].else_seen) {
    pos_diagnostic(C_dialect == 1 ? es_warning : es_discretionary_error,
                   ec_pp_else_already_appeared, pos_of_directive);
    flush_directive();
    return false;
  }
  check_same_file_as_if();
  spoil_guard_at_else();
  pp_if_stack[pp_if_stack_depth].else_seen = true;
  get_token();
  flush_extra_tokens();
  return true;
}

// Closes the innermost conditional.
static void close_conditional()
{
  check_same_file_as_if();
  close_guard_at_endif();
  --pp_if_stack_depth;
  get_token();
  flush_extra_tokens();
}

//---------------------------------------------------------------------------------------------
// Controlling expressions
//---------------------------------------------------------------------------------------------

static bool evaluate_condition()
{
  a_constant value;
  expand_macros = true;
  fetch_pp_tokens = false;
  in_pp_if_expression = true;
  get_token();
  scan_pp_expression(&value);
  in_pp_if_expression = false;
  fetch_pp_tokens = true;
  expand_macros = false;
  if (value.kind != ck_integer) {
    some_error_in_curr_directive = true;
    return false;
  }
  return cmplit_integer_constant(&value, 0) != 0;
}

//---------------------------------------------------------------------------------------------
// Skipping
//---------------------------------------------------------------------------------------------

// Characters of a skipped line that need a look.
static inline bool is_skip_event(char c)
{
  return c == 0 || c == '/' || c == '"' || c == '\'' || c == '\\' || (signed char)c < 0;
}

// At a quote: moves behind the closing one, or to the end of the line.
static char *skip_quoted_text(char *loc)
{
  char quote = *loc++;
  while (*loc != quote) {
    if (*loc == 0 && loc[1] != lesc_null_char) return loc;
    if (*loc == 0 || (*loc == '\\' && loc[1] != 0)) {
      loc += 2;
    } else if ((signed char)*loc < 0 && multibyte_chars_in_source_enabled) {
      loc += f_mbc_length(loc);
    } else {
      ++loc;
    }
  }
  return loc + 1;
}

// Moves to the end of the line; comments may take further lines in.
static void skip_rest_of_line()
{
  char *loc = curr_char_loc;
  for (;;) {
    while (!is_skip_event(*loc))
      ++loc;
    switch (*loc) {
    case '"':
    case '\'': loc = skip_quoted_text(loc); continue;
    case '\\': loc += loc[1] == 0 ? 1 : 2; continue;
    case '/':
      curr_char_loc = loc;
      loc = skip_comment() ? curr_char_loc : loc + 1;
      continue;
    case 0:
      if (loc[1] != lesc_null_char) {
        curr_char_loc = loc;
        return;
      }
      loc += 2;
      continue;
    default: loc += multibyte_chars_in_source_enabled ? f_mbc_length(loc) : 1; continue;
    }
  }
}

// Reads the next line of a skipped group.  Returns false at the end of the file, which doesn't go on in
// the includer except where conditionals may span files.
static bool read_skipped_line()
{
  bool leave_file = C_dialect == 1 || check_misra_c_2004;
  return !read_logical_source_line(leave_file, false);
}

// Moves behind the next "#" that begins a line and makes it the current token; false at the end of the file.
static bool find_skipped_directive()
{
  for (;;) {
    char *loc = curr_char_loc;
    while (*loc == ' ' || *loc == '\t' || *loc == '\f' || *loc == '\v' || *loc == '\r')
      ++loc;
    curr_char_loc = loc;
    bool digraph = loc[0] == '%' && loc[1] == ':' && alternative_tokens_allowed;
    bool first_column_fits = !pcc_preprocessing_mode || loc == curr_source_line;
    if ((*loc == '#' || digraph) && first_column_fits) {
      begin_token(loc);
      curr_char_loc = loc + (digraph ? 2 : 1);
      token_seen_on_line = true;
      return true;
    }
    if (*loc == '/' && skip_comment()) continue;
    if (*loc == 0 && (loc[1] == lesc_newline || loc[1] == lesc_end_of_buffer)) {
      if (!read_skipped_line()) return false;
      continue;
    }
    if (*loc == modif_mark || (*loc == 0 && loc[1] != lesc_null_char)) {
      skip_white_space();
      if (curr_char_loc == loc) return false;
      continue;
    }
    curr_ise->guard_open_and_empty = false;
    skip_rest_of_line();
  }
}

static void report_unknown_skipped_directive()
{
  if (check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_19_16, misra_required_severity)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_19_16, pos_curr_token);
  } else if (strict_ansi_mode) {
    pos_warning(ec_bad_pp_directive_keyword, pos_curr_token);
  }
}

// An #elif of the conditional whose group is skipped: is its own group taken?
static bool skipped_elif_is_taken(bool can_revive)
{
  if (!elif_is_allowed() || !can_revive) return false;
  currently_in_pp_if_skip = false;
  bool taken = evaluate_condition();
  currently_in_pp_if_skip = true;
  if (taken) finish_directive_line();
  flush_directive();
  return taken;
}

// Carries out a directive of a skipped group.  Returns true if the skip ends with it.
static bool skipped_directive_ends_skip(a_pp_directive_kind kind, int depth, bool may_revive)
{
  bool at_depth = pp_if_stack_depth == depth;
  switch (kind) {
  case ppd_if:
  case ppd_ifdef:
  case ppd_ifndef:
    curr_ise->guard_open_and_empty = false;
    push_conditional();
    return false;
  case ppd_elif: return skipped_elif_is_taken(at_depth && may_revive);
  case ppd_else: return else_is_allowed() && at_depth && may_revive;
  case ppd_endif: close_conditional(); return at_depth;
  case ppd_unknown: report_unknown_skipped_directive(); break;
  default: break;
  }
  curr_ise->guard_open_and_empty = false;
  return false;
}

// Skips a group.  With `may_revive` an #elif or #else of its conditional can end the skip, otherwise only
// the #endif does.
static void skip_group(bool may_revive)
{
  int depth = pp_if_stack_depth;
  bool saved_skip = currently_in_pp_if_skip;
  finish_directive_line();
  currently_in_pp_if_skip = true;
  for (;;) {
    in_preprocessing_directive = false;
    if (!find_skipped_directive()) {
      some_error_in_curr_directive = true;
      curr_token = tok_end_of_source;
      break;
    }
    in_preprocessing_directive = true;
    pos_of_directive = pos_curr_token;
    a_pp_directive_kind kind = scan_directive_keyword();
    if (skipped_directive_ends_skip(kind, depth, may_revive)) break;
    skip_rest_of_line();
  }
  in_preprocessing_directive = true;
  currently_in_pp_if_skip = saved_skip;
}

//---------------------------------------------------------------------------------------------
// Directives
//---------------------------------------------------------------------------------------------

void proc_if()
{
  check_if_for_guard();
  bool taken = evaluate_condition();
  push_conditional();
  if (!taken) skip_group(true);
}

// The macro named by the current token, for #ifdef; null if there is none.
static a_symbol *macro_of_ifdef()
{
  a_symbol_header *header = header_of_pp_identifier();
  if (variadic_macros_allowed && strcmp(header->identifier, "__VA_ARGS__") == 0) {
    pos_error(ec_VA_ARGS_not_allowed, pos_curr_token);
  }
  a_symbol *macro = find_defined_macro(header);
  if (macro != nullptr) record_symbol_reference(macro_reference, macro, &pos_curr_token);
  return macro;
}

// No name stands behind #ifdef.
static void report_missing_name()
{
  bool begins_with_digit = curr_token == tok_pp_number || curr_token == tok_digit_sequence;
  bool strict_error = strict_ansi_mode && strict_ansi_error_severity >= es_discretionary_error;
  if (begins_with_digit && !strict_error) {
    pos_warning(ec_exp_identifier, pos_curr_token);
    flush_directive();
  } else {
    some_error_in_curr_directive = true;
    syntax_error(ec_exp_identifier);
  }
}

void proc_ifdef(bool negated)
{
  bool taken = false;
  get_token();
  bool guard = guard_may_open();
  if (curr_token == tok_identifier) {
    taken = (macro_of_ifdef() != nullptr) != negated;
    a_symbol_header *header = header_of_pp_identifier();
    if (negated && check_misra_c_2004) note_guard_candidate(header);
    if (guard) {
      open_guard(negated ? guard_is_ifndef : guard_is_ifdef, header->identifier, header->length);
    }
    get_token();
    flush_extra_tokens();
  } else {
    if (guard) set_ifg_state(ifg_no_guard);
    report_missing_name();
  }
  push_conditional();
  if (!taken) skip_group(true);
}

void proc_elif()
{
  if (!elif_is_allowed()) return;
  flush_directive();
  skip_group(false);
}

void proc_else()
{
  if (!else_is_allowed()) return;
  skip_group(false);
}

void proc_endif()
{
  if (missing_if()) return;
  close_conditional();
}
