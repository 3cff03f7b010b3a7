// declarator_func.cpp - function declarators: prototypes, identifier lists, what a definition needs
// of its parameters.
// Owns:    the list of bounds that a prototype leaves to the body.
// Rule:    the prototype scope ends at the `)`; its symbols stay in the func_info block.
// See:     C99 6.7.5.3.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/class_decl.h"
#include "parse/declarator.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

// One prototype while it is read.
struct a_prototype_scan {
  a_func_info_block *func_info;
  a_type *routine_type;
  a_routine_type_supplement *supplement;
  a_param_type *last_param;
  unsigned count;
  bool no_default_args : 1; // of a typedef
};

// Where add_vla_fixup_entry puts its records: the prototype at hand.
static a_vla_fixup **curr_vla_fixups;

void add_vla_fixup_entry(a_type *array_type, an_expr_node *bound, a_source_position position)
{
  if (curr_vla_fixups == nullptr) return;
  a_vla_fixup *fixup = (a_vla_fixup *)alloc_in_region(0, sizeof(a_vla_fixup));
  fixup->next = nullptr;
  fixup->array_type = array_type;
  fixup->bound = bound;
  fixup->position = position;
  a_vla_fixup **link = curr_vla_fixups;
  while (*link)
    link = &(*link)->next;
  *link = fixup;
}

a_vla_fixup **exchange_vla_fixups(a_vla_fixup **list)
{
  a_vla_fixup **former = curr_vla_fixups;
  curr_vla_fixups = list;
  return former;
}

//---------------------------------------------------------------------------------------------
// Parameter ids.

a_param_id *add_to_param_id_list(const a_symbol_locator *locator, a_type *type,
                                 a_source_position *position, a_storage_class storage_class,
                                 a_func_info_block *func_info)
{
  a_param_id *id = alloc_param_id();
  id->locator = *locator;
  id->type = type;
  id->position = *position;
  id->storage_class = storage_class;
  if (func_info->ids_tail) {
    func_info->ids_tail->next = id;
  } else {
    func_info->param_ids = id;
  }
  func_info->ids_tail = id;
  id->number = ++func_info->param_count;
  return id;
}

void make_param_syms_invisible(a_func_info_block *func_info, bool invisible)
{
  for (a_symbol *symbol = func_info->prototype_symbols; symbol; symbol = symbol->next_in_scope) {
    if (symbol->kind == sk_parameter) symbol->is_invisible = invisible;
  }
}

//---------------------------------------------------------------------------------------------
// Identifier lists.

// Whether what stands behind the `(` is a list of names (C99 6.7.5.3p11: a type name wins).
static bool is_identifier_list(uint32_t options)
{
  if (C_dialect == 2 && !(allow_anachronisms && (options & dop_param_id_list_ok))) return false;
  if (curr_token != tok_identifier) return false;
  if (curr_type_symbol() != nullptr) return false;
  a_token_kind second = next_token();
  if (second == tok_comma || second == tok_rparen) return true;
  return !is_decl_start(dst_parameter);
}

static void identifier_in_list(a_func_info_block *func_info)
{
  a_symbol *symbol = curr_type_symbol();
  if (symbol != nullptr) {
    pos_error(C_dialect == 2 ? ec_type_cannot_be_param_name : ec_typedef_cannot_be_param_name,
              pos_curr_token);
  } else if (func_info) {
    a_symbol_locator locator = locator_for_curr_id;
    locator.symbol = nullptr;
    add_to_param_id_list(&locator, nullptr, &pos_curr_token, sc_unspecified, func_info);
  }
  get_token();
}

static void identifier_list(uint32_t options, a_func_info_block *func_info)
{
  if (!(options & dop_param_id_list_ok) || func_info == nullptr) {
    pos_diagnostic(gcc_mode ? es_warning : es_error, ec_param_id_list_needs_function_def,
                   pos_curr_token);
    func_info = nullptr;
  } else {
    func_info->is_old_style = true;
    if (C_dialect == 2) {
      pos_diagnostic(anachronism_error_severity, ec_old_style_parameter_list, pos_curr_token);
    }
  }
  for (;;) {
    if (curr_token == tok_ellipsis) {
      pos_error(ec_ellipsis_not_allowed, pos_curr_token);
      get_token();
    } else if (curr_token != tok_identifier) {
      syntax_error(ec_exp_identifier);
    } else {
      identifier_in_list(func_info);
    }
    if (curr_token != tok_comma) return;
    get_token();
  }
}

