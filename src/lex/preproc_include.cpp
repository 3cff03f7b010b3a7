// preproc_include.cpp - #include, #include_next, #line and the line markers of preprocessed text.
// Uses:    files (source_input.h), conversion of characters (literals.h).
// Entry:   proc_include, proc_line.
// See:     C99 6.10.2, 6.10.4; #include_next is GNU.
#include <cstring>

#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "lex/lexical.h"
#include "lex/literals.h"
#include "lex/macro.h"
#include "lex/preproc.h"
#include "lex/preproc_private.h"
#include "lex/source_input.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/symbol_tbl.h"

//---------------------------------------------------------------------------------------------
// Names of files
//---------------------------------------------------------------------------------------------

// The characters from `loc` to `end`, with escapes undone if `escapes`, in the permanent file-scope region.
static char *convert_file_name(char *loc, char *end, bool escapes)
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(256);
  reset_text_buffer(buffer);
  a_char_conversion_state state;
  clear_char_conversion_state(&state, &loc);
  while (loc < end || state.pending_count > 0) {
    unsigned long c = 0;
    conv_single_char(&state, escapes, &c, 0xFF, true);
    add_char_to_text_buffer(buffer, (char)c);
  }
  add_char_to_text_buffer(buffer, '\0');
  char *name = (char *)alloc_primary_file_scope_il(buffer->size);
  memcpy(name, buffer->buffer, buffer->size);
  return name;
}

static void bad_file_name()
{
  if (check_misra_c_2004) diagnostic(misra_required_severity, ec_misra_c_2004_19_3);
  error_position = pos_curr_token;
  catastrophe(ec_exp_file_name);
}

// Macros gave "<": the name is put together from the tokens up to ">".
static char *assemble_header_name()
{
  a_source_position position = pos_curr_token;
  if (temp_text_buffer == nullptr) temp_text_buffer = alloc_text_buffer(256);
  reset_text_buffer(temp_text_buffer);
  exp_header_name = exp_system_header_name = false;
  for (get_token(); curr_token != tok_gt; get_token()) {
    if (curr_token == tok_newline || curr_token == tok_end_of_source) bad_file_name();
    if (kind_of_white_space_skipped != 0 && temp_text_buffer->size > 0) {
      add_char_to_text_buffer(temp_text_buffer, ' ');
    }
    add_to_text_buffer(temp_text_buffer, start_of_curr_token, len_of_curr_token);
  }
  if (temp_text_buffer->size == 0) bad_file_name();
  pos_curr_token = error_position = position;
  char *text = temp_text_buffer->buffer;
  return convert_file_name(text, text + temp_text_buffer->size, false);
}

// The operand of #include; *angle_bracket tells its form.  Ends the run if there is none.
static char *scan_header_name_operand(bool *angle_bracket)
{
  if (skip_white_space() == '<') exp_system_header_name = true;
  expand_macros = true;
  exp_header_name = true;
  get_token();
  exp_header_name = exp_system_header_name = false;
  char *name = nullptr;
  *angle_bracket = false;
  if (curr_token == tok_header_name) {
    *angle_bracket = *start_of_curr_token == '<';
    char closing = *angle_bracket ? '>' : '"';
    if (len_of_curr_token < 3 || *end_of_curr_token != closing) bad_file_name();
    name = convert_file_name(start_of_curr_token + 1, end_of_curr_token, !*angle_bracket);
  } else if (curr_token == tok_lt) {
    *angle_bracket = true;
    name = assemble_header_name();
  } else {
    bad_file_name();
  }
  expand_macros = false;
  return name;
}

//---------------------------------------------------------------------------------------------
// #include
//---------------------------------------------------------------------------------------------

// A name of <stdarg.h> becomes a keyword, and a macro so that it can be tested for.
static void enter_stdarg_name(a_token_kind kind, const char *name)
{
  enter_keyword(kind, name);
  enter_predef_macro(name, name, false, false);
}

// The generated code includes <stdarg.h> itself: its names are entered, the file isn't opened.
static bool replace_stdarg_header(const char *name)
{
  if (!pass_stdarg_references_to_generated_code) return false;
  bool is_cstdarg = C_dialect == 2 && strcmp(name, "cstdarg") == 0;
  if (strcmp(name, "stdarg.h") != 0 && !is_cstdarg) return false;
  bool declared = preproc_hooks.builtin_va_list_is_declared != nullptr &&
                  preproc_hooks.builtin_va_list_is_declared();
  if (!declared) {
    enter_stdarg_name(tok_va_start, "va_start");
    enter_stdarg_name(tok_va_arg, "va_arg");
    enter_stdarg_name(tok_va_end, "va_end");
    if (va_copy_macro_allowed) enter_stdarg_name(tok_va_copy, "va_copy");
  }
  if (preproc_hooks.declare_builtin_va_list_type != nullptr) {
    preproc_hooks.declare_builtin_va_list_type(is_cstdarg);
  }
  if (generate_pp_output) do_not_put_curr_line_in_pp_output = false;
  actual_include_was_suppressed = true;
  return true;
}

