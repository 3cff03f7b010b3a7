// decls_object.cpp - declarations of objects: the object path of a declaration, and decl_variable.
// Rule:    whatever is wrong, state->symbol names a variable afterwards, so that initializer and
//          attributes have something to work on; a wrong one isn't entered.
// See:     C99 6.7, 6.9.2.
#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/sections.h"
#include "lex/source_input.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/decl_inits.h"
#include "parse/decls_private.h"
#include "parse/func_def.h"
#include "parse/lookup.h"
#include "parse/qn_pragma.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// The variable of a decision.

static a_variable *make_variable_for(a_decl_decision *decision, a_symbol *symbol)
{
  a_variable *variable = alloc_variable(decision->storage_class);
  variable->type = decision->type;
  variable_of_symbol(symbol) = variable;
  bool external = decision->linkage != idl_none;
  bool block_extern = external && decision->at_block_level;
  variable->is_external_in_block = block_extern;
  int depth = block_extern ? decision->lookup_depth : decl_scope_level;
  if (block_extern) {
    set_source_corresp_with_scope_depth(&variable->source_corresp, symbol, depth);
    symbol->declared_at_block_scope = true;
  } else {
    set_source_corresp(&variable->source_corresp, symbol);
  }
  add_to_variables_list(variable, depth);
  return variable;
}

// A symbol that stays outside all chains, for what can't be declared.
static a_symbol *replacement_symbol(a_decl_decision *decision)
{
  a_symbol_locator locator = *decision->locator;
  locator.is_qualified = true;
  a_symbol *symbol = enter_symbol(sk_variable, &locator, decl_scope_level, true);
  decision->linkage = idl_none;
  decision->at_block_level = false;
  if (decision->storage_class == sc_extern) decision->storage_class = sc_unspecified;
  make_variable_for(decision, symbol);
  return symbol;
}

// Reports a clash of types or kinds with `prior` and makes the replacement.
static a_symbol *incompatible_with(a_decl_decision *decision, a_symbol *prior)
{
  pos_sy_error(ec_not_compatible_with_previous_decl, decision->locator->position, prior);
  return replacement_symbol(decision);
}

// The types of two declarations of one object: composite, or false.
static bool merge_types(a_variable *variable, a_type *type)
{
  if (is_error_type(variable->type) || is_error_type(type)) return true;
  if (!f_types_are_compatible(variable->type, type, tco_error_types)) return false;
  variable->type = composite_type(type, variable->type);
  return true;
}

// MISRA 8.11: every declaration of what has internal linkage says `static`.
static void check_static_is_repeated(const a_decl_decision *decision, a_symbol *prior,
                                     const a_variable *variable)
{
  if (!check_misra_c_2004 || variable->storage_class != sc_static ||
      decision->state->storage_class == sc_static) {
    return;
  }
  pos_sy_diagnostic(misra_required_severity, ec_misra_c_2004_8_11, decision->locator->position,
                    prior);
}

// C99 6.2.2p7: internal and external declarations of one name.
static void reconcile_linkage(a_decl_decision *decision, a_symbol *prior, a_variable *variable)
{
  bool was_internal = variable->storage_class == sc_static;
  bool is_internal = decision->storage_class == sc_static;
  check_static_is_repeated(decision, prior, variable);
  if (was_internal == is_internal) return;
  an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_warning;
  pos_sy_diagnostic(severity, ec_linkage_conflict, decision->locator->position, prior);
  if (is_internal && variable->storage_class == sc_extern) {
    variable->storage_class = sc_static;
  }
  decision->linkage = variable->storage_class == sc_static ? idl_internal : idl_external;
}

// MISRA 8.5: nothing is defined in a header; 8.8: an external object is declared in one file; 8.12: an external
// array says its size.
static void misra_checks(const a_decl_decision *decision)
{
  if (!check_misra_c_2004 || decision->linkage == idl_none) return;
  a_source_position position = decision->locator->position;
  if (decision->is_definition && seq_is_in_include_file(position.seq)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_5, position);
  }
  if (decision->linkage != idl_external) return;
  a_symbol *earlier = earlier_declaration(decision);
  if (!decision->is_definition && earlier != nullptr && earlier->kind == sk_variable &&
      misra_hooks.symbol_in_different_header_file(position.seq, earlier)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_8, position);
  }
  if (is_incomplete_array_type(decision->type) && !decision->state->has_initializer) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_12, position);
  }
}

