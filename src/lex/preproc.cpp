// preproc.cpp - directives: the reader, the dispatch, the short ones; the preprocess-only run.
// Owns:    the modes of a directive.
// Uses:    conditionals (preproc_if.cpp), includes and line directives (preproc_include.cpp), macros, pragmas.
// Rule:    the parser never sees a directive; each leaves the scanner at the end of its line.
// Entry:   pp_directive, cpp_driver, process_macro_preincludes.
// See:     C99 6.10; #include_next, #warning are GNU, #warn is this tool chain's.
#include "lex/preproc.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "lex/lex_private.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/pragma.h"
#include "lex/preproc_private.h"
#include "lex/source_input.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"
#include "parse/symbol_tbl.h"

bool currently_in_pp_if_skip;
bool some_error_in_curr_directive;
bool do_not_put_curr_line_in_pp_output;
bool pass_pp_directive_to_output;
bool no_token_separators_in_this_line_of_pp_output;
bool actual_include_was_suppressed;
bool prev_pp_output_line_was_complete;
a_source_position pos_of_directive;
a_preproc_hooks preproc_hooks;

//---------------------------------------------------------------------------------------------
// Tools of all directives
//---------------------------------------------------------------------------------------------

a_pp_directive_kind scan_directive_keyword()
{
  static const struct {
    const char *word;
    unsigned char length;
    a_pp_directive_kind kind;
  } words[] = {{"if", 2, ppd_if},           {"ifdef", 5, ppd_ifdef},
               {"ifndef", 6, ppd_ifndef},   {"elif", 4, ppd_elif},
               {"else", 4, ppd_else},       {"endif", 5, ppd_endif},
               {"include", 7, ppd_include}, {"define", 6, ppd_define},
               {"undef", 5, ppd_undef},     {"line", 4, ppd_line},
               {"error", 5, ppd_error},     {"warn", 4, ppd_warn},
               {"pragma", 6, ppd_pragma},   {"include_next", 12, ppd_include_next}};
  some_error_in_curr_directive = false;
  do_not_put_curr_line_in_pp_output = true;
  exp_digit_sequence = true;
  get_token();
  exp_digit_sequence = false;
  if (curr_token == tok_newline) return ppd_null;
  if (curr_token == tok_digit_sequence) return ppd_digit_sequence;
  if (curr_token != tok_identifier) return ppd_unknown;
  for (auto &row : words) {
    if (row.length == len_of_curr_token && memcmp(row.word, start_of_curr_token, row.length) == 0) {
      return row.kind;
    }
  }
  if (!strict_ansi_mode && len_of_curr_token == 7 &&
      memcmp(start_of_curr_token, "warning", 7) == 0) {
    return ppd_warning;
  }
  return ppd_unknown;
}

void flush_directive()
{
  fetch_pp_tokens = true;
  expand_macros = false;
  in_pp_if_expression = false;
  exp_header_name = exp_system_header_name = exp_digit_sequence = false;
  while (curr_token != tok_newline && curr_token != tok_end_of_source)
    get_token();
}

void flush_extra_tokens()
{
  if (curr_token == tok_newline || curr_token == tok_end_of_source) return;
  if (!pcc_preprocessing_mode) {
    pos_diagnostic(strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning,
                   ec_extra_text_in_pp_directive, pos_curr_token);
  }
  flush_directive();
}

void finish_directive_line()
{
  if (curr_token == tok_newline || curr_token == tok_end_of_source) return;
  if (!some_error_in_curr_directive) {
    pos_diagnostic(es_discretionary_error, ec_extra_text_in_pp_directive, pos_of_directive);
  }
  flush_directive();
}

const char *rest_of_directive_line()
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(256);
  reset_text_buffer(buffer);
  skip_white_space();
  char *loc = curr_char_loc;
  for (;; ++loc) {
    if (*loc == 0) {
      if (loc[1] != lesc_null_char) break;
      ++loc;
      add_char_to_text_buffer(buffer, ' ');
    } else {
      add_char_to_text_buffer(buffer, *loc);
    }
  }
  curr_char_loc = loc;
  while (buffer->size > 0 && strchr(" \t\f\v\r", buffer->buffer[buffer->size - 1]))
    --buffer->size;
  add_char_to_text_buffer(buffer, '\0');
  return buffer->buffer;
}

