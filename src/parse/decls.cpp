// decls.cpp - the frame of a declaration: special forms, specifiers, declarators, the `;`.
// Uses:    objects (decls_object.cpp), functions (decls_routine.cpp), typedefs (decls_typedef.cpp),
//          the other forms (decls_special.cpp).
// Rule:    every path takes at least one token or stops at a stop token of its caller.
// Entry:   declaration, local_declaration.
// See:     C99 6.7, 6.9.
#include "parse/decls.h"

#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/decls_private.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/lookup_parts.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_ref.h"

// What the caller of declaration asked for.
struct a_declaration_context {
  bool top_level;
  bool parameter_decls;
  bool for_init;
  bool body_allowed;
  bool extension_seen;
  a_func_info_block *param_ids;
};

//---------------------------------------------------------------------------------------------
// Declarations of the names of an identifier list.

// Declarations behind it may name the parameter, in a bound or in sizeof (C99 6.9.1p6).
static void enter_old_style_parameter(a_param_id *id)
{
  a_symbol_locator locator = id->locator;
  locator.symbol = nullptr;
  a_symbol *symbol = enter_local_symbol(sk_parameter, &locator);
  symbol->variant.param_type = alloc_param_type(id->type);
  symbol->variant.param_type->number = id->number;
}

// One declarator between `)` and `{` of an old-style definition.
static void old_style_parameter(a_symbol_locator *locator, a_decl_parse_state *state,
                                a_func_info_block *func_info)
{
  if (locator->header == nullptr || locator->is_qualified) return;
  a_param_id *id = find_param_id(func_info, locator->header);
  if (id == nullptr) {
    pos_error(ec_decl_should_be_of_param, locator->position);
    return;
  }
  if (id->declared) {
    pos_st_error(ec_id_already_declared, locator->position, locator->header->identifier);
    return;
  }
  id->has_unspecified_bound = is_or_contains_vla_type_with_unspecified_bound(state->declared_type);
  check_and_adjust_parameter_type(&state->declared_type, &locator->position);
  a_type *plain = skip_typerefs(state->declared_type);
  if (C_dialect == 1 && plain->kind == tk_float && as_float(plain).float_kind == fk_float) {
    state->declared_type = float_type(fk_double);
  }
  id->declared = true;
  id->type = state->declared_type;
  id->position = locator->position;
  id->locator.position = locator->position;
  id->attributes = state->specifiers_attributes;
  if (state->declarator_attributes) {
    *f_last_attribute_link(&id->attributes) = state->declarator_attributes;
  }
  enter_old_style_parameter(id);
  if (state->storage_class == sc_register) {
    id->storage_class = sc_register;
  } else if (state->storage_class != sc_unspecified) {
    pos_error(ec_bad_param_storage_class, state->storage_class_position);
  }
  if (curr_token == tok_assign) {
    pos_error(ec_initializer_in_param, pos_curr_token);
    get_token();
    scan_and_discard_initializer_expression();
  }
}

//---------------------------------------------------------------------------------------------
// Specifiers alone.

static void check_specifiers_without_entity(a_decl_parse_state *state)
{
  a_source_position position = state->start_position;
  if (state->storage_class == sc_typedef) {
    pos_diagnostic(gcc_mode || C_dialect == 1 ? es_warning : es_discretionary_error,
                   ec_missing_typedef_name, position);
  } else if (state->storage_class != sc_unspecified) {
    bool warn = gcc_mode || (C_dialect != 2 && is_null_position(state->storage_class_position));
    pos_diagnostic(warn ? es_warning : es_discretionary_error,
                   ec_storage_class_requires_function_or_variable, position);
  }
  if (state->type_qualifiers) pos_warning(ec_useless_type_qualifiers, state->qualified_position);
  if (state->specifier_flags & sf_is_inline) {
    pos_diagnostic(gcc_mode ? es_warning : es_error, ec_inline_and_nonfunction,
                   state->inline_position);
  }
  if (state->decl_modifiers & dm_thread) pos_error(ec_cannot_use_thread_local_storage, position);
  if (state->specifiers_attributes) {
    bool is_alone = (state->specifier_flags & sf_has_type_specifier) == 0;
    pos_warning(is_alone ? ec_unattached_attribute : ec_attributes_with_no_decl,
                state->specifiers_attributes->position);
  }
}

