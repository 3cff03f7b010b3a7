// decls_type_name.cpp - type names, the tests that tell a type or declaration from an expression,
// and the checks of parameter types.
// Rule:    the tests look at tokens and symbols only; they report nothing and leave the current
//          token where it was.
// See:     C99 6.7.6, 6.7.5.3p7.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"

//---------------------------------------------------------------------------------------------
// Tests on tokens.

a_symbol *curr_type_symbol()
{
  a_symbol *symbol;
  if (C_dialect != 2) {
    if (curr_token != tok_identifier) return nullptr;
    symbol = normal_id_lookup(&locator_for_curr_id, lo_type_only);
  } else {
    if (curr_token != tok_identifier && curr_token != tok_colon_colon) return nullptr;
    bool error_found = false;
    symbol = coalesce_and_lookup_generalized_identifier(
        gid_no_diagnostics | gid_destructor_name_allowed, lo_none, &error_found);
  }
  return symbol && is_type_symbol(symbol) ? symbol : nullptr;
}

// Keywords that begin a type, and qualifiers.
static bool is_type_keyword()
{
  switch (curr_token) {
  case tok_char:
  case tok_double:
  case tok_float:
  case tok_int:
  case tok_long:
  case tok_short:
  case tok_signed:
  case tok_unsigned:
  case tok_void:
  case tok_const:
  case tok_volatile:
  case tok_restrict:
  case tok_gnu_restrict:
  case tok_enum:
  case tok_struct:
  case tok_union:
  case tok_class:
  case tok_c99_bool:
  case tok_complex:
  case tok_imaginary:
  case tok_bool:
  case tok_wchar_t:
  case tok_char16_t:
  case tok_char32_t:
  case tok_cl_vector:
  case tok_int40_t:
  case tok_typeof:
  case tok_decltype:
  case tok_underlying_type:
  case tok_typename:
  case tok_data16:
  case tok_data20: return true;
  default: return false;
  }
}

static bool is_storage_or_function_keyword()
{
  switch (curr_token) {
  case tok_auto:
  case tok_extern:
  case tok_register:
  case tok_static:
  case tok_typedef:
  case tok_inline:
  case tok_thread:
  case tok_mutable:
  case tok_friend:
  case tok_virtual:
  case tok_explicit:
  case tok_near:
  case tok_far:
  case tok_shared:
  case tok_sharedpp:
  case tok_trap:
  case tok_interrupt:
  case tok_interrupt_keyword:
  case tok_reentrant:
  case tok_cregister:
  case tok_global:
  case tok_declspec: return true;
  default: return false;
  }
}

bool is_type_start(uint32_t options)
{
  if (curr_token == tok_identifier || curr_token == tok_colon_colon) {
    return curr_type_symbol() != nullptr;
  }
  // `__attribute__` may stand in front of the specifiers of a parameter or a cast.
  if (curr_token == tok_attribute) return (options & (dst_parameter | dst_cast)) != 0;
  return is_type_keyword();
}

// An identifier that is nothing yet and stands where only a type can make sense: `foo bar`.  Taken
// as a declaration, so that the name is reported and not what follows it.
static bool is_unknown_type_name(uint32_t options)
{
  if (C_dialect == 2) return false;
  a_symbol *symbol = normal_id_lookup(&locator_for_curr_id, lo_type_only);
  if (symbol != nullptr && symbol->kind != sk_undefined) return false;
  a_token_kind second = next_token();
  if (second == tok_identifier) return true;
  return (options & dst_parameter) && second == tok_star;
}

bool is_decl_start(uint32_t options)
{
  switch (curr_token) {
  case tok_identifier: return curr_type_symbol() != nullptr || is_unknown_type_name(options);
  case tok_colon_colon: return curr_type_symbol() != nullptr;
  case tok_attribute: return true;
  case tok_lbracket:
    return std_attributes_enabled && C_dialect == 2 && next_token() == tok_lbracket;
  case tok_static_assert:
  case tok_using:
  case tok_namespace:
  case tok_template:
  case tok_export: return !(options & dst_parameter);
  default: return is_type_keyword() || is_storage_or_function_keyword();
  }
}

//---------------------------------------------------------------------------------------------
// Declaration or expression (C++): a trial that reads the tokens and puts them back.

struct a_trial {
  bool is_expression : 1;  // settled
  bool is_declaration : 1; // settled
};

static void trial_skip_balanced()
{
  flush_until_matching_token();
  if (curr_token == tok_rparen || curr_token == tok_rbracket || curr_token == tok_rbrace)
    get_token();
}

static bool trial_is_at_pointer_operator()
{
  if (curr_token == tok_identifier || curr_token == tok_colon_colon)
    f_is_generalized_identifier_start(gid_no_diagnostics, nullptr);
  return curr_token == tok_star || curr_token == tok_ampersand || curr_token == tok_and_and ||
         curr_token == tok_ptr_to_member;
}

static void trial_declarator(a_trial *trial, int depth);

