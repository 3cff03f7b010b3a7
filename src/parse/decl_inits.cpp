// decl_inits.cpp - initializers of declared objects: values, strings, and where the result goes.
// Rule:    a value that is a constant of an object of static storage becomes the variable's
//          constant, everything
//          else a dynamic initialization with a statement at the place of the declaration.
// Entry:   initializer, scan_compound_literal_initializer, check_string_constant_initializer_full.
// See:     C99 6.7.8.
#include "parse/decl_inits.h"

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/literals.h"
#include "lex/token_cache.h"
#include "parse/decl_inits_internal.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/expr_class.h"
#include "parse/exprutil.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Values

void make_dynamic_element(an_expr_node *expr, a_type *type, an_init_walk *walk,
                          a_constant *constant)
{
  a_dynamic_init *init =
      C_dialect == 2 ? dynamic_init_from_expr(expr, type) : alloc_dynamic_init(dik_expression);
  if (init->kind == dik_expression) expr_of(init) = expr;
  clear_constant(constant, ck_dynamic_init);
  constant->type = type;
  dynamic_init_of(constant) = init;
  walk->some_dynamic = true;
}

static void scan_value(a_type *type, an_init_walk *walk, a_constant *constant)
{
  bool not_whole;
  an_expr_node *expr;
  scan_initializer_element(type, walk->constants_required, walk->is_static, false, &not_whole,
                           &expr, constant);
  if (expr != nullptr) make_dynamic_element(expr, type, walk, constant);
}

// Braces around a scalar are fine; more than one value in them isn't.
void scan_scalar_initializer(a_type *type, an_init_walk *walk, a_constant *constant)
{
  if (curr_token != tok_lbrace) {
    scan_value(type, walk, constant);
    return;
  }
  get_token();
  add_stop_token(tok_rbrace);
  add_stop_token(tok_comma);
  if (curr_token == tok_rbrace) {
    error_position = pos_curr_token;
    pos_error(ec_exp_primary_expr, pos_curr_token);
    set_error_constant(constant);
  } else {
    scan_scalar_initializer(type, walk, constant);
  }
  if (curr_token == tok_comma) {
    get_token();
    if (curr_token != tok_rbrace) {
      if (gcc_mode) {
        pos_warning(ec_excess_initializers_ignored, pos_curr_token);
      } else {
        pos_error(ec_too_many_initializer_values, pos_curr_token);
      }
      while (token_loop_continues(tok_rbrace)) {
        scan_and_discard_initializer_expression();
        if (!loop_token(tok_comma)) break;
      }
    }
  }
  remove_stop_token(tok_comma);
  remove_stop_token(tok_rbrace);
  required_token(tok_rbrace, ec_exp_rbrace);
}

// -------------------------------------------------------------------------------------------------
// Strings

bool token_ends_initializer(unsigned token)
{
  return token == tok_comma || token == tok_semicolon || token == tok_rbrace ||
         token == tok_rparen || token == tok_end_of_source;
}

static bool is_string_array(a_type *type)
{
  return is_char_array_type(type) || is_wchar_t_array_type(type) || is_char16_t_array_type(type) ||
         is_char32_t_array_type(type);
}

static a_char_kind char_kind_of_array(a_type *type, a_char_kind string_kind)
{
  if (is_char_array_type(type)) return chk_char;
  if (string_kind == chk_wchar_t && is_wchar_t_array_type(type)) return chk_wchar_t;
  if (string_kind == chk_char16_t && is_char16_t_array_type(type)) return chk_char16_t;
  if (string_kind == chk_char32_t && is_char32_t_array_type(type)) return chk_char32_t;
  return is_wchar_t_array_type(type) ? chk_wchar_t : chk_last;
}

// At "abc" (several in a row are one) that makes up the whole value.  In parentheses: GNU, and
// reported.
bool string_initializes_array(a_type *type, bool)
{
  if (!is_string_array(type)) return false;
  if (curr_token == tok_lparen && next_token() == tok_string_literal) return true;
  if (curr_token != tok_string_literal && !token_is_function_name_string_literal_hook())
    return false;
  a_token_kind next = next_token();
  if (next == tok_string_literal) {
    concat_adjacent_string_literals(true);
    next = next_token();
  }
  return token_ends_initializer(next);
}

// A type with the bound, and the element type and qualifiers of *type.
static void complete_with_bound(a_type **type, a_target_size count)
{
  a_type *complete = copy_type(skip_typerefs(*type));
  as_array(complete).bound.number_of_elements = count;
  as_array(complete).bound_is_zero = count == 0;
  complete->is_incomplete = false;
  complete->size = 0;
  set_array_type_size(complete, true);
  *type = complete;
}

