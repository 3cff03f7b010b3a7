// qn_pragma.cpp - pragmas of the target: the way to their handlers, their operands, their records.
// Owns:    the state of the pragma whose operands are being read.
// Uses:    the replay of a pragma's tokens (lex/token_cache.h), name lookup, constant expressions.
// Rule:    in C a pragma names its symbol and waits for the end of the scope; in C++ it stands in front of
//          what it is about.  What fails a check is reported once and leaves no record.
// Entry:   process_c_pragma, process_cpp_pragma, pragma_ulp_action, issue_simple_pragma.
#include "parse/qn_pragma.h"

#include <cstring>

#include "consts/const_ints.h"
#include "driver/flags.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "lex/cached_token.h"
#include "lex/lexical.h"
#include "lex/pragma_handlers.h"
#include "parse/decl_spec.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/qn_pragma_private.h"

static constexpr int max_pragma_arguments = 3;

bool suppress_extra_token_error;
bool had_open_paren;
bool wrapup_done;

static bool operands_are_literal; // the text as scanned can stand in the generated file
static const char *pragma_arguments[max_pragma_arguments];
static int number_of_arguments;

static void start_of_pragma()
{
  suppress_extra_token_error = had_open_paren = wrapup_done = false;
  operands_are_literal = true;
  number_of_arguments = 0;
}

//---------------------------------------------------------------------------------------------
// Operands
//---------------------------------------------------------------------------------------------

// A token that is only reached behind others leaves the pragma malformed.
static bool token_stands_here(a_token_kind kind, an_error_code code)
{
  bool found = curr_token == kind;
  required_token(kind, code);
  return found;
}

bool scan_pragma_comma()
{
  return token_stands_here(tok_comma, ec_exp_comma);
}

bool scan_comma_behind_symbol(const a_pending_pragma *pragma)
{
  return !names_its_symbol(pragma) || scan_pragma_comma();
}

static bool at_narrow_string()
{
  return curr_token == tok_string_literal && const_for_curr_token.kind == ck_string &&
         const_for_curr_token.char_kind == chk_char;
}

bool scan_pragma_string(const a_pending_pragma *pragma, const char **text)
{
  if (!at_narrow_string() || *string_of(&const_for_curr_token).text == '\0') {
    pos_error(ec_bad_pragma_format, pragma->position);
    return false;
  }
  *text = copy_string_to_region(true, string_of(&const_for_curr_token).text);
  get_token();
  return true;
}

// Whether the operand that began at token number `first` and ended in front of the current token is a
// number as it stands: names and casts need not mean the same in the generated file.
static bool is_literal_operand(const a_pending_pragma *pragma, unsigned first)
{
  for (const a_cached_token *token = pragma->tokens.first; token != nullptr; token = token->next) {
    if (token->sequence_number != first) continue;
    const a_cached_token *next = token->next;
    return token->kind == tok_int_constant && next != nullptr &&
           next->sequence_number == curr_token_sequence_number;
  }
  return false;
}

bool scan_pragma_constant(a_pending_pragma *pragma, a_constant *constant)
{
  unsigned first = curr_token_sequence_number;
  scan_integral_constant_expression(constant);
  if (constant->kind != ck_integer) return false;
  if (!is_literal_operand(pragma, first)) operands_are_literal = false;
  return true;
}

bool scan_pragma_number(a_pending_pragma *pragma, long long *value)
{
  a_constant constant;
  bool overflow = false;
  if (!scan_pragma_constant(pragma, &constant)) return false;
  *value = value_of_integer_constant(&constant, &overflow);
  if (overflow) pos_error(ec_integer_too_large, pragma->position);
  return !overflow;
}

// The tokens of a macro or an operator stand all at one place, so that none seems to adjoin another:
// ( x , 8 ).
static void close_up_blanks(char *text)
{
  char *to = text;
  bool in_string = false;
  for (const char *from = text; *from != '\0'; ++from) {
    if (*from == '"' && (from == text || from[-1] != '\\')) in_string = !in_string;
    bool is_idle = *from == ' ' && !in_string &&
                   (to == text || to[-1] == '(' || from[1] == ')' || from[1] == ',');
    if (!is_idle) *to++ = *from;
  }
  *to = '\0';
}

static const char *text_of_operands(a_pending_pragma *pragma, unsigned end)
{
  char *text = copy_string_to_region(true, text_of_token_cache_segment(&pragma->tokens, end));
  close_up_blanks(text);
  return text;
}

bool end_of_pragma_operands(a_pending_pragma *pragma)
{
  bool good = !had_open_paren || token_stands_here(tok_rparen, ec_exp_rparen);
  unsigned end = curr_token == tok_end_of_source ? 0 : curr_token_sequence_number;
  if (curr_token == tok_semicolon) required_token(tok_semicolon, ec_exp_semicolon);
  if (operands_are_literal) pragma->text = text_of_operands(pragma, end);
  wrapup_done = true;
  wrapup_rescan_of_pragma_tokens(suppress_extra_token_error || !good);
  return good;
}