a_symbol_header *header_of_pp_identifier()
{
  if (!id_contains_ucn_or_multibyte_char) {
    return find_symbol_header(start_of_curr_token, len_of_curr_token);
  }
  unsigned length = len_of_curr_token;
  const char *name = make_canonical_identifier(start_of_curr_token, &length);
  return find_symbol_header(name, length);
}

void note_unguarded_text()
{
  // Where conditionals may span files, a skip can leave the last one.
  if (curr_ise != nullptr && get_ifg_state() < ifg_no_guard) set_ifg_state(ifg_no_guard);
}

//---------------------------------------------------------------------------------------------
// Short directives
//---------------------------------------------------------------------------------------------

// The definition's end stands in the IL like the definition itself.
static void record_undef(a_symbol *macro)
{
  a_macro *record = alloc_macro();
  const char *name = macro->header->identifier;
  size_t length = macro->header->length;
  char *text = (char *)alloc_il(length + 8);
  memcpy(text, "#undef ", 7);
  memcpy(text + 7, name, length + 1);
  record->text = text;
  record->is_undef = true;
  record->body_start = record->body_end = pos_curr_token;
  add_to_macros_list(record);
}

static void undef_macro(a_symbol *macro)
{
  if (macro_def_of_symbol(macro)->cannot_redefine && !gcc_mode && !gpp_mode) {
    pos_diagnostic(es_discretionary_error, ec_cannot_undef_predef_macro, pos_curr_token);
    return;
  }
  record_undef(macro);
  remove_symbol(macro);
}

static void proc_undef()
{
  if (check_misra_c_2004) diagnostic(misra_required_severity, ec_misra_c_2004_19_6);
  check_macro_directive_for_misra();
  get_token();
  if (curr_token != tok_identifier) {
    some_error_in_curr_directive = true;
    syntax_error(ec_exp_identifier);
    return;
  }
  a_symbol_header *header = header_of_pp_identifier();
  if (check_misra_c_2004) misra_hooks.check_for_misra_20_1(header->identifier, header->length);
  if (variadic_macros_allowed && strcmp(header->identifier, "__VA_ARGS__") == 0) {
    pos_error(ec_VA_ARGS_not_allowed, pos_curr_token);
  }
  a_symbol *macro = find_defined_macro(header);
  if (macro != nullptr) undef_macro(macro);
  get_token();
  flush_extra_tokens();
}

static void proc_warning_directive(an_error_code code)
{
  a_source_position position = error_position;
  const char *text = rest_of_directive_line();
  pos_st_warning(code, position, text);
  get_token();
}

static void proc_error_directive()
{
  str_catastrophe(ec_error_directive, rest_of_directive_line());
}

// Reads the line so that it reaches the output, with macros expanded where the pragma asks for it.
static void pass_pragma_to_output(const a_pragma_kind_description *description)
{
  unsigned char flags =
      description == nullptr ? (unsigned char)prf_raw_pp_tokens : description->flags;
  do_not_put_curr_line_in_pp_output = false;
  pass_pp_directive_to_output = true;
  expand_macros = (flags & prf_expand_macros) != 0;
  recognize_keywords_in_pragma = (flags & prf_keywords) != 0;
  fetch_pp_tokens = true;
  while (curr_token != tok_newline && curr_token != tok_end_of_source)
    get_token();
  recognize_keywords_in_pragma = false;
  do_not_put_curr_line_in_pp_output = false;
  pass_pp_directive_to_output = false;
}

static void set_pragma_once();

static void proc_pragma()
{
  a_source_position position;
  bool only_output = do_preprocessing_only && generate_pp_output;
  a_pragma_kind_description *description = look_up_pragma_id(&position);
  if (only_output) {
    if (description != nullptr && description->kind == pragk_once) set_pragma_once();
    pass_pragma_to_output(description);
    return;
  }
  if (do_preprocessing_only) {
    if (description != nullptr && description->phase == pragma_at_directive) {
      record_pragma(description, &pos_of_directive, &position, false);
    }
    flush_directive();
    return;
  }
  if (curr_token == tok_newline) return; // no name
  record_pragma(description, &pos_of_directive, &position, false);
}