bool check_string_constant_initializer_full(a_type **type, a_constant *constant, bool *out_too_long)
{
  a_type *array = skip_typerefs(*type);
  if (char_kind_of_array(*type, constant->char_kind) != constant->char_kind) return false;
  unsigned size = char_size_of_string(constant);
  a_target_size count = string_of(constant).length / size;
  if (is_incomplete_array_type(array)) {
    complete_with_bound(type, count);
    return true;
  }
  a_target_size bound = as_array(array).bound.number_of_elements;
  if (count <= bound) return true;
  bool only_null_is_cut = C_dialect != 2 && count == bound + 1;
  if (!only_null_is_cut) {
    if (out_too_long == nullptr) return false;
    *out_too_long = true;
  }
  string_of(constant).length = bound * size;
  constant->type = string_literal_type(constant->char_kind, bound);
  return true;
}

static void skip_parens_around_string(int *depth)
{
  *depth = 0;
  while (curr_token == tok_lparen) {
    if (strict_ansi_mode && *depth == 0) {
      pos_diagnostic(strict_ansi_discretionary_severity,
                     ec_nonstandard_parenthesized_string_initializer, pos_curr_token);
    }
    ++*depth;
    get_token();
  }
  if (curr_token == tok_string_literal && next_token() == tok_string_literal)
    concat_adjacent_string_literals(true);
}

void scan_string_initializer(a_type **type, an_init_walk *walk, a_constant *constant)
{
  int depth;
  bool too_long = false;
  skip_parens_around_string(&depth);
  a_source_position pos = pos_curr_token;
  *constant = const_for_curr_token;
  if (constant->kind != ck_string) {
    set_error_constant(constant);
  } else if (!check_string_constant_initializer_full(type, constant,
                                                     gcc_mode || gpp_mode ? &too_long : nullptr)) {
    pos_opt_ty2_error(ec_bad_initializer_type, pos, constant->type, *type);
    set_error_constant(constant);
    walk->error_seen = true;
  } else if (too_long) {
    pos_warning(ec_excess_characters_in_literal_ignored, pos);
  }
  get_token();
  while (depth-- > 0)
    required_token(tok_rparen, ec_exp_rparen);
}

// -------------------------------------------------------------------------------------------------
// Whole objects

// GNU: int a[] = (int[]){1, 2}; the literal's braces stand for the array's own.
static bool scan_array_from_literal(a_type **type, an_init_walk *walk, a_constant *constant)
{
  bool defines_type, is_class_definition;
  get_token();
  if (!is_decl_not_expr(dst_parenthesized_type | dst_cast)) return false;
  a_type *literal_type = scan_type_for_cast(false, &defines_type, &is_class_definition);
  if (!required_token(tok_rparen, ec_exp_rparen) || curr_token != tok_lbrace) return false;
  if (!f_types_are_compatible(literal_type, *type, tco_array_bounds | tco_ignore_top_qualifiers))
    return false;
  scan_object_initializer(&literal_type, walk, constant);
  if (is_incomplete_array_type(*type)) *type = literal_type;
  return true;
}

bool missing_braces_are_tolerated(a_source_position pos)
{
  if (C_dialect == 1) return true;
  an_error_severity severity = C_dialect == 2     ? es_error
                               : strict_ansi_mode ? strict_ansi_error_severity
                                                  : es_warning;
  pos_diagnostic(severity, ec_missing_initializer_list, pos);
  return severity < es_error;
}

// The value of an initializer: a constant, or (some_dynamic) a constant tree with values to
// evaluate.
static void scan_whole_initializer(a_type **type, an_init_walk *walk, a_constant *constant)
{
  bool aggregate = is_array_type(*type) || is_class_struct_union_type(*type);
  bool brace_missing =
      is_array_type(*type) && curr_token != tok_lbrace && !string_initializes_array(*type, false);
  if (aggregate && brace_missing) {
    a_source_position pos = pos_curr_token;
    if (curr_token == tok_lparen && gcc_mode && scan_array_from_literal(type, walk, constant))
      return;
    if (!missing_braces_are_tolerated(pos)) {
      scan_and_discard_initializer_expression();
      set_error_constant(constant);
      walk->error_seen = true;
      return;
    }
  }
  scan_object_initializer(type, walk, constant);
  walk->comma_taken = false;
}

