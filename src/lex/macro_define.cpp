// macro_define.cpp - #define: from the text of a definition to the encoded replacement list.
// Owns:    the buffer in which a list is built.
// Rule:    the list is a text in which only parameters, # and ## are items of their own; two definitions
//          are the same if their lists are the same bytes and their parameters have the same names.
// Entry:   proc_define, find_defined_macro.
// See:     C99 6.10.3; GNU differences are marked "GNU".
#include <cstring>
#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lex_private.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "lex/preproc.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

static a_text_buffer *list_buffer; // the encoded list being built

static constexpr size_t no_item = (size_t)-1;

namespace {
// A definition being read.
struct a_definition {
  a_symbol_locator locator;
  a_symbol *old_symbol; // the macro of that name, or null
  a_macro_def def;
  a_macro_param **params_tail;
  a_source_position body_start;
  a_source_position body_end;
  bool from_command_line;
  bool names_library; // a name of the standard library; only while MISRA-C:2004 is checked
  size_t text_item;   // offset of the text item that is being added to, or no_item
  // The current token, as the body's reader sees it:
  unsigned param_number; // of a parameter's name, else 0
  a_macro_param *param;
  bool white_before;
  char *prev_token_end; // one behind the token before
  a_misra_macro_check misra;
};
} // namespace

void clear_macro_def(a_macro_def *macro)
{
  memset((void *)macro, 0, sizeof(*macro));
  macro->object_like = true;
  macro->builtin = bim_none;
}

static inline bool rest_params_allowed()
{
  return variadic_macros_allowed || extended_variadic_macros_allowed;
}

static bool token_is(const char *text)
{
  return strlen(text) == len_of_curr_token &&
         memcmp(start_of_curr_token, text, len_of_curr_token) == 0;
}

//---------------------------------------------------------------------------------------------
// Building the list.

static void add_item(a_replacement_item kind, unsigned long operand)
{
  char item[size_of_item] = {(char)kind, (char)operand, (char)(operand >> 8),
                             (char)(operand >> 16)};
  add_to_text_buffer(list_buffer, item, size_of_item);
}

static void add_param_item(a_definition *d, a_replacement_item kind, unsigned long operand)
{
  d->text_item = no_item;
  add_item(kind, operand);
}

// Adds to the current text item, which is created when there is none or it is full.
static void add_text(a_definition *d, const char *text, size_t length)
{
  while (length > 0) {
    if (d->text_item == no_item) {
      d->text_item = list_buffer->size;
      add_item(rli_text, 0);
    }
    unsigned char *item = (unsigned char *)list_buffer->buffer + d->text_item;
    unsigned long old_length = operand_of_item(item);
    size_t added = length;
    if (added > max_item_operand - old_length) added = max_item_operand - old_length;
    unsigned long new_length = old_length + added;
    item[1] = (unsigned char)new_length;
    item[2] = (unsigned char)(new_length >> 8);
    item[3] = (unsigned char)(new_length >> 16);
    add_to_text_buffer(list_buffer, text, added);
    text += added;
    length -= added;
    if (length > 0) d->text_item = no_item;
  }
}

static void add_separator(a_definition *d, bool white)
{
  if (white) {
    add_text(d, " ", 1);
  } else if (!pcc_preprocessing_mode) {
    static const char separator[2] = {0, lesc_token_separator};
    add_text(d, separator, 2);
  }
}

//---------------------------------------------------------------------------------------------
// Name and parameters.

static bool read_macro_name(a_definition *d)
{
  scanning_macro_name = true;
  get_token();
  scanning_macro_name = false;
  if (curr_token != tok_identifier) {
    syntax_error(ec_exp_identifier);
    some_error_in_curr_directive = true;
    return false;
  }
  char *name = start_of_curr_token;
  unsigned length = len_of_curr_token;
  if (id_contains_ucn_or_multibyte_char) name = make_canonical_identifier(name, &length);
  d->locator = cleared_locator;
  d->locator.header = find_symbol_header(name, length);
  d->locator.position = pos_curr_token;
  if (variadic_macros_allowed && token_is("__VA_ARGS__")) error(ec_VA_ARGS_not_allowed);
  d->old_symbol = find_macro_symbol(d->locator.header);
  return true;
}

static a_macro_param *find_param(const a_definition *d, const char *text, unsigned length,
                                 unsigned *number)
{
  unsigned n = 0;
  for (a_macro_param *p = d->def.params; p != nullptr; p = p->next) {
    ++n;
    if (p->name[0] == *text && p->name_length == length && memcmp(p->name, text, length) == 0) {
      *number = n;
      return p;
    }
  }
  *number = 0;
  return nullptr;
}

