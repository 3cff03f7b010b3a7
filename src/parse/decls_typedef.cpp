// decls_typedef.cpp - typedefs, asm names, attributes of declared entities, K&R parameters.
// See:     C99 6.7.7; GNU asm names are marked "GNU".
#include <cstring>

#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "parse/attribute.h"
#include "parse/class_decl.h"
#include "parse/decls_private.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Typedefs.

// `size_t` is the type that sizeof gives.
static void check_size_t(const a_symbol_locator *locator, a_type *type)
{
  if (locator->header->length != 6 || memcmp(locator->header->identifier, "size_t", 6) != 0) return;
  if (scope_stack[decl_scope_level].kind != sck_file || is_error_type(type)) return;
  a_type *plain = skip_typerefs(type);
  if (plain->kind == tk_integer && as_integer(plain).int_kind == targ_size_t_int_kind) return;
  pos_warning(ec_unexpected_type_for_size_t, locator->position);
}

// A typedef of the name is there already.  Returns true when the declaration is done with.
static bool redeclared_typedef(a_symbol_locator *locator, a_type *type)
{
  a_symbol_locator copy = *locator;
  copy.symbol = nullptr;
  a_symbol *prior = curr_scope_id_lookup(&copy, lo_none);
  if (prior == nullptr || !is_type_symbol(prior)) return false;
  if (C_dialect != 2 && prior->kind != sk_type) return false;
  a_type *old_type = type_of_symbol(prior);
  bool same = identical_types(old_type, type) || is_error_type(type);
  if (same) {
    if (C_dialect == 2) return true;
    // C99 6.7p3 has no repeated typedefs; GNU takes them where the first is in a system header.
    an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity
                                 : gcc_mode       ? es_remark
                                                  : es_warning;
    pos_diagnostic(severity, ec_duplicate_typedef, locator->position);
    return true;
  }
  if (C_dialect != 2 && f_types_are_compatible(old_type, type, tco_none)) {
    pos_sy_warning(ec_similar_typedef, locator->position, prior);
    return true;
  }
  return false;
}

// The size of a variably modified type is fixed where the typedef stands.
static void variably_modified_typedef(a_type *type, const a_source_position *position)
{
  if (!il_header.vla_used || !is_variably_modified_type(type)) return;
  if (!in_function_scope()) {
    pos_error(ec_variably_modified_type_not_allowed, *position);
    return;
  }
  if (!in_statement_context()) return;
  if (inside_statement_expression()) {
    pos_error(ec_vla_in_statement_expr, *position);
    return;
  }
  a_statement *statement = add_statement_at_stmt_pos(stmk_type_or_var_decl, position);
  decl_of(statement).is_type = true;
  decl_of(statement).type = type;
  record_dimension_control_flow(position);
}

void decl_typedef(a_symbol_locator *locator, a_decl_parse_state *state, a_type *type,
                  a_decl_pos_block *pos_block)
{
  if (locator->header == nullptr || locator->is_qualified) return;
  check_size_t(locator, type);
  check_use_of_auto_type(state);
  if (redeclared_typedef(locator, type)) {
    state->symbol = nullptr;
    return;
  }
  bool names_tag = type == state->type_specifier && (state->specifier_flags & sf_defines_type);
  a_type *typedef_type = alloc_type(tk_typeref);
  as_typeref(typedef_type).referenced_type = type;
  as_typeref(typedef_type).is_typedef_decl = true;
  a_symbol *symbol = enter_typedef_symbol(typedef_type, locator, decl_scope_level, false);
  type_of_symbol(symbol) = typedef_type;
  set_source_corresp(&typedef_type->source_corresp, symbol);
  if (may_be_added_to_types_list(typedef_type, decl_scope_level)) {
    add_to_types_list(typedef_type, decl_scope_level);
  }
  if (names_tag) give_typedef_name_to_tag(type, locator);
  state->symbol = symbol;
  locator->symbol = symbol;
  variably_modified_typedef(typedef_type, &locator->position);
  attach_decl_attributes(state, false);
  a_decl_position_supplement *supplement =
      pos_block ? make_decl_pos_supplement(&typedef_type->source_corresp, pos_block) : nullptr;
  record_symbol_declaration(rdf_declaration, symbol, &locator->position, supplement);
}