static void note_definition(a_decl_decision *decision, a_variable *variable)
{
  if (!decision->is_definition) return;
  if (variable->storage_class == sc_extern) variable->storage_class = sc_unspecified;
  bool first = !variable->is_definition;
  variable->is_definition = true;
  variable->is_tentative = decision->is_tentative && (first || variable->is_tentative);
  variable->is_external_in_block = false;
}

// A further declaration of the object of `prior`, in the same scope.
static a_symbol *redeclare(a_decl_decision *decision, a_symbol *prior)
{
  bool is_member = prior->kind == sk_static_data_member;
  if (prior->kind != sk_variable && !is_member) return incompatible_with(decision, prior);
  a_variable *variable = variable_of_symbol(prior);
  if (is_member) {
    if (!reconcile_static_data_member_types(prior, decision->type, &decision->locator->position)) {
      return replacement_symbol(decision);
    }
  } else {
    if (!merge_types(variable, decision->type)) return incompatible_with(decision, prior);
    reconcile_linkage(decision, prior, variable);
  }
  if (C_dialect == 2 && decision->is_definition && prior->defined) {
    pos_sy_error(ec_already_defined, decision->locator->position, prior);
    return replacement_symbol(decision);
  }
  decision->locator->symbol = prior;
  return prior;
}

// The first declaration at file scope of what a block declared extern before.
static a_symbol *declare_known_external(a_decl_decision *decision, a_symbol *external)
{
  if (external->kind != sk_extern_variable) return incompatible_with(decision, external);
  a_variable *variable = external->variant.extern_entity.entity.variable;
  if (!reconcile_external_symbol_types(external, &decision->locator->position, decision->type,
                                       es_error)) {
    return replacement_symbol(decision);
  }
  reconcile_linkage(decision, external, variable);
  a_symbol *symbol = enter_symbol(sk_variable, decision->locator, decl_scope_level, false);
  if (symbol->not_entered) return symbol;
  variable_of_symbol(symbol) = variable;
  bool referenced = variable->source_corresp.referenced;
  set_source_corresp(&variable->source_corresp, symbol);
  variable->source_corresp.referenced = referenced;
  symbol->referenced |= referenced;
  external->variant.extern_entity.symbol = symbol;
  return symbol;
}

// `extern` in a block: the symbol is the block's, the variable is the file's.
static a_symbol *declare_block_extern(a_decl_decision *decision)
{
  a_symbol *prior = decision->prior_symbol;
  if (prior && prior->kind == sk_variable &&
      variable_of_symbol(prior)->storage_class == sc_extern) {
    return redeclare(decision, prior);
  }
  a_symbol *visible = decision->visible_symbol;
  if (visible) {
    if (visible->kind != sk_variable) return incompatible_with(decision, visible);
    a_variable *variable = variable_of_symbol(visible);
    if (!merge_types(variable, decision->type)) return incompatible_with(decision, visible);
    check_static_is_repeated(decision, visible, variable);
    a_symbol *symbol = enter_local_symbol(sk_variable, decision->locator);
    variable_of_symbol(symbol) = variable;
    symbol->declared_at_block_scope = true;
    return symbol;
  }
  a_symbol *external = decision->prior_extern_symbol;
  if (external && external->kind == sk_extern_variable) {
    if (!reconcile_external_symbol_types(external, &decision->locator->position, decision->type,
                                         es_error)) {
      return replacement_symbol(decision);
    }
    a_symbol *symbol = enter_local_symbol(sk_variable, decision->locator);
    variable_of_symbol(symbol) = external->variant.extern_entity.entity.variable;
    symbol->declared_at_block_scope = true;
    return symbol;
  }
  if (external) return incompatible_with(decision, external);
  a_symbol *symbol = enter_local_symbol(sk_variable, decision->locator);
  a_variable *variable = make_variable_for(decision, symbol);
  a_symbol_locator copy = *decision->locator;
  external = enter_extern_symbol(sk_extern_variable, &copy);
  external->variant.extern_entity.symbol = symbol;
  external->variant.extern_entity.type = decision->type;
  external->variant.extern_entity.entity.variable = variable;
  return symbol;
}