// Whether the specifiers declared a tag or enumerators.
static bool declares_type(const a_decl_parse_state *state)
{
  if (!(state->specifier_flags & sf_is_type_declaration)) return false;
  a_type *type = skip_typerefs(state->type_specifier);
  if (state->enum_body_seen) return true;
  return type->source_corresp.name != nullptr;
}

static void specifiers_alone(a_decl_parse_state *state)
{
  bool in_error = state->bad_declaration || (state->specifier_flags & sf_is_in_error);
  // Old headers declare their own void.
  if (C_dialect == 1 && state->storage_class == sc_typedef && is_void_type(state->type_specifier)) {
    pos_warning(ec_decl_of_void_ignored, state->start_position);
    return;
  }
  bool no_typedef = state->storage_class != sc_typedef;
  if (!declares_type(state) && no_typedef && !in_error && !ulp_standalone_ext) {
    pos_diagnostic(strict_ansi_mode ? strict_ansi_error_severity : es_warning, ec_useless_decl,
                   state->start_position);
  }
  if (!in_error) check_specifiers_without_entity(state);
}

//---------------------------------------------------------------------------------------------
// Declarators.

static uint32_t specifier_options(const a_declaration_context *context)
{
  uint32_t options = dso_storage_class_ok | dso_type_ok | dso_class_def_ok |
                     dso_check_missing_semicolon | dso_std_attributes_ok;
  if (!context->parameter_decls) options |= dso_inline_ok;
  return options;
}

static uint32_t declarator_options(const a_declaration_context *context,
                                   const a_decl_parse_state *state)
{
  uint32_t options = dop_name_ok;
  if (vla_enabled || gcc_mode) options |= dop_vla_ok;
  if (C_dialect == 2) options |= dop_cplusplus | dop_reactivate_scopes;
  if (context->parameter_decls) options |= dop_parameter;
  if (context->body_allowed) options |= dop_param_id_list_ok;
  if (state->specifier_flags & sf_no_specifiers) options |= dop_no_specifiers;
  return options;
}

// The state for the next declarator of a list: what the specifiers gave stays.
static void start_secondary_declarator(a_decl_parse_state *state)
{
  run_end_of_parse_actions(state);
  state->declarator_flags = 0;
  state->declared_type = state->type_specifier;
  state->bottom_type = state->type_specifier;
  state->declarator_attributes = nullptr;
  state->asm_name = nullptr;
  state->symbol = nullptr;
  state->is_definition = false;
  state->has_initializer = false;
  state->array_is_static_param = false;
  state->effective_storage_class = state->storage_class;
}

// Attributes behind a declarator: those of the type change it, the others wait for the entity.
static void attributes_behind_declarator(a_decl_parse_state *state)
{
  if (curr_token != tok_attribute && curr_token != tok_declspec) return;
  *f_last_attribute_link(&state->declarator_attributes) = scan_attributes(al_after_declarator);
}

static void apply_declarator_type_attributes(a_decl_parse_state *state)
{
  if (state->declarator_attributes == nullptr) return;
  an_attribute *list = take_type_attributes(&state->declarator_attributes);
  if (list) attach_type_attributes(&state->declared_type, list, state);
}