//---------------------------------------------------------------------------------------------
// Parameters.

// `(void)`, also through a typedef: no parameters.
static bool is_void_list(const a_prototype_scan *scan, const a_decl_parse_state *state)
{
  if (scan->count != 0 || curr_token != tok_rparen) return false;
  if (!is_void_type(state->type_specifier)) return false;
  if (state->type_qualifiers != 0 || state->storage_class != sc_unspecified ||
      get_type_qualifiers(state->type_specifier) != 0) {
    return false;
  }
  if (!(state->specifier_flags & sf_is_void_only) && strict_ansi_mode) {
    pos_diagnostic(strict_ansi_discretionary_severity, ec_nonstd_void_param_list,
                   state->start_position);
  }
  return true;
}

static void check_void_parameter(a_decl_parse_state *state)
{
  if (!is_void_type(state->declared_type)) return;
  pos_error(ec_void_param_not_allowed, state->start_position);
  state->declared_type = error_type();
}

static void parameter_specifiers(a_decl_parse_state *state, a_decl_pos_block *pos_block)
{
  decl_specifiers(dso_type_ok | dso_storage_class_ok | dso_parameter | dso_class_def_ok |
                      dso_check_missing_semicolon | dso_std_attributes_ok,
                  state, pos_block);
  if (C_dialect == 2 && (state->specifier_flags & sf_defines_type)) {
    pos_error(ec_type_definition_not_allowed, state->start_position);
  }
}

// The parameter's name in the prototype scope, for bounds of later parameters and duplicates.
static a_symbol *enter_parameter_symbol(a_symbol_locator *locator, a_param_type *param)
{
  if (locator->header == nullptr || locator->is_qualified) return nullptr;
  a_symbol_locator copy = *locator;
  a_symbol *prior = curr_scope_id_lookup(&copy, lo_none);
  if (prior && prior->kind == sk_parameter) {
    pos_st_error(ec_dupl_param_name, locator->position, locator->header->identifier);
    locator->header = nullptr;
    locator->is_qualified = true;
    return nullptr;
  }
  a_symbol *symbol = enter_local_symbol(sk_parameter, locator);
  symbol->variant.param_type = param;
  return symbol;
}

static a_param_type *make_param_type(a_prototype_scan *scan, a_decl_parse_state *state,
                                     a_type *written_type, const a_symbol_locator *locator)
{
  a_type *type = state->declared_type;
  a_param_type *param = alloc_param_type(type);
  param->orig_type = written_type;
  unsigned qualifiers = is_array_type(type) ? 0 : get_type_qualifiers(type);
  if (remove_qualifiers_from_param_types && qualifiers != 0) {
    param->type = make_unqualified_type(type);
    param->qualifiers = qualifiers;
  }
  if (locator->header != nullptr && !locator->is_qualified)
    param->name = locator->header->identifier;
  param->position = locator->position;
  param->declared_register = state->storage_class == sc_register;
  param->has_static_bound = state->array_is_static_param;
  param->decl_modifiers = state->decl_modifiers;
  param->number = ++scan->count;
  if (scan->last_param) {
    scan->last_param->next = param;
  } else {
    scan->supplement->param_types = param;
  }
  scan->last_param = param;
  return param;
}

static void parameter_initializer(a_prototype_scan *scan, a_param_type *param)
{
  a_source_position position = pos_curr_token;
  get_token();
  if (C_dialect != 2) {
    pos_error(ec_initializer_in_param, position);
    scan_and_discard_initializer_expression();
    return;
  }
  if (scan->func_info == nullptr || scan->no_default_args) {
    pos_error(ec_default_arg_expr_not_allowed, position);
    scan_and_discard_initializer_expression();
    return;
  }
  param->has_default_arg = true;
  bool waits_for_class =
      curr_routine_fixup != nullptr && scan->func_info == &curr_routine_fixup->func_info;
  if (waits_for_class) {
    prescan_default_function_arg_expr(param, &curr_routine_fixup->default_arg_fixups);
  } else {
    param->default_arg_expr = scan_default_arg_expr(param->type);
  }
}