void scan_compound_literal_initializer(a_type **type, bool is_static, a_constant *constant,
                                       a_dynamic_init **out_dynamic_init)
{
  an_init_walk walk = {};
  int saved_region = 0;
  walk.is_static = walk.constants_required = is_static;
  if (is_static) switch_to_file_scope_region(&saved_region);
  scan_whole_initializer(type, &walk, constant);
  switch_back_to_original_region(saved_region);
  curr_construct_end_position = pos_curr_token;
  if (walk.error_seen) set_error_constant(constant);
  if (!walk.some_dynamic || walk.error_seen) return;
  a_dynamic_init *init;
  if (constant->kind == ck_dynamic_init) {
    init = dynamic_init_of(constant);
  } else {
    init = alloc_dynamic_init(dik_constant_via_temp);
    constant_of(init) = alloc_unshared_constant(constant);
  }
  init->is_compound_literal = true;
  *out_dynamic_init = init;
}

// -------------------------------------------------------------------------------------------------
// Attaching

static bool is_static_object(a_variable *variable)
{
  return variable->storage_class != sc_auto && variable->storage_class != sc_register;
}

static void attach_static_initializer(a_variable *variable, a_constant *constant)
{
  variable->init_kind = initk_static;
  constant_initializer_of(variable) = C_dialect == 2 && in_function_scope()
                                          ? copy_constant_full(constant, true)
                                          : alloc_unshared_constant_full(constant, true);
}

// A value that isn't constant, or that an automatic object gets.
static a_dynamic_init *init_from_constant(a_constant *constant, bool some_dynamic)
{
  if (constant->kind == ck_dynamic_init) return dynamic_init_of(constant);
  a_dynamic_init *init = alloc_dynamic_init(some_dynamic ? dik_constant_via_temp : dik_constant);
  constant_of(init) = alloc_unshared_constant(constant);
  return init;
}

// The bound that the initializer gave is part of the type of every declaration of the object.
static void set_completed_type(a_symbol *symbol, a_variable *variable, a_type *type,
                               a_source_position *pos)
{
  if (type == variable->type) return;
  variable->type = type;
  a_symbol *external = find_external_symbol(symbol->header);
  if (external != nullptr && external->kind == sk_extern_variable &&
      variable->source_corresp.name_linkage == nlk_c) {
    reconcile_external_symbol_types(external, pos, type, es_error);
  }
}

// -------------------------------------------------------------------------------------------------
// The entry

// What may not have an initializer at all; the tokens are still read.
static bool check_may_be_initialized(a_decl_parse_state *state, a_variable *variable,
                                     a_source_position *pos)
{
  if (state->symbol == nullptr) return false;
  if (variable == nullptr) {
    pos_sy_error(ec_cannot_initialize, *pos, state->symbol);
    return false;
  }
  if (is_vla_type(variable->type) || is_function_type(variable->type)) {
    pos_sy_error(ec_cannot_initialize, *pos, state->symbol);
    return false;
  }
  // C99 6.7.8p5: by what this declaration says, whatever the file says of the object.
  bool is_extern = variable->storage_class == sc_extern || state->storage_class == sc_extern;
  bool block_extern = is_extern && in_function_scope() && !at_file_scope();
  if (block_extern) {
    pos_sy_error(ec_cannot_initialize, *pos, state->symbol);
    return false;
  }
  if (variable->init_kind != initk_none) {
    pos_sy_error(ec_already_initialized, *pos, state->symbol);
    return false;
  }
  if (is_error_type(variable->type)) return false;
  a_type *type = variable->type;
  bool completes = is_incomplete_array_type(type) && !is_incomplete_type(array_element_type(type));
  if (is_incomplete_type(type) && !completes) {
    pos_ty_error(ec_incomplete_type_not_allowed, *pos, type);
    variable->type = error_type();
    return false;
  }
  bool in_register = !variable->asm_name_is_text && is_static_object(variable);
  if ((gcc_mode || gpp_mode) && in_register) {
    pos_error(ec_register_mapped_variable_cannot_have_initializer, *pos);
    return false;
  }
  return true;
}

static a_variable *variable_to_initialize(a_decl_parse_state *state)
{
  a_symbol *symbol = state->symbol;
  if (symbol == nullptr) return nullptr;
  if (symbol->kind != sk_variable && symbol->kind != sk_static_data_member) return nullptr;
  return variable_of_symbol(symbol);
}

// C++: an object of a class takes one value, or the arguments of a constructor; lists are for aggregates.
static bool is_initialized_as_class_object(a_type *type, bool is_parenthesized)
{
  if (C_dialect != 2 || !is_class_struct_union_type(type)) return false;
  return is_parenthesized || curr_token != tok_lbrace;
}