static void typedef_declarator(a_symbol_locator *locator, a_decl_parse_state *state,
                               a_decl_pos_block *pos_block)
{
  if (state->specifier_flags & sf_is_inline) {
    pos_error(ec_inline_and_nonfunction, state->inline_position);
  }
  if (state->declarator_flags & df_is_qualified) {
    pos_error(ec_qualified_name_not_allowed, locator->position);
    locator->is_qualified = true;
  }
  decl_typedef(locator, state, state->declared_type, pos_block);
  if (in_function_scope() && state->symbol) record_entity_in_decl_stmt_if_needed(state->symbol);
  if (curr_token != tok_assign) return;
  // `typedef x = expr;` of very old GNU versions names the type of the expression.
  a_symbol *symbol = locator->symbol;
  if (symbol) {
    pos_sy_error(ec_cannot_initialize, pos_curr_token, symbol);
  } else {
    pos_error(ec_exp_semicolon, pos_curr_token);
  }
  get_token();
  scan_and_discard_initializer_expression();
}

// What the standard library calls so.
static void check_declared_name_for_misra(const a_symbol_locator *locator,
                                          const a_decl_parse_state *state)
{
  if (locator->header == nullptr) return;
  misra_hooks.check_for_misra_20_2(locator);
  unsigned kinds = ansi_c_object;
  if (state->storage_class == sc_typedef) {
    kinds = ansi_c_type;
  } else if (is_function_type(state->declared_type)) {
    kinds = ansi_c_function;
  }
  misra_hooks.check_for_invalid_identifier(locator->header->identifier, &locator->position, kinds);
}

// Only the first declarator of a list can have a body.
static bool one_declarator(const a_declaration_context *context, a_decl_parse_state *state,
                           bool is_first, a_decl_pos_block *pos_block)
{
  a_symbol_locator locator;
  a_func_info_block func_info;
  clear_func_info(&func_info);
  declarator(declarator_options(context, state), state, nullptr, &locator, &func_info, pos_block);
  scan_gnu_asm_name(state);
  attributes_behind_declarator(state);
  apply_declarator_type_attributes(state);
  if (check_misra_c_2004) check_declared_name_for_misra(&locator, state);
  bool ended = false;
  if (context->parameter_decls) {
    old_style_parameter(&locator, state, context->param_ids);
  } else if (state->storage_class == sc_typedef) {
    typedef_declarator(&locator, state, pos_block);
  } else if (is_function_type(state->declared_type)) {
    bool body_allowed = context->body_allowed && is_first;
    ended = routine_declaration(&locator, state, &func_info, body_allowed, pos_block);
  } else {
    object_declaration(&locator, state, is_first, pos_block);
  }
  close_declarator_scopes(state);
  free_param_id_list(&func_info);
  return ended;
}

static bool declarator_list(const a_declaration_context *context, a_decl_parse_state *state,
                            a_decl_pos_block *pos_block)
{
  add_stop_token(tok_comma);
  bool is_first = true;
  bool ended = false;
  for (;;) {
    ended = one_declarator(context, state, is_first, pos_block);
    if (ended || curr_token != tok_comma) break;
    is_first = false;
    get_token();
    start_secondary_declarator(state);
    // GNU: attributes may stand in front of each further declarator.
    attributes_behind_declarator(state);
  }
  remove_stop_token(tok_comma);
  return ended;
}

//---------------------------------------------------------------------------------------------
// The frame.

// A token with which neither specifiers nor a declarator can begin.
static bool cannot_begin_declaration()
{
  switch (curr_token) {
  case tok_identifier:
  case tok_star:
  case tok_lparen:
  case tok_semicolon:
  case tok_colon_colon:
  case tok_compl:
  case tok_operator:
  case tok_ampersand: return false;
  default: return true;
  }
}

static void not_a_declaration()
{
  if (curr_token == tok_rbrace) {
    pos_error(ec_exp_declaration, pos_curr_token);
    get_token();
    return;
  }
  unsigned sequence_number = curr_token_sequence_number;
  add_stop_token(tok_semicolon);
  syntax_error(ec_exp_declaration);
  remove_stop_token(tok_semicolon);
  if (curr_token == tok_semicolon ||
      (curr_token_sequence_number == sequence_number && curr_token != tok_end_of_source)) {
    get_token();
  }
}

