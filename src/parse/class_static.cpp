// class_static.cpp - static data members: their declaration in the class.
// Rule:    the class declares the object, a definition outside of it makes it (C++ 9.4.2); a constant
//          value may stand in the class.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decl_inits.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

// Local classes, unnamed ones and unions can't have an object defined elsewhere.
static bool class_may_have_static_members(a_type *class_type)
{
  if (class_type->kind == tk_union && !cpp11_mode) return false;
  for (a_type *type = class_type; type; type = parent_class_of(&type->source_corresp)) {
    if (type->source_corresp.is_local || type->source_corresp.name == nullptr) return false;
  }
  return true;
}

static void check_static_member_type(a_decl_parse_state *state, const a_symbol_locator *locator)
{
  a_type *type = state->declared_type;
  if (is_error_type(type)) return;
  if (is_void_type(type)) {
    pos_error(ec_incomplete_type_not_allowed, locator->position);
    state->declared_type = error_type();
  } else if (il_header.vla_used && is_variably_modified_type(type)) {
    pos_error(ec_field_cannot_involve_vla_type, locator->position);
    state->declared_type = error_type();
  }
}

static void check_specifiers(a_decl_parse_state *state, a_symbol_locator *locator)
{
  bool missing_type = !(state->specifier_flags & sf_has_type_specifier);
  if (missing_type && !state->bad_declaration && !state->is_implicit_int) {
    state->is_implicit_int = true;
    a_type *type;
    report_missing_type_specifier(&locator->position, &type, false, false, true, true);
  }
  if (state->specifier_flags & sf_is_inline) {
    pos_error(ec_inline_and_nonfunction, state->inline_position);
  }
  if (state->specifier_flags & sf_is_virtual) {
    pos_error(ec_virtual_not_allowed, state->virtual_position);
  }
  if (state->specifier_flags & sf_is_explicit) {
    pos_error(ec_explicit_not_allowed, state->start_position);
  }
}

static a_variable *make_static_member(a_decl_parse_state *state, a_symbol *symbol,
                                      a_type *class_type)
{
  a_variable *variable = alloc_variable(sc_extern);
  variable->type = state->declared_type;
  variable->is_static_data_member = true;
  variable_of_symbol(symbol) = variable;
  set_source_corresp(&variable->source_corresp, symbol);
  set_class_membership(&variable->source_corresp, class_type);
  variable->source_corresp.access = top_scope()->current_access;
  variable->source_corresp.name_linkage = nlk_cplusplus;
  add_to_variables_list(variable, depth_scope_stack);
  return variable;
}

// Only a constant of integral or enumeration type has its value in the class.
static void member_initializer(a_decl_parse_state *state, a_variable *variable)
{
  a_source_position position = pos_curr_token;
  a_type *type = variable->type;
  bool is_constant = is_const_qualified(type) && !is_volatile_qualified(type) &&
                     (is_integral_or_enum_type(type) || (gpp_mode && is_arithmetic_type(type)));
  get_token();
  if (!is_constant) {
    if (!is_error_type(type)) pos_error(ec_bad_data_member_initialization, position);
    scan_and_discard_initializer_expression();
    return;
  }
  a_source_position end;
  initializer(state, &position, idl_external, false, &end, nullptr);
  variable->is_member_constant = variable->init_kind == initk_static;
}

void static_member(a_class_scan_state *scan, a_decl_parse_state *state, a_symbol_locator *locator)
{
  check_specifiers(state, locator);
  check_static_member_type(state, locator);
  if (!class_may_have_static_members(scan->class_type)) {
    pos_error(ec_static_data_member_not_allowed, locator->position);
  }
  a_symbol *symbol = enter_symbol(sk_static_data_member, locator, depth_scope_stack, false);
  a_variable *variable = make_static_member(state, symbol, scan->class_type);
  state->symbol = symbol;
  update_variable_decl_modifiers(state);
  attach_decl_attributes(state, false);
  if (state->asm_name != nullptr) variable->asm_name = state->asm_name;
  record_symbol_declaration(rdf_declaration, symbol, &locator->position, nullptr);
  if (curr_token == tok_assign) member_initializer(state, variable);
}