static a_symbol *symbol_for_variable(a_decl_decision *decision)
{
  if (decision->is_unusable) return replacement_symbol(decision);
  if (decision->linkage != idl_none && decision->at_block_level) {
    return declare_block_extern(decision);
  }
  a_symbol *prior = decision->prior_symbol;
  if (prior && decision->linkage != idl_none &&
      (prior->kind == sk_variable || prior->kind == sk_routine || decision->is_qualified)) {
    return redeclare(decision, prior);
  }
  if (decision->prior_extern_symbol && decision->linkage != idl_none) {
    return declare_known_external(decision, decision->prior_extern_symbol);
  }
  a_symbol *symbol = enter_symbol(sk_variable, decision->locator, decl_scope_level, false);
  make_variable_for(decision, symbol);
  return symbol;
}

//---------------------------------------------------------------------------------------------
// Properties.

// A register variable's asm name is a register's; any other variable's is not (GNU).
static void variable_asm_name(a_decl_parse_state *state, a_variable *variable, bool was_defined)
{
  if (state->asm_name == nullptr) return;
  int number = name_to_register(state->asm_name);
  if (state->storage_class == sc_register) {
    if (number == register_unrecognized) {
      pos_st_error(ec_bad_reg_name, state->asm_name_position, state->asm_name);
      return;
    }
    if (!variable->asm_name_is_text && variable->register_number != number) {
      pos_warning(ec_asm_name_conflict, state->asm_name_position);
      return;
    }
    variable->asm_name_is_text = false;
    variable->register_number = (unsigned char)number;
    return;
  }
  bool is_auto = variable->storage_class == sc_auto || variable->storage_class == sc_register;
  if (is_auto) return;
  if (gnu_version >= 30000 && number != register_unrecognized) {
    pos_st_error(ec_register_name_on_nonregister, state->asm_name_position, state->asm_name);
    return;
  }
  set_asm_name(state, &variable->asm_name, was_defined);
}

void update_variable_decl_modifiers(a_decl_parse_state *state)
{
  a_variable *variable = variable_of_symbol(state->symbol);
  bool is_thread = state->decl_modifiers & dm_thread;
  bool first = variable->decl_modifiers == 0 && !state->symbol->declared;
  if (is_thread && (variable->storage_class == sc_auto || variable->storage_class == sc_register)) {
    pos_error(ec_cannot_use_thread_local_storage, state->declarator_range.start);
    return;
  }
  if (!first && is_thread != variable->is_thread_local) {
    pos_sy_error(ec_incompatible_thread_locality, state->declarator_range.start, state->symbol);
  }
  variable->is_thread_local |= is_thread;
  variable->decl_modifiers |= state->decl_modifiers;
}

void update_dll_info_for_variable(a_variable *variable, a_decl_parse_state *state)
{
  variable->decl_modifiers |= state->decl_modifiers & (dm_dllimport | dm_dllexport | dm_notshared);
}

// A static object inside an inline definition that other units may have as well (C99 6.7.4p3).
static void check_local_static(a_symbol *symbol, a_variable *variable)
{
  a_routine *routine = curr_routine();
  if (routine == nullptr) return;
  routine->contains_local_static = true;
  if (!std_c99_inlining || !routine->is_inline || routine->gnu_inline ||
      routine->storage_class == sc_static) {
    return;
  }
  if (is_const_qualified(variable->type)) return;
  record_ref_within_inline_function(routine, symbol, &symbol->position, true);
}

// An object of variable length comes to life here, and one with a cleanup goes into scope.
static void declaration_statement(a_variable *variable, const a_source_position *position)
{
  if (!is_declared_by_statement(variable)) return;
  variable->is_vla = is_vla_type(variable->type);
  if (!in_statement_context()) return;
  if (inside_statement_expression() && variable->is_vla) {
    pos_error(ec_vla_in_statement_expr, *position);
    return;
  }
  a_statement *statement = add_statement_at_stmt_pos(stmk_type_or_var_decl, position);
  decl_of(statement).is_type = false;
  decl_of(statement).variable = variable;
  if (!is_variably_modified_type(variable->type)) return;
  record_trivial_init_control_flow(variable);
}

static a_decl_position_supplement *positions_of(a_source_correspondence *corresp,
                                                a_decl_pos_block *pos_block)
{
  return pos_block ? make_decl_pos_supplement(corresp, pos_block) : nullptr;
}