// Behind the `(` of what may be a parameter list.
static void trial_paren(a_trial *trial, bool name_seen, int depth)
{
  get_token();
  bool ellipsis_end = curr_token == tok_ellipsis;
  bool is_pointer = trial_is_at_pointer_operator();
  if (!is_pointer && (curr_token == tok_rparen || ellipsis_end || is_decl_start(dst_parameter))) {
    // A parameter list; its content is balanced tokens.
    int level = 1;
    while (curr_token != tok_end_of_source && curr_token != tok_semicolon) {
      if (curr_token == tok_lparen) ++level;
      if (curr_token == tok_rparen && --level == 0) break;
      get_token();
    }
    if (curr_token == tok_rparen) get_token();
    while (curr_token == tok_const || curr_token == tok_volatile)
      get_token();
    return;
  }
  if (name_seen) {
    trial->is_expression = true;
    return;
  }
  trial_declarator(trial, depth + 1);
  if (trial->is_expression) return;
  if (curr_token != tok_rparen) {
    trial->is_expression = true;
    return;
  }
  get_token();
}

static void trial_declarator(a_trial *trial, int depth)
{
  if (depth > 200) {
    trial->is_expression = true;
    return;
  }
  while (trial_is_at_pointer_operator() || curr_token == tok_const || curr_token == tok_volatile)
    get_token();
  bool name_seen = false;
  if (curr_token == tok_identifier && curr_type_symbol() == nullptr) {
    name_seen = true;
    get_token();
  } else if (curr_token == tok_lparen) {
    trial_paren(trial, false, depth);
    name_seen = true;
  }
  while (!trial->is_expression) {
    if (curr_token == tok_lbracket) {
      trial_skip_balanced();
    } else if (curr_token == tok_lparen) {
      trial_paren(trial, name_seen, depth);
    } else {
      return;
    }
  }
}

static bool trial_end_token_fits(uint32_t options)
{
  if ((options & dst_parenthesized_type) && (options & dst_parameter)) {
    return curr_token == tok_rparen;
  }
  if (options & dst_template_argument) return curr_token == tok_comma || curr_token == tok_gt;
  if (options & (dst_cast | dst_parenthesized_type)) return curr_token == tok_rparen;
  return curr_token == tok_semicolon || curr_token == tok_comma || curr_token == tok_assign ||
         curr_token == tok_lbrace || curr_token == tok_colon;
}

static bool declaration_by_trial(uint32_t options)
{
  a_trial trial = {};
  push_lexical_state_stack();
  begin_caching_fetched_tokens(false);
  bool saved = top_scope()->suppress_references;
  top_scope()->suppress_references = true;
  while (is_type_keyword() || is_storage_or_function_keyword())
    get_token();
  if (curr_type_symbol() != nullptr) get_token();
  trial_declarator(&trial, 0);
  bool result = !trial.is_expression && trial_end_token_fits(options);
  top_scope()->suppress_references = saved;
  end_caching_fetched_tokens();
  a_token_cache cache = curr_lexical_state_stack_entry->cache;
  clear_token_cache(&curr_lexical_state_stack_entry->cache, false);
  pop_lexical_state_stack();
  f_rescan_cached_tokens(&cache, true);
  return result;
}

bool is_decl_not_expr(uint32_t options)
{
  if (C_dialect != 2) {
    return options & (dst_cast | dst_parenthesized_type) ? is_type_start(options)
                                                         : is_decl_start(options);
  }
  if (!is_decl_start(options)) return curr_token == tok_overload;
  if (curr_token == tok_auto) return true;
  if (curr_token != tok_typename && (next_token() != tok_lparen || !is_type_start(1))) return true;
  return declaration_by_trial(options);
}

bool prescan_and_find_declarator(a_token_cache *cache, bool *flag)
{
  *flag = false;
  rescan_reusable_cache(cache);
  bool found = false;
  while (curr_token != tok_end_of_source) {
    if (curr_token == tok_identifier && locator_for_curr_id.is_qualified) {
      found = true;
      *flag = locator_for_curr_id.qualifier_is_class;
    }
    get_token();
  }
  get_token();
  return found;
}

//---------------------------------------------------------------------------------------------
// Type names.

void check_type_definition_in_type_name(a_decl_parse_state *state)
{
  if (C_dialect != 2 || !(state->specifier_flags & sf_defines_type)) return;
  pos_error(ec_type_definition_not_allowed, state->start_position);
}

static void type_name_with_options(a_decl_parse_state *state, uint32_t declarator_options)
{
  state->start_position = pos_curr_token;
  decl_specifiers(dso_type_ok | dso_class_def_ok, state, nullptr);
  if (!(state->specifier_flags & sf_has_type_specifier) && !state->type_qualifiers) {
    if (!state->bad_declaration) syntax_error(ec_exp_type_specifier);
    state->bad_declaration = true;
    state->declared_type = state->bottom_type = state->type_specifier = error_type();
    return;
  }
  if (!(state->specifier_flags & sf_has_type_specifier)) {
    report_missing_type_specifier(&state->start_position, &state->type_specifier, false, false,
                                  false, true);
    state->bottom_type = f_make_qualified_type(state->type_specifier, state->type_qualifiers, -1);
  }
  a_symbol_locator locator;
  declarator(declarator_options, state, nullptr, &locator, nullptr, nullptr);
  f_check_pending_qualifiers_used(state);
  if (state->auto_type_pending) check_use_of_auto_type(state);
}