//---------------------------------------------------------------------------------------------
// Records
//---------------------------------------------------------------------------------------------

void add_pragma_argument(const char *text)
{
  check(number_of_arguments < max_pragma_arguments);
  pragma_arguments[number_of_arguments++] = copy_string_to_region(true, text);
}

static void attach_arguments(a_pragma *record)
{
  a_pragma_arguments *arguments = alloc_fs_entry<a_pragma_arguments>();
  arguments->kind = record->kind;
  arguments->count = number_of_arguments;
  if (number_of_arguments > 0) {
    size_t size = (size_t)number_of_arguments * sizeof(const char *);
    arguments->args = (const char **)alloc_il(size);
    memcpy(arguments->args, pragma_arguments, size);
  }
  record->arguments = arguments;
}

// The text that names no symbol, for a file in which pragmas name theirs: ("x") becomes (, "x").
static const char *text_with_place_for_name(const char *text)
{
  size_t length = strlen(text);
  bool has_paren = length >= 2 && *text == '(';
  const char *operands = has_paren ? text + 1 : text;
  size_t operands_length = has_paren ? length - 2 : length;
  char *with_place = (char *)alloc_il(operands_length + 5);
  char *p = with_place;
  *p++ = '(';
  if (operands_length > 0) {
    *p++ = ',';
    *p++ = ' ';
    memcpy(p, operands, operands_length);
    p += operands_length;
  }
  *p++ = ')';
  *p = '\0';
  return with_place;
}

// The entity may have another name in the generated file than in the source.
static void place_entity_name(a_pragma *record, const a_pending_pragma *pragma,
                              const a_symbol *symbol)
{
  record->names_entity = true;
  if (record->text == nullptr) return;
  record->operand_at = 1;
  if (names_its_symbol(pragma)) {
    record->operand_at += (uint32_t)strspn(record->text + 1, " ");
    record->operand_length = (uint32_t)strlen(symbol->header->identifier);
  } else {
    record->text = text_with_place_for_name(record->text);
  }
}

void keep_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)
{
  create_il_entry_for_pragma(pragma, symbol, statement);
  a_pragma *record = pragma->il_pragma;
  if (record == nullptr) return;
  attach_arguments(record);
  bool is_type = record->entity_kind == iek_type;
  if (symbol != nullptr && (!is_type || record->text == nullptr)) {
    place_entity_name(record, pragma, symbol);
  }
}

void report_wrong_entity(const a_pending_pragma *pragma, an_error_code code, a_symbol *symbol)
{
  pos_stsy_warning(code, pragma->position, name_of_pragma(pragma), symbol);
}

void add_decl_modifier(a_symbol *symbol, uint32_t modifier)
{
  a_decl_parse_state state = null_decl_parse_state;
  state.symbol = symbol;
  state.decl_modifiers = modifier;
  if (is_routine_symbol(symbol)) {
    update_routine_decl_modifiers(routine_of_symbol(symbol), &state, &symbol->position);
    return;
  }
  if (variable_of_symbol(symbol)->is_thread_local) state.decl_modifiers |= dm_thread;
  update_variable_decl_modifiers(&state);
}

static a_pending_pragma *alloc_issued_pragma(unsigned char kind, const a_source_position *position)
{
  start_of_pragma();
  a_pending_pragma *pragma = alloc_pending_pragma(pragma_description_for_pragma_kind[kind]);
  pragma->position = pragma->directive_position = *position;
  return pragma;
}

a_pending_pragma *pragma_for_attribute(unsigned char kind, const a_source_position *position)
{
  return alloc_issued_pragma(kind, position);
}

void issue_simple_pragma(unsigned char kind, const char *text)
{
  a_pending_pragma *pragma = alloc_issued_pragma(kind, &error_position);
  add_pragma_argument(text);
  add_pragma_to_il(pragma, iek_none, nullptr, true);
  if (pragma->il_pragma != nullptr) attach_arguments(pragma->il_pragma);
  free_pending_pragma(pragma);
}

void issue_modifier_pragmas(a_symbol *symbol, uint32_t modifiers)
{
  const struct {
    uint32_t modifier;
    a_pragma_kind_tag kind;
  } rows[] = {{dm_interrupt, pragk_interrupt}, {dm_near, pragk_near}, {dm_far, pragk_far}};
  for (const auto &row : rows) {
    if (!(modifiers & row.modifier)) continue;
    if (row.kind == pragk_interrupt) keep_static_entity(symbol);
    a_pending_pragma *pragma = alloc_issued_pragma(row.kind, &symbol->position);
    keep_pragma(pragma, symbol, nullptr);
    free_pending_pragma(pragma);
  }
}

//---------------------------------------------------------------------------------------------
// Entities
//---------------------------------------------------------------------------------------------

bool is_variable_symbol(const a_symbol *symbol)
{
  return symbol->kind == sk_variable || symbol->kind == sk_static_data_member;
}