void decl_variable(a_symbol_locator *locator, a_decl_parse_state *state, uint32_t flags,
                   an_id_linkage_kind *linkage, a_symbol **extern_symbol,
                   a_decl_pos_block *pos_block)
{
  a_decl_decision decision;
  init_decision(&decision, locator, state, nullptr, flags);
  bool is_register_variable =
      state->storage_class == sc_register && state->asm_name != nullptr && !in_function_scope();
  if (is_register_variable) {
    // It names a register of the machine: nothing is defined.
    decision.is_definition = decision.is_tentative = false;
    flags = rdf_declaration;
    decision.storage_class = sc_extern;
  }
  state->is_definition = decision.is_definition;
  find_storage_and_linkage(&decision);
  misra_checks(&decision);
  a_symbol *symbol = symbol_for_variable(&decision);
  a_variable *variable = variable_of_symbol(symbol);
  bool was_defined = symbol->defined;
  state->symbol = symbol;
  locator->symbol = symbol;
  note_definition(&decision, variable);
  if (decision.is_definition || !symbol->declared)
    apply_variable_block_section_specification(variable);
  set_name_linkage(&decision, symbol, &variable->source_corresp);
  uint32_t old_modifiers = variable->decl_modifiers;
  update_variable_decl_modifiers(state);
  if (variable->decl_modifiers != old_modifiers)
    issue_modifier_pragmas(symbol, variable->decl_modifiers & ~old_modifiers);
  variable->declared_register |= state->storage_class == sc_register;
  attach_decl_attributes(state, symbol->declared);
  variable_asm_name(state, variable, was_defined);
  variable->visibility = visibility_with_default(variable->visibility, &variable->source_corresp);
  record_symbol_declaration(flags, symbol, &locator->position,
                            positions_of(&variable->source_corresp, pos_block));
  if (decision.linkage == idl_none && variable->storage_class == sc_static) {
    check_local_static(symbol, variable);
  }
  if (variable->storage_class != sc_extern) {
    declaration_statement(variable, &locator->position);
  }
  if (decision.is_definition && is_volatile_qualified(variable->type)) {
    symbol->referenced = true;
    variable->source_corresp.referenced = true;
    mark_variable_value_set(symbol);
  }
  if (linkage) *linkage = decision.linkage;
  if (extern_symbol) *extern_symbol = decision.prior_extern_symbol;
}

//---------------------------------------------------------------------------------------------
// The object path of a declaration.

static bool at_function_level()
{
  a_scope_kind kind = scope_stack[decl_scope_level].kind;
  return kind == sck_function || kind == sck_block || kind == sck_condition;
}

static void check_object_specifiers(a_symbol_locator *locator, a_decl_parse_state *state)
{
  if (state->specifier_flags & sf_is_inline) {
    pos_diagnostic(gcc_mode ? es_warning : es_error, ec_inline_and_nonfunction,
                   state->inline_position);
  }
  bool missing_type = !(state->specifier_flags & sf_has_type_specifier);
  if (missing_type && !state->bad_declaration && !state->is_implicit_int) {
    state->is_implicit_int = true;
    if ((state->specifier_flags & sf_no_specifiers) && C_dialect == 0) {
      pos_diagnostic(strict_ansi_mode ? strict_ansi_error_severity : es_warning,
                     ec_missing_decl_specifiers, locator->position);
    } else {
      a_type *type;
      report_missing_type_specifier(&locator->position, &type, false, false, false, true);
    }
  }
}

// A static data member's storage class stands in its class.
static void check_storage_class_of_member(a_decl_parse_state *state)
{
  if (state->storage_class == sc_unspecified) return;
  bool tolerated = state->storage_class == sc_extern && (gcc_mode || gpp_mode);
  pos_diagnostic(tolerated ? es_warning : es_error, ec_storage_class_not_allowed,
                 state->storage_class_position);
  state->storage_class = state->effective_storage_class = sc_unspecified;
}

// `register` at file scope is a storage class only with the name of a register behind it.
static void settle_storage_class(a_decl_parse_state *state)
{
  if (at_function_level()) {
    if (state->effective_storage_class == sc_unspecified) state->effective_storage_class = sc_auto;
    return;
  }
  if (state->effective_storage_class == sc_register && state->asm_name == nullptr) {
    state->effective_storage_class = sc_unspecified;
    state->storage_class = sc_unspecified;
  } else if (state->effective_storage_class == sc_auto) {
    pos_error(ec_bad_file_scope_storage_class, state->storage_class_position);
    state->effective_storage_class = sc_unspecified;
  }
}