static void proc_unknown_directive()
{
  some_error_in_curr_directive = true;
  if (check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_19_16, misra_required_severity)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_19_16, pos_curr_token);
  } else {
    pos_diagnostic(es_discretionary_error, ec_bad_pp_directive_keyword, pos_curr_token);
  }
  flush_directive();
}

static void report_nonstandard_directive()
{
  if (strict_ansi_mode) {
    pos_diagnostic(strict_ansi_discretionary_severity, ec_nonstd_pp_directive, pos_curr_token);
  }
}

//---------------------------------------------------------------------------------------------
// Dispatch
//---------------------------------------------------------------------------------------------

static void carry_out_directive(a_pp_directive_kind kind)
{
  switch (kind) {
  case ppd_if: proc_if(); return;
  case ppd_ifdef: proc_ifdef(false); return;
  case ppd_ifndef: proc_ifdef(true); return;
  case ppd_elif: proc_elif(); break;
  case ppd_else: proc_else(); return;
  case ppd_endif: proc_endif(); return;
  case ppd_include: proc_include(false); return;
  case ppd_include_next:
    report_nonstandard_directive();
    proc_include(true);
    return;
  case ppd_define: proc_define(); break;
  case ppd_undef: proc_undef(); break;
  case ppd_line: proc_line(false); break;
  case ppd_digit_sequence:
    report_nonstandard_directive();
    proc_line(true);
    break;
  case ppd_error: proc_error_directive(); break;
  case ppd_warn: proc_warning_directive(ec_warn_directive); break;
  case ppd_warning: proc_warning_directive(ec_warning_directive); break;
  case ppd_pragma: proc_pragma(); break;
  case ppd_null: return;
  case ppd_unknown: proc_unknown_directive(); break;
  }
  note_unguarded_text();
}

// The modes of the scanner that a directive replaces.
struct a_saved_scanner_modes {
  bool expand_macros, fetch_pp_tokens, do_string_literal_concatenation, treat_newline_as_token;
  bool in_pp_if_expression, caching_pragma_tokens, suppress_keyword_recognition;
  bool in_preprocessing_directive;
  a_source_position error_position;
  char *delete_source_from_loc;
};

static void set_modes_of_directive(a_saved_scanner_modes *saved)
{
  *saved = {expand_macros,
            fetch_pp_tokens,
            do_string_literal_concatenation,
            treat_newline_as_token,
            in_pp_if_expression,
            caching_pragma_tokens,
            suppress_keyword_recognition,
            in_preprocessing_directive,
            error_position,
            delete_source_from_loc};
  do_string_literal_concatenation = false;
  actual_include_was_suppressed = false;
  in_preprocessing_directive = true;
  fetch_pp_tokens = true;
  expand_macros = false;
  treat_newline_as_token = false;
  in_pp_if_expression = false;
  caching_pragma_tokens = false;
  suppress_keyword_recognition = false;
  delete_source_from_loc = nullptr;
}

static void restore_modes(const a_saved_scanner_modes *saved)
{
  expand_macros = saved->expand_macros;
  fetch_pp_tokens = saved->fetch_pp_tokens;
  do_string_literal_concatenation = saved->do_string_literal_concatenation;
  treat_newline_as_token = saved->treat_newline_as_token;
  in_pp_if_expression = saved->in_pp_if_expression;
  caching_pragma_tokens = saved->caching_pragma_tokens;
  suppress_keyword_recognition = saved->suppress_keyword_recognition;
  in_preprocessing_directive = saved->in_preprocessing_directive;
  error_position = saved->error_position;
  exp_header_name = exp_system_header_name = exp_digit_sequence = false;
  // A macro call that is being collected goes on behind the directive.
  if (saved->delete_source_from_loc != nullptr) delete_source_from_loc = curr_char_loc;
}