// Handles everything that isn't specifiers and declarators; false when those follow.
static bool special_form(a_declaration_context *context, an_attribute *attributes)
{
  switch (curr_token) {
  case tok_semicolon:
    if (strict_ansi_mode && C_dialect != 1) {
      pos_diagnostic(strict_ansi_discretionary_severity, ec_extra_semicolon, pos_curr_token);
    }
    get_token();
    return true;
  case tok_asm:
  case tok_gnu_asm:
    asm_declaration(!context->top_level && in_statement_context(), !context->parameter_decls,
                    &attributes);
    required_token(tok_semicolon, ec_exp_semicolon);
    return true;
  case tok_static_assert: static_assert_declaration(false); return true;
  case tok_extern:
    if (C_dialect == 2 && next_token() == tok_string_literal) return linkage_specification();
    return false;
  case tok_namespace:
  case tok_using: return namespace_or_using_declaration(attributes);
  case tok_template:
  case tok_export:
    pos_error(ec_template_not_allowed, pos_curr_token);
    not_a_declaration();
    return true;
  default: return false;
  }
}

// A definition of a type that no `;` ends.
static bool semicolon_is_missing(a_decl_parse_state *state)
{
  bool defines = state->specifier_flags & sf_defines_type;
  if (state->specifier_flags & sf_missing_semicolon_suspected) {
    pos_error(ec_exp_semicolon, pos_curr_token);
    return true;
  }
  if (!defines || !cannot_begin_declaration() || curr_token == tok_attribute) return false;
  if (curr_token == tok_asm || curr_token == tok_gnu_asm || curr_token == tok_lbracket)
    return false;
  required_token_no_advance(tok_semicolon, ec_exp_semicolon);
  if (curr_token == tok_semicolon) get_token();
  return true;
}

static void end_of_declaration(a_decl_parse_state *state)
{
  required_token_no_advance(tok_semicolon, ec_exp_semicolon);
  if (state->has_pending_qualifiers) f_check_pending_qualifiers_used(state);
  if (curr_token == tok_semicolon) get_token();
  run_end_of_parse_actions(state);
}

static void skip_extension_keyword(a_declaration_context *context)
{
  while (curr_token == tok_extension && (gcc_mode || gpp_mode)) {
    context->extension_seen = true;
    get_token();
  }
}

static void plain_declaration(a_declaration_context *context, an_attribute *attributes,
                              a_source_range *specifiers_range)
{
  a_decl_parse_state state = null_decl_parse_state;
  a_decl_pos_block pos_block;
  clear_decl_pos_block(&pos_block);
  state.start_position = pos_curr_token;
  state.c99_for_init = context->for_init;
  state.specifiers_attributes = attributes;
  unsigned first_token = curr_token_sequence_number;
  add_stop_token(tok_semicolon);
  decl_specifiers(specifier_options(context), &state, &pos_block);
  remove_stop_token(tok_semicolon);
  if (specifiers_range) *specifiers_range = state.specifiers_range;
  if ((state.specifier_flags & sf_no_specifiers) && cannot_begin_declaration()) {
    not_a_declaration();
    return;
  }
  if (curr_token == tok_semicolon) {
    specifiers_alone(&state);
    process_curr_construct_pragmas(nullptr, nullptr);
    end_of_declaration(&state);
    return;
  }
  if (semicolon_is_missing(&state)) return;
  add_stop_token(tok_semicolon);
  bool ended = declarator_list(context, &state, &pos_block);
  remove_stop_token(tok_semicolon);
  if (ended) {
    run_end_of_parse_actions(&state);
    return;
  }
  end_of_declaration(&state);
  if (curr_token_sequence_number == first_token && curr_token != tok_end_of_source) get_token();
}