void proc_include(bool is_next)
{
  if (check_misra_c_2004 && curr_ise->any_real_token) {
    pos_diagnostic(misra_advisory_severity, ec_misra_c_2004_19_1, pos_of_directive);
  }
  note_unguarded_text();
  if (is_next && processing_primary_source_file()) {
    pos_warning(ec_include_next_in_primary_source_file, pos_curr_token);
    is_next = false;
  }
  bool angle_bracket;
  char *name = scan_header_name_operand(&angle_bracket);
  a_source_position position = pos_curr_token;
  get_token();
  flush_extra_tokens();
  no_token_separators_in_this_line_of_pp_output = true;
  if (check_misra_c_2004) {
    misra_hooks.check_for_invalid_identifier(name, &position, ansi_c_header);
  }
  if (replace_stdarg_header(name)) return;
  bool failure_is_not_fatal =
      do_preprocessing_only && (!generate_pp_output || gcc_mode || gpp_mode);
  error_position = position;
  open_file_and_push_input_stack(name, true, true, angle_bracket, false, false, is_next,
                                 failure_is_not_fatal);
}

//---------------------------------------------------------------------------------------------
// #line
//---------------------------------------------------------------------------------------------

// The current token, a digit sequence, as a number; false if it doesn't fit 32 bits.
static bool value_of_digit_sequence(unsigned *value)
{
  unsigned long number = 0;
  for (char *loc = start_of_curr_token; loc <= end_of_curr_token; ++loc) {
    number = number * 10 + (unsigned)(*loc - '0');
    if (number > 0xFFFFFFFF) return false;
  }
  *value = (unsigned)number;
  return true;
}

// From here on the file has the line number and the name.
static void change_line_and_name(unsigned line, char *name, bool is_system_header)
{
  a_source_file *physical = curr_ise->first_source_file;
  a_source_file *current = curr_ise->curr_source_file;
  if (name != nullptr) curr_ise->file_name = name;
  curr_ise->line_number = line - 1;
  if (current != physical) record_end_of_source_file(current, seq_number_last_read);
  a_source_file_start start = {};
  start.parent = physical;
  start.seq = seq_number_last_read + 1;
  start.line = line;
  start.file_name = curr_ise->file_name;
  start.name_as_written = name;
  start.is_include_file = physical->is_include_file;
  start.is_angle_bracket_include = physical->is_angle_bracket_include;
  start.is_system_header = is_system_header || (name == nullptr && current->is_system_header);
  curr_ise->is_system_header = start.is_system_header;
  curr_ise->curr_source_file = record_start_of_source_file(start);
  if (generate_pp_output) gen_pp_line_info(' ', true);
  if (f_raw_listing != nullptr) gen_rlisting_line_info(' ');
}

// The flags behind the name in a line marker; 3 marks a system header.
static bool scan_marker_flags()
{
  bool is_system_header = false;
  exp_digit_sequence = true;
  while (curr_token == tok_digit_sequence) {
    unsigned flag;
    if (value_of_digit_sequence(&flag) && flag == 3) is_system_header = true;
    get_token();
  }
  exp_digit_sequence = false;
  return is_system_header;
}

// Syntax error `code` at the current token.
static void line_directive_error(an_error_code code)
{
  some_error_in_curr_directive = true;
  error_position = pos_curr_token;
  syntax_error(code);
}

void proc_line(bool is_digit_form)
{
  if (!is_digit_form) {
    expand_macros = true;
    exp_digit_sequence = true;
    get_token();
    exp_digit_sequence = false;
    if (curr_token != tok_digit_sequence) {
      line_directive_error(ec_exp_line_number);
      return;
    }
  }
  unsigned line = 0;
  bool good = value_of_digit_sequence(&line);
  if (good && line == 0) {
    good = is_digit_form;
    line = 1;
  }
  if (!good) {
    some_error_in_curr_directive = true;
    pos_error(ec_bad_line_number, pos_curr_token);
  }
  char *name = nullptr;
  bool is_system_header = false;
  exp_digit_sequence = is_digit_form;
  get_token();
  exp_digit_sequence = false;
  if (curr_token == tok_string_literal && *start_of_curr_token == '"') {
    name = convert_file_name(start_of_curr_token + 1, end_of_curr_token, true);
    exp_digit_sequence = is_digit_form;
    get_token();
    if (is_digit_form) is_system_header = scan_marker_flags();
  } else if (curr_token != tok_newline) {
    line_directive_error(ec_exp_file_name);
    return;
  }
  expand_macros = false;
  exp_digit_sequence = false;
  finish_directive_line();
  if (good) change_line_and_name(line, name, is_system_header);
}