void pp_directive()
{
  a_saved_scanner_modes saved;
  a_source_position saved_position = pos_of_directive;
  pos_of_directive = pos_curr_token;
  set_modes_of_directive(&saved);
  push_lexical_state_stack();
  add_stop_token(tok_newline);
  carry_out_directive(scan_directive_keyword());
  finish_directive_line();
  remove_stop_token(tok_newline);
  pop_lexical_state_stack();
  restore_modes(&saved);
  pos_of_directive = saved_position;
  process_immediate_pragmas();
}

//---------------------------------------------------------------------------------------------
// Pragmas that work inside the directive
//---------------------------------------------------------------------------------------------

static void set_pragma_once()
{
  if (!in_included_file()) return;
  an_include_file_history *history = curr_ise->include_history;
  if (history == nullptr) {
    find_include_history(curr_ise->full_name, &history, true, true);
    curr_ise->include_history = history;
  }
  set_ifg_state(ifg_once);
  history->pragma_once_seen = true;
}

void once_pragma(a_pending_pragma *, a_symbol *, a_statement *)
{
  set_pragma_once();
}

void hdrstop_or_no_pch_pragma(a_pending_pragma *, a_symbol *, a_statement *)
{
  flush_directive();
}

//---------------------------------------------------------------------------------------------
// Runs
//---------------------------------------------------------------------------------------------

void process_macro_preincludes()
{
  if (macro_preinclude_file_list == nullptr) return;
  bool saved_output = generate_pp_output;
  bool saved_fetch = fetch_pp_tokens, saved_expand = expand_macros;
  generate_pp_output = false;
  fetch_pp_tokens = true;
  expand_macros = false;
  while (curr_ise != nullptr && curr_ise->is_macro_preinclude) {
    int depth = input_stack_depth;
    while (get_token() != tok_end_of_source) {
    }
    check(input_stack_depth == depth);
    pop_input_stack();
  }
  generate_pp_output = saved_output;
  fetch_pp_tokens = saved_fetch;
  expand_macros = saved_expand;
  do_not_put_curr_line_in_pp_output = true;
}

void cpp_driver()
{
  process_macro_preincludes();
  fetch_pp_tokens = true;
  expand_macros = generate_pp_output;
  while (get_token() != tok_end_of_source) {
  }
  if (source_line_modif_list != nullptr) {
    if (generate_pp_output) gen_pp_output_for_curr_line();
    if (f_raw_listing != nullptr) gen_expanded_raw_listing_output_for_curr_line(true);
  }
}

//---------------------------------------------------------------------------------------------
// Start-up
//---------------------------------------------------------------------------------------------

void preproc_one_time_init()
{
  register_trans_unit_variable(pp_if_stack_depth);
  register_trans_unit_variable(base_pp_if_stack_depth);
  register_trans_unit_variable(pp_if_stack);
  register_trans_unit_variable(currently_in_pp_if_skip);
  register_trans_unit_variable(some_error_in_curr_directive);
  register_trans_unit_variable(do_not_put_curr_line_in_pp_output);
  register_trans_unit_variable(pass_pp_directive_to_output);
  register_trans_unit_variable(no_token_separators_in_this_line_of_pp_output);
  register_trans_unit_variable(actual_include_was_suppressed);
  register_trans_unit_variable(prev_pp_output_line_was_complete);
  register_trans_unit_variable(pos_of_directive);
}

void preproc_init()
{
}

void preproc_trans_unit_init()
{
  in_preprocessing_directive = false;
  fetch_pp_tokens = false;
  expand_macros = true;
  do_string_literal_concatenation = true;
  in_pp_if_expression = false;
  exp_header_name = exp_system_header_name = exp_digit_sequence = false;
  prev_pp_output_line_was_complete = true;
  next_seq_in_pp_output = 1;
  do_not_put_curr_line_in_pp_output = true;
  pass_pp_directive_to_output = false;
  no_token_separators_in_this_line_of_pp_output = false;
  actual_include_was_suppressed = false;
  some_error_in_curr_directive = false;
  currently_in_pp_if_skip = false;
  pp_if_stack_depth = base_pp_if_stack_depth = -1;
  pos_of_directive = null_source_position;
}