static void note_parameter(a_prototype_scan *scan, a_decl_parse_state *state, a_param_type *param,
                           a_symbol_locator *locator, a_symbol *symbol)
{
  if (scan->func_info == nullptr) return;
  a_type *written = skip_typerefs(param->orig_type);
  a_source_position position =
      locator->header != nullptr ? locator->position : state->start_position;
  a_storage_class storage = state->storage_class == sc_register ? sc_register : sc_unspecified;
  a_param_id *id =
      add_to_param_id_list(locator, state->declared_type, &position, storage, scan->func_info);
  id->param_type = param;
  id->symbol = symbol;
  id->qualifiers = param->qualifiers;
  id->attributes = param->attributes;
  id->has_unspecified_bound = written->kind == tk_array && as_array(written).is_star_vla;
  id->declared = true;
}

// One parameter; false when the list was `(void)`.
static bool one_parameter(a_prototype_scan *scan)
{
  a_decl_parse_state state = null_decl_parse_state;
  a_symbol_locator locator = cleared_locator;
  state.start_position = pos_curr_token;
  state.in_prototype = true;
  parameter_specifiers(&state, nullptr);
  if (is_void_list(scan, &state)) return false;
  if (!(state.specifier_flags & sf_has_type_specifier) && !state.bad_declaration) {
    report_missing_type_specifier(&state.start_position, &state.type_specifier, false, true, false,
                                  true);
    state.bottom_type = state.type_specifier;
  }
  declarator(dop_name_ok | dop_abstract_ok | dop_parameter | dop_vla_ok, &state, nullptr, &locator,
             nullptr, nullptr);
  if (curr_token == tok_attribute) {
    *f_last_attribute_link(&state.declarator_attributes) = scan_attributes(al_after_declarator);
  }
  check_void_parameter(&state);
  check_use_of_auto_type(&state);
  a_type *written_type = state.declared_type;
  if (locator.header == nullptr) locator.position = state.start_position;
  check_and_adjust_parameter_type(&state.declared_type, &locator.position);
  a_param_type *param = make_param_type(scan, &state, written_type, &locator);
  attach_param_attributes(&state, param);
  a_symbol *symbol = enter_parameter_symbol(&locator, param);
  if (symbol) record_symbol_declaration(rdf_declaration, symbol, &locator.position, nullptr);
  note_parameter(scan, &state, param, &locator, symbol);
  if (curr_token == tok_assign) parameter_initializer(scan, param);
  run_end_of_parse_actions(&state);
  return true;
}

static void parameter_list(a_prototype_scan *scan)
{
  add_stop_token(tok_comma);
  for (;;) {
    if (curr_token == tok_ellipsis) {
      scan->supplement->has_ellipsis = true;
      get_token();
      break;
    }
    if (C_dialect != 2 && !is_decl_start(dst_parameter) && curr_token != tok_attribute) {
      syntax_error(ec_exp_type_specifier);
    } else if (!one_parameter(scan)) {
      break;
    }
    if (curr_token == tok_ellipsis && C_dialect == 2) {
      scan->supplement->has_ellipsis = true;
      get_token();
      break;
    }
    if (curr_token != tok_comma) break;
    get_token();
  }
  remove_stop_token(tok_comma);
}

// The prototype scope ends; what it declared stays reachable for the body.
static void close_prototype_scope(a_prototype_scan *scan)
{
  a_scope_stack_entry *entry = top_scope();
  if (scan->func_info) {
    scan->func_info->prototype_scope_number = entry->number;
    scan->func_info->prototype_scope = entry->il_scope;
    scan->func_info->prototype_symbols = block_of_scope_entry(entry)->symbols;
  }
  if (entry->il_scope) scan->supplement->prototype_scope = entry->il_scope;
  pop_scope();
}

static void prototype(uint32_t options, a_func_info_block *func_info, a_type *routine_type)
{
  a_prototype_scan scan = {};
  scan.func_info = func_info;
  scan.no_default_args = (options & dop_typedef) != 0;
  scan.routine_type = routine_type;
  scan.supplement = routine_supplement_of(routine_type);
  scan.supplement->is_prototyped = true;
  a_vla_fixup *unwanted_fixups = nullptr;
  a_vla_fixup **saved_fixups = curr_vla_fixups;
  curr_vla_fixups = func_info ? &func_info->vla_fixups : &unwanted_fixups;
  push_scope(sck_function_prototype, -1, routine_type, nullptr);
  parameter_list(&scan);
  close_prototype_scope(&scan);
  curr_vla_fixups = saved_fixups;
}

//---------------------------------------------------------------------------------------------
// The declarator.