static void declaration_in_context(a_declaration_context *context, a_source_range *specifiers_range)
{
  error_position = pos_curr_token;
  bool saved_report = report_gnu_extensions;
  skip_extension_keyword(context);
  if (context->extension_seen) report_gnu_extensions = false;
  select_curr_construct_pragmas(false);
  an_attribute *attributes = nullptr;
  if (std_attributes_enabled && curr_token == tok_lbracket) {
    attributes = scan_attributes(al_decl_start);
  }
  if (special_form(context, attributes))
    process_curr_construct_pragmas(nullptr,
                                   nullptr); // nothing was declared that they could bind to
  else
    plain_declaration(context, attributes, specifiers_range);
  report_gnu_extensions = saved_report;
}

void declaration(bool in_class_free_top, bool parameter_decls, bool top_level, bool after_extension,
                 a_func_info_block *param_ids, a_source_range *specifiers_range)
{
  a_declaration_context context = {};
  context.top_level = top_level || in_class_free_top;
  context.parameter_decls = parameter_decls;
  context.body_allowed = context.top_level && !parameter_decls;
  context.extension_seen = after_extension;
  context.param_ids = param_ids;
  declaration_in_context(&context, specifiers_range);
}

void local_declaration(bool is_for_init, bool after_extension)
{
  a_declaration_context context = {};
  context.for_init = is_for_init;
  context.extension_seen = after_extension;
  declaration_in_context(&context, nullptr);
}

//---------------------------------------------------------------------------------------------
// Conditions and handlers (C++).

a_symbol *condition_declaration()
{
  a_decl_parse_state state = null_decl_parse_state;
  a_symbol_locator locator;
  state.start_position = pos_curr_token;
  decl_specifiers(dso_type_ok | dso_in_condition_or_param_template, &state, nullptr);
  declarator(dop_name_ok | dop_cplusplus, &state, nullptr, &locator, nullptr, nullptr);
  object_declaration(&locator, &state, true, nullptr);
  if (state.symbol) state.symbol->is_condition_decl = true;
  return state.symbol;
}

void handler_declaration(a_handler *handler, a_source_position *position, bool)
{
  *position = pos_curr_token;
  if (curr_token == tok_ellipsis) {
    get_token();
    return;
  }
  a_decl_parse_state state = null_decl_parse_state;
  a_symbol_locator locator;
  state.start_position = pos_curr_token;
  decl_specifiers(dso_type_ok | dso_restricted_storage, &state, nullptr);
  declarator(dop_name_ok | dop_abstract_ok | dop_cplusplus, &state, nullptr, &locator, nullptr,
             nullptr);
  check_and_adjust_parameter_type(&state.declared_type, &state.start_position);
  a_variable *variable = make_handler_parameter(state.declared_type, handler);
  handler->parameter = variable;
  if (locator.header == nullptr) return;
  a_symbol *symbol = enter_local_symbol(sk_variable, &locator);
  variable_of_symbol(symbol) = variable;
  symbol->is_handler_param = true;
  set_source_corresp(&variable->source_corresp, symbol);
}

//---------------------------------------------------------------------------------------------
// Life cycle.

// A use of a name whose extern declaration stood in a block that is closed: it is declared anew
// here.
static a_symbol *redeclare_external_symbol(a_symbol *extern_symbol, a_symbol_locator *locator)
{
  a_decl_parse_state state = null_decl_parse_state;
  state.start_position = locator->position;
  state.storage_class = state.effective_storage_class = sc_extern;
  a_type *type = extern_symbol->variant.extern_entity.type;
  state.declared_type = state.type_specifier = state.bottom_type = type;
  if (type == nullptr) return nullptr;
  a_symbol_locator copy = *locator;
  copy.symbol = nullptr;
  an_id_linkage_kind linkage = idl_none;
  if (is_function_type(type)) {
    decl_routine(&copy, &state, nullptr, rdf_declaration, &linkage, nullptr, nullptr);
  } else {
    decl_variable(&copy, &state, rdf_declaration, &linkage, nullptr, nullptr);
  }
  return state.symbol;
}

void decls_one_time_init()
{
  redeclare_external_symbol_hook = redeclare_external_symbol;
}

void decls_init()
{
  decl_spec_init();
  declarator_init();
}

void decls_trans_unit_init()
{
}