static void add_param(a_definition *d, const char *name, unsigned length)
{
  a_macro_param *param = (a_macro_param *)alloc_in_region(0, sizeof(a_macro_param));
  char *copy = (char *)alloc_in_region(0, length + 1);
  memcpy(copy, name, length);
  copy[length] = 0;
  param->next = nullptr;
  param->name = copy;
  param->name_length = length;
  param->needs_expansion = false;
  *d->params_tail = param;
  d->params_tail = &param->next;
  ++d->def.param_count;
}

// One parameter; the current token is then behind it.  Returns false when there is none.
static bool read_param(a_definition *d)
{
  if (curr_token == tok_ellipsis && rest_params_allowed()) {
    d->def.variadic = true;
    add_param(d, "__VA_ARGS__", 11);
    get_token();
    return true;
  }
  if (curr_token != tok_identifier) {
    required_token(tok_identifier, ec_exp_identifier);
    return false;
  }
  unsigned number;
  if (variadic_macros_allowed && token_is("__VA_ARGS__")) {
    error(ec_VA_ARGS_not_allowed);
  } else if (find_param(d, start_of_curr_token, len_of_curr_token, &number) != nullptr) {
    error(ec_duplicate_macro_param_name);
  }
  add_param(d, start_of_curr_token, len_of_curr_token);
  get_token();
  if (curr_token == tok_ellipsis && extended_variadic_macros_allowed) { // GNU: a named rest
    d->def.variadic = true;
    get_token();
  }
  return true;
}

// The list of parameters, of which the "(" is next.  Returns false after a syntax error.
static bool read_params(a_definition *d)
{
  d->def.object_like = false;
  get_token();
  get_token();
  add_stop_token(tok_comma);
  add_stop_token(tok_rparen);
  bool okay = true;
  if (curr_token != tok_rparen) {
    for (;;) {
      if (!read_param(d)) okay = false;
      if (d->def.variadic || curr_token != tok_comma) break;
      get_token();
    }
  }
  remove_stop_token(tok_rparen);
  remove_stop_token(tok_comma);
  if (curr_token != tok_rparen) {
    syntax_error(ec_exp_rparen);
    okay = false;
  }
  if (!okay) some_error_in_curr_directive = true;
  return okay;
}

// A definition of the command line: what stands between name and value.
static void pass_equals_of_cmd_line(const a_definition *d)
{
  if (*curr_char_loc == '=') {
    ++curr_char_loc;
  } else if (!gcc_mode && !gpp_mode) {
    str_command_line_error(ec_bad_cmd_line_macro, curr_command_line_macro_def);
  } else if (*curr_char_loc != ' ') {
    str_warning(ec_equals_assumed_in_cmd_line_macro_def, d->locator.header->identifier);
  }
}

//---------------------------------------------------------------------------------------------
// The body.

// K&R mode: the characters of a string or character constant are read one at a time, and names in it
// can be parameters.
static char pcc_quote; // the quote of the constant that the reader is in, or 0

static bool read_pcc_quoted_token(a_definition *d)
{
  char *p = curr_char_loc;
  if (*p == 0 && p[1] != lesc_null_char) { // the constant isn't closed
    pcc_quote = 0;
    return false;
  }
  start_of_curr_token = p;
  if (is_id_start_char(*p)) {
    while (is_id_char(*p))
      ++p;
    curr_token = tok_identifier;
  } else {
    if (*p == pcc_quote) pcc_quote = 0;
    p += (*p == '\\' && p[1] != 0) || *p == 0 ? 2 : 1;
    curr_token = tok_cpp_quote;
  }
  curr_char_loc = p;
  end_of_curr_token = p - 1;
  len_of_curr_token = (unsigned)(p - start_of_curr_token);
  d->white_before = false;
  return true;
}

// At a quote in K&R mode: begins reading the constant's characters.
static bool begin_pcc_quoted_token(a_definition *d)
{
  char *p = curr_char_loc;
  while (*p == ' ' || *p == '\t')
    ++p;
  if (*p != '"' && *p != '\'') return false;
  bool white = p != curr_char_loc;
  pcc_quote = *p;
  start_of_curr_token = end_of_curr_token = p;
  len_of_curr_token = 1;
  curr_char_loc = p + 1;
  curr_token = tok_cpp_quote;
  d->white_before = white;
  return true;
}