static void initialize_class_object(a_variable *variable, bool is_parenthesized,
                                    const a_source_position *pos)
{
  an_init_lifetime lifetime;
  push_init_lifetime(&lifetime);
  a_dynamic_init *init = scan_class_initializer(variable->type, is_parenthesized, *pos);
  pop_init_lifetime(&lifetime, init, variable->type);
  variable->has_initializer = true;
  if (init != nullptr) record_dynamic_initialization(variable, init, pos);
}

// A value, or values in braces.  What an object of static storage duration gets in C is constant and
// belongs to the file scope; in C++ that shows when it was read.
static void initialize_with_values(a_decl_parse_state *state, a_variable *variable,
                                   a_source_position *pos)
{
  an_init_walk walk = {};
  a_constant constant;
  a_type *type = variable->type;
  int saved_region = 0;
  an_init_lifetime lifetime;
  push_init_lifetime(&lifetime);
  walk.is_static = is_static_object(variable);
  walk.constants_required = walk.is_static && C_dialect != 2;
  if (walk.constants_required) switch_to_file_scope_region(&saved_region);
  scan_whole_initializer(&type, &walk, &constant);
  set_completed_type(state->symbol, variable, type, pos);
  variable->has_initializer = true;
  if (walk.is_object_with_flexible_array) variable->has_flexible_array_init = true;
  if (walk.const_member_unset && !walk.error_seen) {
    if (C_dialect == 2)
      pos_sy_error(ec_var_with_uninitialized_member, *pos, state->symbol);
    else
      pos_sy_warning(ec_var_with_uninitialized_field, *pos, state->symbol);
  }
  // An object stays without a value after an error; nobody complains about that.
  if (constant.kind == ck_error) walk.error_seen = true;
  bool is_constant = walk.is_static && !walk.some_dynamic;
  if (is_constant && !walk.error_seen) attach_static_initializer(variable, &constant);
  switch_back_to_original_region(saved_region);
  a_dynamic_init *init = nullptr;
  if (!is_constant && !walk.error_seen) init = init_from_constant(&constant, walk.some_dynamic);
  if (init != nullptr && C_dialect == 2) note_destructor_of_elements(init, variable->type, pos);
  pop_init_lifetime(&lifetime, init, variable->type);
  if (init != nullptr) record_dynamic_initialization(variable, init, pos);
}

void initializer(a_decl_parse_state *state, a_source_position *pos, int, bool is_parenthesized,
                 a_source_position *end_pos, a_decl_pos_block *)
{
  a_variable *variable = variable_to_initialize(state);
  add_stop_token(tok_comma);
  add_stop_token(tok_semicolon);
  if (!check_may_be_initialized(state, variable, pos)) {
    scan_and_discard_initializer_expression();
  } else if (is_initialized_as_class_object(variable->type, is_parenthesized)) {
    initialize_class_object(variable, is_parenthesized, pos);
  } else {
    initialize_with_values(state, variable, pos);
  }
  remove_stop_token(tok_semicolon);
  remove_stop_token(tok_comma);
  if (is_parenthesized) required_token(tok_rparen, ec_exp_rparen);
  if (end_pos != nullptr) *end_pos = curr_construct_end_position;
}

// -------------------------------------------------------------------------------------------------
// Objects without initializer

void check_for_missing_initializer_full(a_symbol *symbol, a_type *type, bool)
{
  if (C_dialect != 2 || is_error_type(type)) return;
  if (is_any_reference_type(type)) {
    pos_sy_error(ec_missing_initializer_on_reference, symbol->position, symbol);
  } else if (is_const_qualified(type) &&
             !is_class_struct_union_type(underlying_array_element_type(type))) {
    pos_sy_error(ec_missing_initializer_on_const, symbol->position, symbol);
  }
}

// The form of one initialization for all elements of an array: one repeat, whatever the count.
void repeat_nonconstant_init(a_dynamic_init *dynamic_init, a_type *array_type, a_type *element_type,
                             a_dynamic_init **out_init, unsigned long long count)
{
  a_constant element, repeat, aggregate;
  clear_constant(&element, ck_dynamic_init);
  element.type = element_type;
  dynamic_init_of(&element) = dynamic_init;
  clear_constant(&repeat, ck_init_repeat);
  init_repeat_of(&repeat).repeated = alloc_unshared_constant(&element);
  init_repeat_of(&repeat).count = count;
  clear_constant(&aggregate, ck_aggregate);
  aggregate.type = array_type;
  add_to_aggregate(&aggregate, alloc_unshared_constant(&repeat));
  *out_init = alloc_dynamic_init(dik_constant_via_temp);
  constant_of(*out_init) = alloc_unshared_constant(&aggregate);
}
