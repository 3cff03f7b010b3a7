// class_member_decl.cpp - one member declaration: its specifiers, and what each declarator declares.
// Owns:    curr_routine_fixup.
// Rule:    a bad declarator declares nothing, and the list goes on behind it.
// Entry:   scan_member_declaration.
// See:     C99 6.7.2.1; C++ 9.2.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"

a_routine_fixup *curr_routine_fixup;

//---------------------------------------------------------------------------------------------
// Functions.

static bool body_follows()
{
  return curr_token == tok_lbrace || curr_token == tok_try || curr_token == tok_colon;
}

// `= 0`, `= default`, `= delete`.
static void special_definition(a_decl_parse_state *state, a_func_info_block *func_info)
{
  get_token();
  if (curr_token == tok_delete && deleted_functions_enabled) {
    func_info->is_deleted = func_info->is_definition = true;
    get_token();
    return;
  }
  if (curr_token == tok_default && defaulted_special_members_enabled) {
    func_info->is_defaulted = func_info->is_definition = true;
    get_token();
    return;
  }
  bool is_zero = curr_token == tok_int_constant && is_zero_constant(&const_for_curr_token);
  if (!is_zero) {
    pos_error(ec_bad_pure_specifier, pos_curr_token);
    scan_and_discard_initializer_expression();
    return;
  }
  func_info->is_pure = true;
  func_info->pure_position = pos_curr_token;
  get_token();
  (void)state;
}

// The body is stored, not read: what the class declares below is known in it too.
static void function_body(a_routine_fixup *fixup, a_decl_parse_state *state,
                          a_func_info_block *func_info, bool may_have_initializers)
{
  if (!func_info->type_from_declarator) {
    pos_error(ec_function_type_must_come_from_declarator, state->declarator_range.start);
  }
  cache_body(fixup, may_have_initializers);
}

static bool is_constructor_state(const a_decl_parse_state *state)
{
  return (state->specifier_flags & sf_is_constructor_name) != 0;
}

static void check_missing_function_type(a_decl_parse_state *state, const a_symbol_locator *locator)
{
  if ((state->specifier_flags & sf_has_type_specifier) || locator->is_conversion_name) return;
  if (state->bad_declaration || state->is_implicit_int) return;
  state->is_implicit_int = true;
  a_source_position position = locator->position;
  a_type *type;
  report_missing_type_specifier(&position, &type, true, false, true, true);
}

// True when a body followed, which ends the declaration.
static bool member_function(a_class_scan_state *scan, a_decl_parse_state *state,
                            a_symbol_locator *locator, a_routine_fixup *fixup)
{
  a_func_info_block *func_info = &fixup->func_info;
  func_info->type_from_declarator = (state->declarator_flags & df_is_function) != 0;
  func_info->is_inline = (state->specifier_flags & sf_is_inline) != 0;
  check_missing_function_type(state, locator);
  if (state->specifier_flags & sf_defines_type) {
    pos_error(ec_type_def_not_allowed_in_func_type_decl, state->start_position);
  }
  if (curr_token == tok_assign) special_definition(state, func_info);
  bool has_body = body_follows();
  func_info->has_body = has_body;
  func_info->is_definition |= has_body;
  bool is_friend = state->specifier_flags & sf_is_friend;
  if (is_friend) {
    decl_friend_function(scan, state, locator, func_info);
  } else {
    decl_member_function(scan, state, locator, func_info, false);
  }
  fixup->symbol = state->symbol;
  if (has_body) function_body(fixup, state, func_info, is_constructor_state(state));
  return has_body;
}

//---------------------------------------------------------------------------------------------
// Declarators.

static void attributes_behind_declarator(a_decl_parse_state *state)
{
  if (curr_token == tok_attribute) {
    *f_last_attribute_link(&state->declarator_attributes) = scan_attributes(al_after_declarator);
  }
  an_attribute *type_attributes = take_type_attributes(&state->declarator_attributes);
  if (type_attributes) attach_type_attributes(&state->declared_type, type_attributes, state);
}

static void refuse_name(a_symbol_locator *locator, a_decl_parse_state *state)
{
  locator->header = nullptr;
  state->declared_type = error_type();
}

static void data_member(a_class_scan_state *scan, a_decl_parse_state *state,
                        a_symbol_locator *locator)
{
  if (state->specifier_flags & sf_is_friend) {
    pos_error(ec_bad_friend_decl, locator->position);
  } else if (state->storage_class == sc_static) {
    static_member(scan, state, locator);
  } else {
    field_member(scan, state, locator);
  }
}

static void typedef_member(a_decl_parse_state *state, a_symbol_locator *locator)
{
  decl_typedef(locator, state, state->declared_type, nullptr);
  if (curr_token != tok_assign) return;
  pos_error(ec_exp_semicolon, pos_curr_token);
  get_token();
  scan_and_discard_initializer_expression();
}