// Old System V: an empty comment between two tokens pastes them.
static bool empty_comment_pastes(const a_definition *d)
{
  return SVR4_C_mode && C_dialect != 2 && d->prev_token_end != nullptr &&
         start_of_curr_token == d->prev_token_end + 4 && memcmp(d->prev_token_end, "/**/", 4) == 0;
}

static inline bool at_end_of_body()
{
  return curr_token == tok_newline || curr_token == tok_end_of_source;
}

// The next token of the body, with what the reader knows of it.
static void read_body_token(a_definition *d)
{
  bool in_quote = false;
  if (pcc_preprocessing_mode) {
    in_quote = pcc_quote != 0 ? read_pcc_quoted_token(d) : begin_pcc_quoted_token(d);
  }
  if (!in_quote) {
    get_token();
    d->white_before = white_space_separates();
  }
  d->param_number = 0;
  d->param = nullptr;
  if (curr_token == tok_identifier) {
    d->param = find_param(d, start_of_curr_token, len_of_curr_token, &d->param_number);
  }
  if (check_misra_c_2004 && !at_end_of_body()) {
    note_token_for_misra(&d->misra, d->param != nullptr, !d->def.object_like);
  }
  if (curr_token != tok_identifier) return;
  if (d->param == nullptr && variadic_macros_allowed && !d->def.variadic &&
      token_is("__VA_ARGS__")) {
    error(ec_VA_ARGS_not_allowed);
  }
}

// A parameter that is the current token: how it is replaced depends on what follows.
static void add_param_of_body(a_definition *d, bool behind_paste)
{
  a_macro_param *param = d->param;
  unsigned number = d->param_number;
  d->prev_token_end = end_of_curr_token + 1;
  read_body_token(d);
  bool is_raw = behind_paste || pcc_preprocessing_mode ||
                (curr_token == tok_sharp_sharp && !at_end_of_body()) || empty_comment_pastes(d);
  if (!is_raw) param->needs_expansion = true;
  add_param_item(d, is_raw ? rli_raw_param : rli_param, number);
}

// "#" of a function-like macro.
static void add_string_param_of_body(a_definition *d)
{
  read_body_token(d);
  if (d->param_number == 0) {
    error(ec_exp_macro_param);
    some_error_in_curr_directive = true;
    return;
  }
  add_param_item(d, rli_string_param, d->param_number);
  d->prev_token_end = end_of_curr_token + 1;
  read_body_token(d);
}

static void add_plain_token_of_body(a_definition *d)
{
  if (curr_token == tok_error) remark(err_code_for_error_token);
  add_text(d, start_of_curr_token, len_of_curr_token);
  d->prev_token_end = end_of_curr_token + 1;
  read_body_token(d);
}

// "##", or what counts as it, with the operand behind it.
static void add_paste_of_body(a_definition *d, bool is_first, bool is_comment)
{
  if (is_comment) {
    warning(ec_svr4_token_pasting_comment);
  } else {
    read_body_token(d);
  }
  if (is_first) {
    error(ec_paste_cannot_be_first);
  } else if (at_end_of_body()) {
    error(ec_paste_cannot_be_last);
  } else {
    add_param_item(d, rli_paste, 0);
    return;
  }
  some_error_in_curr_directive = true;
}

static void check_white_space_behind_name(const a_definition *d)
{
  if (d->white_before || at_end_of_body() || d->from_command_line || !d->def.object_like) return;
  bool is_strict = strict_ansi_mode && (c99_mode || cpp11_mode);
  st_diagnostic(is_strict ? strict_ansi_discretionary_severity : es_warning,
                ec_white_space_required_after_macro_name, d->locator.header->identifier);
}

// The tokens up to the end of the line.
static void read_body(a_definition *d)
{
  a_pointer_registration keep_prev_token_end(&d->prev_token_end);
  if (list_buffer == nullptr) list_buffer = alloc_text_buffer(1000);
  reset_text_buffer(list_buffer);
  d->text_item = no_item;
  d->prev_token_end = nullptr;
  pcc_quote = 0;
  read_body_token(d);
  check_white_space_behind_name(d);
  d->body_start = pos_curr_token;
  d->body_end = pos_curr_token;
  bool is_first = true, behind_paste = false;
  while (!at_end_of_body()) {
    d->body_end = end_pos_curr_token;
    bool pastes_by_comment = !is_first && !behind_paste && empty_comment_pastes(d);
    if (pastes_by_comment || (curr_token == tok_sharp_sharp && pcc_quote == 0)) {
      add_paste_of_body(d, is_first, pastes_by_comment);
      behind_paste = true;
      is_first = false;
      continue;
    }
    if (!is_first && !behind_paste) add_separator(d, d->white_before);
    is_first = false;
    if (curr_token == tok_sharp && !d->def.object_like) {
      add_string_param_of_body(d);
    } else if (d->param_number != 0) {
      add_param_of_body(d, behind_paste);
    } else {
      add_plain_token_of_body(d);
    }
    behind_paste = false;
  }
  add_char_to_text_buffer(list_buffer, rli_end);
  if (check_misra_c_2004) {
    finish_misra_check_of_macro(&d->misra, !d->def.object_like, d->locator.position);
  }
}

