// macro_builtin.cpp - macros without a replacement list: their text is made at each use.
// Owns:    the counter of __COUNTER__, the value of a computed __STDC__.
// Entry:   invoke_builtin_macro, make_pp_int_constant.
// See:     C99 6.10.8, 6.10.9; __BASE_FILE__, __COUNTER__ and __TIMESTAMP__ are "GNU".
#include <cctype>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "lex/pragma.h"
#include "mem/mem_manage.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

unsigned long counter_macro_value;
int stdc_macro_value;

//---------------------------------------------------------------------------------------------
// Texts.

// Attaches a text in place of the name.
static void attach_builtin_text(a_macro_call *call, const char *text, unsigned long length)
{
  char *from = start_of_curr_token;
  a_pointer_registration keep_from(&from);
  ensure_expansion_buffer_space(length + 4);
  char *start = next_free_in_expansion_buffer;
  memcpy(start, text, length);
  char *to = start + length;
  if (loc_is_in_curr_source_line(from)) {
    *to++ = 0;
    *to++ = lesc_end_of_invocation;
  }
  to[0] = 0;
  to[1] = lesc_end_of_modif;
  next_free_in_expansion_buffer = to + 2;
  attach_expansion(call, from, start, to);
}

static void attach_number(a_macro_call *call, unsigned long number)
{
  char text[24];
  int length = snprintf(text, sizeof text, "%lu", number);
  attach_builtin_text(call, text, (unsigned long)length);
}

// A string literal that names a file.
static void attach_file_name(a_macro_call *call, const char *name)
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(200);
  reset_text_buffer(buffer);
  add_char_to_text_buffer(buffer, '"');
  for (const char *p = name; *p != 0; ++p) {
    unsigned char c = (unsigned char)*p;
    char octal[8];
    if ((c == '"' || c == '\\') && !exp_header_name) add_char_to_text_buffer(buffer, '\\');
    if (c == '\n') {
      add_to_text_buffer(buffer, "\\n", 2);
    } else if (isprint(c) || c >= 128) {
      add_char_to_text_buffer(buffer, (char)c);
    } else {
      snprintf(octal, sizeof octal, "\\%03o", c & ((1u << targ_host_string_char_bit) - 1));
      add_to_text_buffer(buffer, octal, 4);
    }
  }
  add_char_to_text_buffer(buffer, '"');
  attach_builtin_text(call, buffer->buffer, buffer->size);
}

static void attach_line_number(a_macro_call *call)
{
  const char *file_name, *full_name;
  a_line_number line;
  bool at_end;
  conv_seq_to_file_and_line(curr_seq_number, &file_name, &full_name, &line, &at_end);
  attach_number(call, line);
}

static void attach_current_file_name(a_macro_call *call)
{
  const char *file_name, *full_name;
  a_line_number line;
  bool at_end;
  conv_seq_to_file_and_line(call->position.seq, &file_name, &full_name, &line, &at_end);
  attach_file_name(call, file_name);
}

static void attach_timestamp(a_macro_call *call)
{
  const char *text = "";
  if (curr_ise != nullptr) text = get_file_modification_time_string(curr_ise->full_name, false);
  attach_file_name(call, *text == 0 ? "<unknown>" : text);
}

static void attach_stdc(a_macro_call *call)
{
  bool is_zero = curr_ise != nullptr && curr_ise->is_system_header;
  attach_number(call, is_zero ? 0 : (unsigned long)stdc_macro_value);
}

//---------------------------------------------------------------------------------------------
// defined.

a_token_kind make_pp_int_constant(long value)
{
  bool widest = c99_mode || gcc_mode || gpp_mode;
  set_integer_constant(&const_for_curr_token, value, widest ? targ_intmax_kind : ik_long);
  return tok_int_constant;
}

static void report_form_of_defined()
{
  if (check_misra_c_2004) diagnostic(misra_required_severity, ec_misra_c_2004_19_14);
}

// The operand, a name or a name in parentheses; returns whether it is a macro.
static bool scan_operand_of_defined()
{
  get_token();
  bool in_parens = curr_token == tok_lparen;
  if (in_parens) get_token();
  if (curr_token != tok_identifier) {
    report_form_of_defined();
    error(ec_exp_identifier);
    return false;
  }
  unsigned length = len_of_curr_token;
  char *name = start_of_curr_token;
  if (id_contains_ucn_or_multibyte_char) name = make_canonical_identifier(name, &length);
  a_symbol *macro = find_defined_macro(find_symbol_header(name, length));
  if (macro != nullptr) record_symbol_reference(4, macro, &pos_curr_token, true);
  if (in_parens) {
    char *behind_name = curr_char_loc;
    a_pointer_registration keep_behind_name(&behind_name);
    get_token();
    if (curr_token != tok_rparen) {
      report_form_of_defined();
      error(ec_exp_rparen);
      curr_char_loc = behind_name;
    }
  }
  return macro != nullptr;
}

static a_token_kind invoke_defined()
{
  if (!in_pp_if_expression) return tok_identifier;
  // One that macro expansion has made is not one of the forms either.
  if (!loc_is_in_curr_source_line(start_of_curr_token)) report_form_of_defined();
  bool saved_fetch = fetch_pp_tokens;
  bool saved_expand = expand_macros;
  fetch_pp_tokens = true;
  expand_macros = false;
  bool is_defined = scan_operand_of_defined();
  fetch_pp_tokens = saved_fetch;
  expand_macros = saved_expand;
  static char texts[2][3] = {"0L", "1L"};
  start_of_curr_token = texts[is_defined];
  end_of_curr_token = start_of_curr_token + 1;
  len_of_curr_token = 2;
  return make_pp_int_constant(is_defined);
}