static uint32_t declarator_options(const a_decl_parse_state *state)
{
  uint32_t options = dop_name_ok | dop_member;
  if (C_dialect == 2) options |= dop_cplusplus;
  if (state->specifier_flags & sf_is_friend) options |= dop_reactivate_scopes;
  return options;
}

static bool cplusplus_member_declarator(a_class_scan_state *scan, a_decl_parse_state *state,
                                        a_symbol_locator *locator)
{
  a_routine_fixup *fixup = alloc_routine_fixup(scan->class_type);
  a_routine_fixup *saved_fixup = curr_routine_fixup;
  curr_routine_fixup = fixup;
  declarator(declarator_options(state), state, nullptr, locator, &fixup->func_info, nullptr);
  curr_routine_fixup = saved_fixup;
  scan_gnu_asm_name(state);
  attributes_behind_declarator(state);
  bool ended = false;
  bool is_function = is_function_type(state->declared_type);
  if (state->storage_class == sc_typedef) {
    typedef_member(state, locator);
  } else if (is_function && locator->header != nullptr) {
    ended = member_function(scan, state, locator, fixup);
  } else {
    if (locator->is_qualified || is_constructor_state(state)) refuse_name(locator, state);
    data_member(scan, state, locator);
  }
  close_declarator_scopes(state);
  if (fixup->has_body || fixup->default_arg_fixups != nullptr) {
    add_routine_fixup(fixup);
  } else {
    free_routine_fixup(fixup);
  }
  return ended;
}

static bool member_declarator(a_class_scan_state *scan, a_decl_parse_state *state)
{
  a_symbol_locator locator = cleared_locator;
  locator.position = pos_curr_token;
  if (curr_token == tok_colon) {
    state->declared_type = state->type_specifier;
    field_member(scan, state, &locator);
    return false;
  }
  if (C_dialect == 2) return cplusplus_member_declarator(scan, state, &locator);
  declarator(declarator_options(state), state, nullptr, &locator, nullptr, nullptr);
  if (locator.is_qualified) refuse_name(&locator, state);
  scan_gnu_asm_name(state);
  attributes_behind_declarator(state);
  field_member(scan, state, &locator);
  return false;
}

static void next_member_declarator(a_decl_parse_state *state)
{
  run_end_of_parse_actions(state);
  state->declarator_flags = 0;
  state->declared_type = state->bottom_type = state->type_specifier;
  state->declarator_attributes = nullptr;
  state->asm_name = nullptr;
  state->symbol = nullptr;
}

static bool member_declarators(a_class_scan_state *scan, a_decl_parse_state *state)
{
  for (;;) {
    if (member_declarator(scan, state)) return true;
    if (curr_token != tok_comma) return false;
    get_token();
    next_member_declarator(state);
  }
}

//---------------------------------------------------------------------------------------------
// The declaration.

static bool may_begin_declarator()
{
  switch (curr_token) {
  case tok_identifier:
  case tok_star:
  case tok_lparen:
  case tok_colon: return true;
  case tok_compl:
  case tok_operator:
  case tok_ampersand:
  case tok_ptr_to_member:
  case tok_colon_colon: return C_dialect == 2;
  default: return false;
  }
}

static bool nothing_was_declared(const a_decl_parse_state *state)
{
  return (state->specifier_flags & sf_no_specifiers) && !may_begin_declarator();
}

static uint32_t specifier_options()
{
  uint32_t options = dso_type_ok | dso_class_def_ok | dso_check_missing_semicolon;
  if (C_dialect == 2) {
    options |= dso_storage_class_ok | dso_member | dso_inline_ok | dso_std_attributes_ok;
  }
  return options;
}

bool scan_member_declaration(a_class_scan_state *scan)
{
  a_decl_parse_state state = null_decl_parse_state;
  bool saved_report = report_gnu_extensions;
  while (curr_token == tok_extension && (gcc_mode || gpp_mode)) {
    report_gnu_extensions = false;
    get_token();
  }
  state.start_position = pos_curr_token;
  add_stop_token(tok_comma);
  decl_specifiers(specifier_options(), &state, nullptr);
  bool ended = false;
  if (nothing_was_declared(&state)) {
    remove_stop_token(tok_comma);
    syntax_error(ec_exp_declaration);
    report_gnu_extensions = saved_report;
    return false;
  }
  if (curr_token == tok_semicolon || curr_token == tok_rbrace) {
    member_without_declarator(scan, &state);
  } else if (!(state.specifier_flags & sf_missing_semicolon_suspected)) {
    ended = member_declarators(scan, &state);
  }
  remove_stop_token(tok_comma);
  run_end_of_parse_actions(&state);
  report_gnu_extensions = saved_report;
  return ended;
}