//---------------------------------------------------------------------------------------------
// Redefinition.

static size_t length_of_replacement(const unsigned char *list)
{
  const unsigned char *item = list;
  while (*item != rli_end) {
    item += size_of_item + (item[0] == rli_text ? operand_of_item(item) : 0);
  }
  return item + 1 - list;
}

static bool same_params(const a_macro_param *a, const a_macro_param *b)
{
  for (; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (strcmp(a->name, b->name) != 0) return false;
  }
  return a == b;
}

static bool same_definition(const a_macro_def *old_def, const a_definition *d)
{
  if (old_def->replacement == nullptr) return false;
  return old_def->object_like == d->def.object_like && old_def->variadic == d->def.variadic &&
         length_of_replacement(old_def->replacement) == list_buffer->size &&
         memcmp(old_def->replacement, list_buffer->buffer, list_buffer->size) == 0 &&
         same_params(old_def->params, d->def.params);
}

// The name is a macro already.  Returns whether the new definition takes its place.
static bool check_redefinition(const a_definition *d)
{
  const a_macro_def *old_def = macro_def_of_symbol(d->old_symbol);
  a_source_position pos = d->locator.position;
  if (d->from_command_line && !old_def->cannot_redefine) return true;
  bool same = same_definition(old_def, d);
  if (same && (d->from_command_line || !old_def->cannot_redefine)) return false;
  if (old_def->cannot_redefine) {
    pos_sy_diagnostic(es_discretionary_error, ec_cannot_redef_predef_macro, pos, d->old_symbol);
    return false;
  }
  an_error_severity severity = es_warning;
  an_error_code code = ec_bad_macro_redef;
  if (d->from_command_line) {
    severity = es_error;
  } else if (strict_ansi_mode) {
    severity = strict_ansi_error_severity;
  }
  if (check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_20_1, misra_required_severity)) {
    if (d->names_library) return true; // that says it already
    severity = misra_required_severity;
    code = ec_misra_c_2004_20_1;
  }
  if (severity != es_none) pos_sy_diagnostic(severity, code, pos, d->old_symbol);
  return true;
}

//---------------------------------------------------------------------------------------------
// The definition takes effect.

a_macro *make_il_macro(a_symbol *symbol)
{
  const a_macro_def *def = macro_def_of_symbol(symbol);
  a_macro *macro = alloc_macro();
  set_source_corresp(&macro->source_corresp, symbol);
  macro->object_like = def->object_like;
  macro->predefined = def->predefined;
  if (list_macros) {
    macro->text = copy_string_to_region(true, text_of_macro_definition(symbol));
  }
  add_to_macros_list(macro);
  return macro;
}

static void install_definition(a_definition *d)
{
  a_symbol *symbol = d->old_symbol;
  if (symbol == nullptr) {
    symbol = enter_symbol(sk_macro, &d->locator, depth_scope_stack < 0 ? -1 : 0, true);
    macro_def_of_symbol(symbol) = (a_macro_def *)alloc_in_region(0, sizeof(a_macro_def));
  } else {
    symbol->position = d->locator.position;
    d->def.active_expansions = macro_def_of_symbol(symbol)->active_expansions;
  }
  unsigned char *list = (unsigned char *)alloc_in_region(0, list_buffer->size);
  memcpy(list, list_buffer->buffer, list_buffer->size);
  d->def.replacement = list;
  *macro_def_of_symbol(symbol) = d->def;
  a_macro *macro = make_il_macro(symbol);
  macro_def_of_symbol(symbol)->il_macro = macro;
  macro->source_corresp.decl_position = d->locator.position;
  macro->body_start = d->body_start;
  macro->body_end = d->body_end;
  macro->from_command_line = d->from_command_line;
  record_symbol_declaration(3, symbol, &d->locator.position, nullptr);
}