void set_name_linkage_for_type(a_type *type)
{
  if (C_dialect != 2) return;
  type->source_corresp.name_linkage =
      scope_stack[decl_scope_level].kind == sck_file ? (unsigned)nlk_cplusplus : (unsigned)nlk_none;
}

//---------------------------------------------------------------------------------------------
// asm names (GNU).

static bool scan_asm_name_string(a_decl_parse_state *state)
{
  if (curr_token != tok_string_literal) {
    syntax_error(ec_exp_string_literal);
    return false;
  }
  state->asm_name_position = pos_curr_token;
  const a_constant_string &string = string_of(&const_for_curr_token);
  state->asm_name = copy_string_of_length_to_region(true, string.text, string.length - 1);
  get_token();
  return true;
}

void scan_gnu_asm_name(a_decl_parse_state *state)
{
  state->asm_name = nullptr;
  if ((curr_token != tok_asm && curr_token != tok_gnu_asm) || !(gcc_mode || gpp_mode)) return;
  a_source_position position = pos_curr_token;
  if (report_gnu_extensions) pos_warning(ec_asm_name_is_gnu_extension, position);
  get_token();
  required_token(tok_lparen, ec_exp_lparen);
  add_stop_token(tok_rparen);
  bool have_name = scan_asm_name_string(state);
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  if (!have_name) return;
  bool is_function = is_function_type(state->declared_type);
  if (state->storage_class == sc_typedef) {
    pos_warning(ec_asm_name_in_typedef, position);
    state->asm_name = nullptr;
  } else if (!is_function && in_function_scope() && state->storage_class != sc_register &&
             state->storage_class != sc_extern && state->storage_class != sc_static) {
    pos_warning(ec_asm_name_on_auto_variable, position);
    state->asm_name = nullptr;
  }
}

//---------------------------------------------------------------------------------------------
// Attributes of what is declared.

static an_il_entry_kind entity_kind_of(a_symbol *symbol)
{
  switch (symbol->kind) {
  case sk_variable:
  case sk_static_data_member: return iek_variable;
  case sk_routine:
  case sk_member_function: return iek_routine;
  case sk_type: return iek_type;
  case sk_field: return iek_field;
  default: return iek_none;
  }
}

// The attributes of the specifiers go to every declarator of the list, those behind a declarator
// to that one alone.
void attach_decl_attributes(a_decl_parse_state *state, bool)
{
  if (state->symbol == nullptr) return;
  if (state->specifiers_attributes == nullptr && state->declarator_attributes == nullptr) return;
  an_il_entry_kind kind = entity_kind_of(state->symbol);
  if (kind == iek_none) return;
  an_il_entry_kind ignored;
  void *entity = il_entry_for_symbol(state->symbol, &ignored);
  an_attribute *shared = state->specifiers_attributes;
  if (shared) {
    if (state->attributes_attached) shared = copy_of_attributes_list(shared);
    state->attributes_attached = true;
    entity = attach_attributes(shared, entity, kind, state);
  }
  if (state->declarator_attributes) {
    entity = attach_attributes(state->declarator_attributes, entity, kind, state);
    state->declarator_attributes = nullptr;
  }
}

void attach_param_attributes(a_decl_parse_state *state, a_param_type *param)
{
  if (state->specifiers_attributes) {
    attach_attributes(state->specifiers_attributes, param, iek_param_type, state);
  }
  if (state->declarator_attributes) {
    attach_attributes(state->declarator_attributes, param, iek_param_type, state);
  }
}