bool is_function_definition(const a_symbol *symbol)
{
  return is_routine_symbol(symbol) && symbol->defined;
}

bool is_file_level_object_definition(a_symbol *symbol)
{
  if (symbol->kind != sk_variable || is_local_symbol(symbol) || is_block_extern_symbol(symbol)) {
    return false;
  }
  return variable_of_symbol(symbol)->storage_class != sc_extern;
}

bool has_static_storage(a_symbol *symbol)
{
  if (!is_variable_symbol(symbol)) return false;
  a_storage_class storage_class = variable_of_symbol(symbol)->storage_class;
  return storage_class != sc_auto && storage_class != sc_register;
}

bool check_data_symbol(const a_pending_pragma *pragma, a_symbol *symbol)
{
  bool is_cpp = C_dialect == 2;
  if (is_cpp ? has_static_storage(symbol) : is_file_level_object_definition(symbol)) return true;
  report_wrong_entity(
      pragma, is_cpp ? ec_pragma_requires_static_storage : ec_pragma_requires_level_zero_def,
      symbol);
  return false;
}

//---------------------------------------------------------------------------------------------
// The way to the handlers
//---------------------------------------------------------------------------------------------

struct a_pragma_func_row {
  a_pragma_kind_tag kind;
  a_target_pragma_function *function;
};

static const a_pragma_func_row pragma_func[] = {
#define TARGET_PRAGMA(kind, form, handler) {kind, handler},
#include "lex/pragmas.def"
};

static a_target_pragma_function *function_for_kind(a_pragma_kind_tag kind)
{
  for (const a_pragma_func_row &row : pragma_func)
    if (row.kind == kind) return row.function;
  unexpected_kind("pragma of the target");
}

static void scan_open_paren_possible()
{
  if (curr_token != tok_lparen) return;
  had_open_paren = true;
  get_token();
}

static void call_function(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)
{
  a_target_pragma_function *function = function_for_kind(pragma->description->kind);
  if (function(pragma, symbol, statement)) suppress_extra_token_error = true;
}

static void wrap_up_if_needed()
{
  if (!wrapup_done) wrapup_rescan_of_pragma_tokens(suppress_extra_token_error);
}

void process_cpp_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)
{
  start_of_pragma();
  begin_rescan_of_pragma_tokens(pragma);
  scan_open_paren_possible();
  call_function(pragma, symbol, statement);
  wrap_up_if_needed();
}

static bool has_symbol_operand(a_pragma_kind_tag kind)
{
  switch (kind) {
  case pragk_struct_align:
  case pragk_vcc_vreg:
  case pragk_cedar_reg:
  case pragk_lpm_info:
  case pragk_ports_init_info:
  case pragk_hw_mpy32: return false;
  default: return true;
  }
}

// "(" and the symbol; null after a complaint.
static a_symbol *scan_symbol_operand(const a_pending_pragma *pragma)
{
  required_token(tok_lparen, ec_exp_lparen);
  had_open_paren = true;
  if (curr_token != tok_identifier) {
    pos_st_warning(ec_pragma_processing_error, pragma->position, name_of_pragma(pragma));
    return nullptr;
  }
  const char *name = locator_for_curr_id.header->identifier;
  a_symbol *symbol = normal_id_lookup(&locator_for_curr_id, 0);
  get_token();
  if (symbol == nullptr) {
    a_pragma_kind_tag kind = pragma->description->kind;
    bool is_data = kind == pragk_data_section || kind == pragk_data_align;
    pos_st_warning(is_data ? ec_pragma_requires_file_level : ec_pragma_bad_symbol, pragma->position,
                   name);
  }
  return symbol;
}

void process_c_pragma(a_pending_pragma *pragma)
{
  start_of_pragma();
  begin_rescan_of_pragma_tokens(pragma);
  if (!has_symbol_operand(pragma->description->kind)) {
    scan_open_paren_possible();
    call_function(pragma, nullptr, nullptr);
  } else if (a_symbol *symbol = scan_symbol_operand(pragma)) {
    call_function(pragma, symbol, nullptr);
  } else {
    suppress_extra_token_error = true;
  }
  wrap_up_if_needed();
}

//---------------------------------------------------------------------------------------------
// Power advice
//---------------------------------------------------------------------------------------------

// The rules that the string names have no checker here: the operands are checked, and no more.
void pragma_ulp_action(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  if (!check_ulp) return;
  bool is_reset = pragma->description->kind == pragk_reset_ulp;
  start_of_pragma();
  begin_rescan_of_pragma_tokens(pragma);
  scan_open_paren_possible();
  bool is_list = at_narrow_string();
  if (is_list) get_token();
  bool good = had_open_paren && (is_list || is_reset) && curr_token == tok_rparen;
  if (good)
    end_of_pragma_operands(pragma);
  else
    pos_error(ec_bad_pragma_format, pragma->position);
  suppress_extra_token_error = true;
  wrap_up_if_needed();
}