void proc_define()
{
  a_definition d = {};
  clear_macro_def(&d.def);
  d.params_tail = &d.def.params;
  d.from_command_line = curr_command_line_macro_def != nullptr;
  check_macro_directive_for_misra();
  if (!read_macro_name(&d)) return;
  if (check_misra_c_2004) {
    const a_symbol_header *name = d.locator.header;
    d.names_library = misra_hooks.check_for_misra_20_1(name->identifier, name->length);
    if (curr_ise != nullptr && curr_ise->guard_candidate == name) {
      curr_ise->include_history->inner_guard_seen = true;
    }
  }
  char behind_name = *curr_char_loc;
  if (behind_name == '(') {
    if (!read_params(&d)) return;
  } else if (C_dialect != 2 && strict_ansi_mode && behind_name != 0 &&
             is_nonstandard_character(behind_name)) {
    diagnostic(strict_ansi_error_severity, ec_nonstd_character_at_start_of_macro_def);
  }
  if (d.from_command_line) pass_equals_of_cmd_line(&d);
  read_body(&d);
  if (d.old_symbol != nullptr && !check_redefinition(&d)) return;
  install_definition(&d);
}

//---------------------------------------------------------------------------------------------
// Queries.

a_symbol *find_defined_macro(a_symbol_header *header)
{
  a_symbol *symbol = find_macro_symbol(header);
  if (symbol == nullptr) return nullptr;
  a_builtin_macro builtin = macro_def_of_symbol(symbol)->builtin;
  return builtin == bim_defined || builtin == bim_pragma ? nullptr : symbol;
}

bool macro_is_defined(const char *name, unsigned length)
{
  return find_defined_macro(find_symbol_header(name, length)) != nullptr;
}

bool is_valid_identifier(const char *text, unsigned length, a_symbol **macro,
                         a_symbol_locator *locator)
{
  *macro = nullptr;
  *locator = cleared_locator;
  if (length == 0 || !is_id_start_char(text[0])) return false;
  for (unsigned i = 1; i < length; ++i) {
    if (!is_id_char(text[i])) return false;
  }
  locator->header = find_symbol_header(text, length);
  *macro = find_macro_symbol(locator->header);
  return true;
}

//---------------------------------------------------------------------------------------------
// Text form.

static void add_string(a_text_buffer *buffer, const char *text)
{
  add_to_text_buffer(buffer, text, strlen(text));
}

static void add_params_to_text(a_text_buffer *buffer, const a_macro_def *def)
{
  add_string(buffer, "(");
  for (const a_macro_param *p = def->params; p != nullptr; p = p->next) {
    bool is_rest = def->variadic && p->next == nullptr;
    bool is_named_rest =
        is_rest && extended_variadic_macros_allowed && strcmp(p->name, "__VA_ARGS__") != 0;
    if (!is_rest || is_named_rest) add_string(buffer, p->name);
    if (is_rest) add_string(buffer, "...");
    if (p->next != nullptr) add_string(buffer, ",");
  }
  add_string(buffer, ")");
}

static void add_plain_text(a_text_buffer *buffer, const char *text, unsigned long length)
{
  for (const char *end = text + length; text < end; ++text) {
    if (*text != 0) {
      add_char_to_text_buffer(buffer, *text);
    } else if (*++text == lesc_null_char) {
      add_char_to_text_buffer(buffer, 0);
    }
  }
}

static const char *name_of_param(const a_macro_def *def, unsigned long number)
{
  const a_macro_param *param = def->params;
  while (--number > 0)
    param = param->next;
  return param->name;
}

const char *text_of_macro_definition(a_symbol *symbol)
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(200);
  reset_text_buffer(buffer);
  const a_macro_def *def = macro_def_of_symbol(symbol);
  add_string(buffer, "#define ");
  add_string(buffer, symbol->header->identifier);
  if (!def->object_like) add_params_to_text(buffer, def);
  add_string(buffer, " ");
  const unsigned char *item = def->replacement;
  while (item != nullptr && *item != rli_end) {
    unsigned long operand = operand_of_item(item);
    switch (item[0]) {
    case rli_text:
      add_plain_text(buffer, (const char *)item + size_of_item, operand);
      item += operand;
      break;
    case rli_paste: add_string(buffer, "##"); break;
    case rli_string_param: add_string(buffer, "#"); [[fallthrough]];
    default: add_string(buffer, name_of_param(def, operand)); break;
    }
    item += size_of_item;
  }
  add_char_to_text_buffer(buffer, '\0');
  return buffer->buffer;
}