static bool initializer_follows()
{
  if (curr_token == tok_assign) return true;
  return curr_token == tok_lbrace && gpp_mode && gnu_version >= 40400;
}

// Variable length and linkage or static storage don't go together (C99 6.7.5.2p2).
static void check_vla_object(a_decl_parse_state *state, a_source_position position)
{
  if (!il_header.vla_used || !is_variably_modified_type(state->declared_type)) return;
  an_error_code code = ec_no_error;
  if (state->effective_storage_class == sc_extern) {
    code = ec_variably_modified_type_not_allowed;
  } else if (state->effective_storage_class == sc_static && is_vla_type(state->declared_type)) {
    code = ec_vla_is_not_auto;
  } else if (!at_function_level()) {
    code = ec_variably_modified_type_not_allowed;
  }
  if (code == ec_no_error) return;
  pos_error(code, position);
  state->declared_type = error_type();
}

static uint32_t flags_for_variable(a_decl_parse_state *state, bool has_initializer)
{
  bool is_extern = state->effective_storage_class == sc_extern;
  bool block_level = at_function_level();
  if (state->auto_type_pending) return rdf_declaration | rdf_definition;
  if (has_initializer) {
    return block_level && is_extern ? rdf_declaration | rdf_initialized
                                    : (uint32_t)rdf_is_initialized_definition;
  }
  if (is_extern) return rdf_declaration;
  if (C_dialect == 2 || block_level) return rdf_declaration | rdf_definition;
  return rdf_declaration | rdf_definition | rdf_tentative;
}

// An object that is defined here has a complete type; a tentative definition may wait for it.
static void check_complete(a_decl_parse_state *state, uint32_t flags, a_source_position position)
{
  a_variable *variable = variable_of_symbol(state->symbol);
  if (is_error_type(variable->type)) return;
  bool is_void = is_void_type(variable->type);
  bool may_wait = (flags & rdf_tentative) && !is_void;
  if (!(flags & rdf_definition) || may_wait || !is_incomplete_type(variable->type)) return;
  pos_error(ec_incomplete_type_not_allowed, position);
  variable->type = error_type();
}

static void object_initializer(a_decl_parse_state *state, an_id_linkage_kind linkage,
                               a_decl_pos_block *pos_block)
{
  a_source_position position = pos_curr_token;
  a_source_position end;
  if (curr_token == tok_assign) {
    get_token();
  } else if (!cpp11_mode) {
    pos_warning(ec_list_initializer_nonstandard_in_current_mode, position);
  }
  // Within its own initializer the variable has no value yet.
  initializer(state, &position, linkage, false, &end, pos_block);
  mark_variable_value_set(state->symbol);
}

void object_declaration(a_symbol_locator *locator, a_decl_parse_state *state, bool,
                        a_decl_pos_block *pos_block)
{
  check_object_specifiers(locator, state);
  if (locator->qualifier_is_class) check_storage_class_of_member(state);
  settle_storage_class(state);
  if (curr_token == tok_at_sign) {
    while (curr_token != tok_semicolon && curr_token != tok_comma && curr_token != tok_assign &&
           curr_token != tok_end_of_source) {
      get_token();
    }
  }
  bool has_initializer = initializer_follows();
  state->has_initializer = has_initializer;
  check_vla_object(state, locator->position);
  check_deduced_auto_type(state);
  uint32_t flags = flags_for_variable(state, has_initializer);
  an_id_linkage_kind linkage = idl_none;
  a_symbol *extern_symbol = nullptr;
  decl_variable(locator, state, flags, &linkage, &extern_symbol, pos_block);
  if (at_function_level()) record_entity_in_decl_stmt_if_needed(state->symbol);
  if (has_initializer) {
    object_initializer(state, linkage, pos_block);
  } else if ((state->declarator_flags & df_is_function_body_paren) && curr_token == tok_lparen) {
    a_source_position position = pos_curr_token;
    a_source_position end;
    get_token();
    initializer(state, &position, linkage, true, &end, pos_block);
    mark_variable_value_set(state->symbol);
  } else {
    check_complete(state, flags, locator->position);
    if (C_dialect == 2 && (flags & rdf_definition))
      def_initializer(state->symbol, &locator->position);
  }
  process_curr_construct_pragmas(state->symbol, nullptr);
}