//---------------------------------------------------------------------------------------------
// _Pragma.

// Undoes the spelling of the string literal that is the current token; the text ends as arguments do.
static void destringize(an_arg_text *text)
{
  const char *p = start_of_curr_token;
  const char *end = end_of_curr_token;
  ensure_arg_text_space(text, len_of_curr_token + 4);
  if (*p == 'L') ++p;
  for (++p; p < end; ++p) {
    if (*p == '\\' && (p[1] == '"' || p[1] == '\\')) ++p;
    text->text[text->length++] = *p;
  }
  for (char c : {(char)0, (char)lesc_newline, (char)0, (char)lesc_end_of_modif}) {
    text->text[text->length++] = c;
  }
}

// Records the pragma whose text was made, as if it stood in a directive.
static void record_pragma_of_operator(const a_macro_call *call, an_arg_text *text)
{
  char *saved_loc = curr_char_loc;
  a_pointer_registration keep_loc(&saved_loc);
  unsigned newest = newest_source_line_modif();
  bool saved_directive = in_preprocessing_directive;
  bool saved_fetch = fetch_pp_tokens;
  bool saved_expand = expand_macros;
  a_source_line_modif *modif =
      add_detached_source_line_modif(text->text, text->text + text->length - 2, nullptr);
  modif->stop_at_end = true;
  modif->pos = call->position;
  curr_char_loc = text->text;
  in_preprocessing_directive = true;
  fetch_pp_tokens = true;
  expand_macros = false;
  a_source_position name_position;
  a_pragma_kind_description *description = look_up_pragma_id(&name_position);
  bool is_empty = curr_token == tok_newline || curr_token == tok_end_of_source;
  if (!is_empty) record_pragma(description, &call->position, &name_position, true);
  in_preprocessing_directive = saved_directive;
  fetch_pp_tokens = saved_fetch;
  expand_macros = saved_expand;
  rem_source_line_modifs_since(newest);
  curr_char_loc = saved_loc;
}

// A faulty operand: goes on behind its parenthesis, so that the text around is read as if the operator
// weren't there.
static void skip_pragma_operand(an_error_code code)
{
  pos_error(code, pos_curr_token);
  for (int depth = 1; curr_token != tok_end_of_source; get_token()) {
    if (curr_token == tok_semicolon || curr_token == tok_lbrace || curr_token == tok_rbrace) return;
    if (curr_token == tok_lparen) ++depth;
    if (curr_token == tok_rparen && --depth == 0) break;
  }
}

// Reads the operator's operand and carries it out.  Returns false where the current token has to be
// read as if the operator weren't there.
static bool scan_pragma_operator(const a_macro_call *call)
{
  get_token();
  if (curr_token != tok_lparen) {
    pos_error(ec_exp_lparen, pos_curr_token);
    return false;
  }
  get_token();
  if (curr_token != tok_string_literal) {
    skip_pragma_operand(ec_exp_string_literal);
    return curr_token == tok_rparen;
  }
  an_arg_text text = {};
  text.text = alloc_resizable_buffer(len_of_curr_token + 8);
  text.capacity = len_of_curr_token + 8;
  destringize(&text);
  get_token();
  if (curr_token == tok_rparen) {
    record_pragma_of_operator(call, &text);
    return true;
  }
  skip_pragma_operand(ec_exp_rparen);
  return curr_token == tok_rparen;
}

static a_token_kind invoke_pragma_operator(const a_macro_call *call)
{
  // Deeper, and where the text is only copied, it waits until it reaches the outermost level.
  if (macro_depth > 0 || in_preprocessing_directive) return tok_identifier;
  unsigned char white_space = kind_of_white_space_skipped;
  bool saved_fetch = fetch_pp_tokens;
  bool saved_expand = expand_macros;
  fetch_pp_tokens = true;
  expand_macros = false;
  bool okay = scan_pragma_operator(call);
  fetch_pp_tokens = saved_fetch;
  expand_macros = saved_expand;
  kind_of_white_space_skipped = white_space;
  if (!okay) {
    if (curr_token == tok_end_of_source) return tok_end_of_source;
    curr_char_loc = start_of_curr_token; // the modes of its reader apply to it
    return tok_error;
  }
  process_immediate_pragmas();
  return tok_error;
}

//---------------------------------------------------------------------------------------------

a_token_kind invoke_builtin_macro(a_macro_call *call, bool *expansion_attached)
{
  a_builtin_macro builtin = call->macro->builtin;
  if (builtin == bim_defined) return invoke_defined();
  if (builtin == bim_pragma) return invoke_pragma_operator(call);
  *expansion_attached = true;
  switch (builtin) {
  case bim_line: attach_line_number(call); break;
  case bim_file: attach_current_file_name(call); break;
  case bim_base_file: attach_file_name(call, il_header.source_files->file_name); break;
  case bim_counter: attach_number(call, counter_macro_value++); break;
  case bim_timestamp: attach_timestamp(call); break;
  case bim_stdc: attach_stdc(call); break;
  case bim_none:
  case bim_defined:
  case bim_pragma: break;
  }
  return tok_identifier;
}