static void empty_list(a_type *routine_type)
{
  if (C_dialect == 2) {
    routine_supplement_of(routine_type)->is_prototyped = true;
  } else if (check_misra_c_2004) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_16_5, pos_curr_token);
  }
}

// `(...)`: C++, and C by an option.
static bool ellipsis_only_list(a_type *routine_type)
{
  if (curr_token != tok_ellipsis) return false;
  if (C_dialect != 2 && !allow_ellipsis_only_param_in_C_mode) return false;
  a_routine_type_supplement *supplement = routine_supplement_of(routine_type);
  supplement->is_prototyped = true;
  supplement->has_ellipsis = true;
  if (C_dialect != 2 && strict_ansi_mode) {
    pos_diagnostic(strict_ansi_discretionary_severity, ec_nonstd_ellipsis_only_param,
                   pos_curr_token);
  }
  get_token();
  return true;
}

// Qualifiers and exception specification behind the list of a C++ function.
static void cplusplus_tail(a_type *routine_type, a_func_info_block *func_info)
{
  if (C_dialect != 2) return;
  unsigned qualifiers = 0;
  collect_type_qualifiers(nullptr, &qualifiers);
  routine_supplement_of(routine_type)->this_qualifiers = qualifiers;
  if (curr_token != tok_throw) return;
  if (func_info) func_info->exception_specification_position = pos_curr_token;
  exception_specification(routine_type);
}

void function_declarator(uint32_t options, a_decl_parse_state *state, a_func_info_block *func_info,
                         a_declarator_part *part)
{
  a_type *routine_type = alloc_type(tk_routine);
  a_routine_type_supplement *supplement = routine_supplement_of(routine_type);
  unsigned linkage = top_scope()->name_linkage;
  supplement->type_linkage = linkage == nlk_c ? nlk_c : nlk_cplusplus;
  part->type = routine_type;
  if (func_info) {
    free_param_id_list(func_info);
    clear_func_info(func_info);
    func_info->type_from_declarator = true;
  }
  add_stop_token(tok_rparen);
  if (curr_token == tok_rparen) {
    empty_list(routine_type);
    if (func_info) func_info->is_old_style = C_dialect != 2;
  } else if (ellipsis_only_list(routine_type)) {
    // nothing more
  } else if (is_identifier_list(options)) {
    identifier_list(options, func_info);
    supplement->is_old_style_definition = func_info != nullptr;
  } else {
    prototype(options, func_info, routine_type);
  }
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  cplusplus_tail(routine_type, func_info);
  (void)state;
}

//---------------------------------------------------------------------------------------------
// Exception specifications (C++).

// `throw ( types )`; the current token is `throw`.
void exception_specification(a_type *routine_type)
{
  an_exception_specification *specification = alloc_exception_specification();
  specification->decl_range.start = pos_curr_token;
  if (report_embedded_cplusplus_noncompliance) {
    embedded_cplusplus_noncompliance_diagnostic(pos_curr_token,
                                                ec_exceptions_in_embedded_cplusplus);
  }
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) return;
  add_stop_token(tok_rparen);
  an_exception_specification_type **link = &specification->first_type;
  while (curr_token != tok_rparen && curr_token != tok_end_of_source) {
    an_exception_specification_type *entry = alloc_exception_specification_type();
    entry->position = pos_curr_token;
    type_name(&entry->type);
    for (an_exception_specification_type *old = specification->first_type; old; old = old->next) {
      if (!identical_types(old->type, entry->type)) continue;
      pos_ty_warning(ec_redundant_exception_specification_type, entry->position, entry->type);
      entry->is_redundant = true;
      break;
    }
    *link = entry;
    link = &entry->next;
    if (curr_token != tok_comma) break;
    get_token();
  }
  specification->decl_range.end = pos_curr_token;
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  routine_supplement_of(routine_type)->exception_specification = specification;
}

void scan_lambda_declarator(a_lambda *, a_decl_parse_state *state, a_func_info_block *func_info,
                            a_decl_pos_block *)
{
  a_declarator_part part = {};
  get_token();
  function_declarator(dop_cplusplus, state, func_info, &part);
  as_routine(part.type).return_type = void_type();
  state->declared_type = part.type;
}

bool is_cfront_member_function_typedef(a_type *type, a_type **member_class)
{
  if (!(cfront_2_1_mode || cfront_3_0_mode) || !is_function_type(type)) return false;
  *member_class = routine_supplement_of(skip_typerefs(type))->this_class;
  return *member_class != nullptr;
}