void type_name_full(a_decl_parse_state *state)
{
  type_name_with_options(state, dop_abstract_ok | dop_type_name | dop_vla_ok);
}

void type_name(a_type **type)
{
  a_decl_parse_state state = null_decl_parse_state;
  type_name_full(&state);
  check_type_definition_in_type_name(&state);
  *type = state.declared_type;
}

void new_type_name(a_decl_parse_state *state, bool)
{
  type_name_with_options(state, dop_abstract_ok | dop_type_name | dop_no_function |
                                    dop_nonconstant_first_bound);
}

a_type *scan_type_for_sizeof(bool)
{
  a_decl_parse_state state = null_decl_parse_state;
  type_name_full(&state);
  check_type_definition_in_type_name(&state);
  return state.declared_type;
}

a_type *scan_type_for_cast(bool, bool *defines_type, bool *is_class_definition)
{
  a_decl_parse_state state = null_decl_parse_state;
  type_name_full(&state);
  bool defines = state.specifier_flags & sf_defines_type;
  if (defines_type) *defines_type = defines;
  if (is_class_definition) {
    *is_class_definition = defines && is_class_struct_union_type(state.type_specifier);
  }
  return state.declared_type;
}

a_type *scan_template_type_argument()
{
  a_type *type = nullptr;
  type_name(&type);
  return type;
}

a_type *simple_type_specifier_sequence()
{
  a_decl_parse_state state = null_decl_parse_state;
  state.start_position = pos_curr_token;
  decl_specifiers(dso_type_ok, &state, nullptr);
  return state.type_specifier;
}

void scan_conversion_operator(a_source_position *position, bool, a_type *, a_type **type)
{
  a_decl_parse_state state = null_decl_parse_state;
  *position = pos_curr_token;
  type_name_with_options(&state, dop_abstract_ok | dop_type_name | dop_no_array_or_function);
  *type = state.declared_type;
}

//---------------------------------------------------------------------------------------------
// Checks of types in declarations.

// C89 takes int for a missing type; later modes report it.
bool report_missing_type_specifier(a_source_position *position, a_type **type, bool is_function,
                                   bool is_parameter, bool is_member, bool report)
{
  *type = integer_type(ik_int);
  if (check_misra_c_2004 && report) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_2, *position);
  }
  if (C_dialect == 1) return true;
  if (C_dialect == 2) {
    bool allowed = allow_anachronisms || cfront_2_1_mode || cfront_3_0_mode;
    if (report) {
      pos_diagnostic(allowed || (gpp_mode && is_function) ? es_warning : es_error,
                     allowed ? ec_nonstd_implicit_int : ec_missing_type_specifier, *position);
    }
    return allowed;
  }
  if (!report) return true;
  an_error_severity severity = es_remark;
  if (c99_mode) severity = strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning;
  if (is_member && severity == es_remark) severity = es_warning;
  pos_diagnostic(severity, ec_missing_type_specifier, *position);
  (void)is_parameter;
  return true;
}

// C99 6.7.5.3p7 and p8.  The brackets' qualifiers go to the pointer.
void check_and_adjust_parameter_type(a_type **type, a_source_position *position)
{
  a_type *stripped = skip_typerefs(*type);
  if (stripped->kind == tk_array) {
    unsigned qualifiers = as_array(stripped).qualifiers;
    a_type *pointer = make_pointer_type(array_element_type(*type));
    *type = qualifiers ? f_make_qualified_type(pointer, qualifiers, -1) : pointer;
  } else if (stripped->kind == tk_routine) {
    *type = make_pointer_type(*type);
  } else if (stripped->kind == tk_void) {
    pos_error(ec_incomplete_type_not_allowed, *position);
    *type = error_type();
  }
}

void check_use_of_auto_type(a_decl_parse_state *state)
{
  if (!state->auto_type_pending) return;
  pos_error(ec_auto_not_allowed_here, state->auto_position);
  state->auto_type_pending = false;
  state->declared_type = error_type();
}

void check_deduced_auto_type(a_decl_parse_state *state)
{
  if (!state->auto_type_pending || state->has_initializer) return;
  pos_error(ec_auto_type_requires_initializer, state->declarator_range.start);
  state->auto_type_pending = false;
  state->declared_type = error_type();
}

void f_check_pending_qualifiers_used(a_decl_parse_state *state)
{
  if (!state->has_pending_qualifiers) return;
  pos_warning(ec_useless_type_qualifiers_in_type_name, state->const_position);
  state->has_pending_qualifiers = false;
  state->type_qualifiers = 0;
}
