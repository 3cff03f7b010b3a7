// expr_primary.cpp - first operands: names, literals, names of functions.
// Entry:   scan_primary, scan_identifier_expression.
// See:     C99 6.5.1.
#include <cstring>

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/literals.h"
#include "lex/token_cache.h"
#include "parse/expr_internal.h"
#include "lex/token_cache.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Literals

static void finish_literal()
{
  error_position = pos_curr_token;
  get_token();
}

// In #if what is not evaluated doesn't matter; an integral constant expression of the language
// holds nothing else
// even there.
static bool must_be_integral()
{
  if (expr_stack->expression_kind == ek_preprocessing) return expr_stack->value_required;
  return expr_stack->expression_kind == ek_integral_constant;
}

// A floating constant isn't integral, unless it is cast at once.
static bool floating_constant_allowed(unsigned flags, int min_precedence)
{
  if (expr_stack->expression_kind == ek_preprocessing) return !expr_stack->value_required;
  if (expr_stack->expression_kind != ek_integral_constant) return true;
  return (flags & se_float_cast_operand) != 0 && !token_binds_tighter(next_token(), min_precedence);
}

static void scan_floating_constant(an_operand *result, unsigned flags, int min_precedence)
{
  if (!floating_constant_allowed(flags, min_precedence)) {
    expr_pos_error(ec_expr_not_integral_constant, pos_curr_token);
    make_error_operand(result);
  } else {
    make_constant_operand(&const_for_curr_token, result);
    if ((flags & se_float_cast_operand) == 0)
      rule_out_expr_kinds(rule_out_integral_constant, result);
  }
  finish_literal();
}

static void scan_named_floating_constant(an_operand *result, unsigned flags, int min_precedence)
{
  if (!floating_constant_allowed(flags, min_precedence)) {
    expr_pos_error(ec_expr_not_integral_constant, pos_curr_token);
    make_error_operand(result);
  } else if (curr_token == tok_imaginary_unit) {
    make_imaginary_unit_operand(result);
  } else if (curr_token == tok_nan) {
    make_nan_operand(result);
  } else {
    make_infinity_operand(result);
  }
  rule_out_expr_kinds(rule_out_integral_constant, result);
  finish_literal();
}

static void scan_integer_constant(an_operand *result)
{
  make_constant_operand(&const_for_curr_token, result);
  finish_literal();
}

bool token_is_function_name(a_token_kind token)
{
  return token == tok_func_name || token == tok_function_name ||
         token == tok_pretty_function_name || token == tok_decorated_function_name;
}

void scan_string_literal(an_operand *result)
{
  a_token_kind next = next_token();
  if (next == tok_string_literal ||
      (token_is_function_name(next) && gcc_mode && gnu_version < 30400)) {
    concat_adjacent_string_literals(true);
  }
  if (must_be_integral()) {
    expr_pos_error(ec_expr_not_integral_constant, pos_curr_token);
    make_error_operand(result);
  } else {
    make_string_constant_operand(&const_for_curr_token, result);
    rule_out_expr_kinds(rule_out_integral_constant, result);
  }
  finish_literal();
}

// -------------------------------------------------------------------------------------------------
// __func__ and its kin

static const char *name_of_function_at_hand()
{
  a_routine *routine = curr_routine();
  return routine == nullptr ? "" : routine->source_corresp.name;
}

// A universal character in the name is the character that a string literal makes of it.  Returns the
// length, at most that of the name.
static size_t copy_name_as_text(const char *name, char *text)
{
  size_t length = 0;
  while (*name != '\0') {
    if (*name != '\\') {
      text[length++] = *name++;
      continue;
    }
    char *loc = (char *)name;
    unsigned long code_point = scan_universal_character(&loc, true, false, false);
    name = loc;
    if (gcc_mode || gpp_mode) {
      length += unicode_to_utf8(code_point, text + length);
    } else {
      text[length++] = (char)code_point;
    }
  }
  text[length++] = '\0';
  return length;
}

static void make_function_name_constant(a_constant *constant)
{
  const char *name = name_of_function_at_hand();
  size_t length = strlen(name) + 1;
  char *text = alloc_text_of_string_literal(length);
  if (il_header.canonical_ids_used) {
    length = copy_name_as_text(name, text);
  } else {
    memcpy(text, name, length);
  }
  clear_constant(constant, ck_string);
  string_of(constant).length = length;
  string_of(constant).text = text;
  constant->type = string_literal_type(chk_char, length);
}

// In old GNU modes all but __func__ are string literals.
static bool is_string_in_this_mode(a_token_kind token)
{
  return gcc_mode && gnu_version < 30400 && token != tok_func_name && token_is_function_name(token);
}

bool token_is_function_name_string_literal()
{
  if (!is_string_in_this_mode(curr_token)) return false;
  make_function_name_constant(&const_for_curr_token);
  curr_token = tok_string_literal;
  return true;
}

// One hidden array for each function and spelling, made on first use.
static struct {
  a_routine *routine;
  a_variable *slots[3];
} function_name_variables;

static a_variable *variable_of_function_name(a_token_kind token)
{
  a_routine *routine = curr_routine();
  if (function_name_variables.routine != routine) function_name_variables = {routine, {}};
  int slot = token == tok_pretty_function_name ? 1 : token == tok_decorated_function_name ? 2 : 0;
  a_variable *&variable = function_name_variables.slots[slot];
  if (variable != nullptr) return variable;
  int saved_region;
  a_constant name;
  switch_to_file_scope_region(&saved_region);
  make_function_name_constant(&name);
  a_type *element = f_make_qualified_type(integer_type(plain_char_int_kind), tq_const);
  a_type *type = make_array_type(element, string_of(&name).length);
  variable = make_variable(type, sc_static, true);
  name.type = type;
  variable->init_kind = initk_static;
  constant_initializer_of(variable) = alloc_unshared_constant_full(&name, true);
  variable->has_initializer = true;
  add_to_variables_list(variable, 0);
  set_variable_address_taken(variable);
  switch_back_to_original_region(saved_region);
  return variable;
}

static const char *spelling_of_function_name(a_token_kind token)
{
  switch (token) {
  case tok_func_name: return "__func__";
  case tok_function_name: return "__FUNCTION__";
  case tok_pretty_function_name: return "__PRETTY_FUNCTION__";
  default: return "__FUNCDNAME__";
  }
}

void scan_function_name_token(an_operand *result)
{
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token, end = end_pos_curr_token;
  bool in_function = curr_routine() != nullptr;
  if (in_function && must_be_integral()) {
    expr_pos_error(ec_expr_not_integral_constant, pos);
    make_error_operand(result);
  } else if (is_string_in_this_mode(token)) {
    token_is_function_name_string_literal();
    scan_string_literal(result);
    result->is_string_literal = false;
    return;
  } else if (in_function) {
    make_lvalue_variable_operand(variable_of_function_name(token), &pos, &end, result, nullptr);
  } else if (gcc_mode || gpp_mode) {
    a_constant name;
    make_function_name_constant(&name);
    make_string_constant_operand(&name, result);
    result->is_string_literal = false;
  } else {
    expr_pos_st_diagnostic(es_error, ec_id_can_only_appear_in_function, pos,
                           spelling_of_function_name(token));
    make_error_operand(result);
  }
  rule_out_expr_kinds(rule_out_integral_constant, result);
  finish_literal();
}

// -------------------------------------------------------------------------------------------------
// Names

// Nothing of that name: legal before "(" only, which the caller's loop decides.
static void make_operand_of_unknown_name(a_symbol_locator *locator, an_operand *result)
{
  if (in_constant_context() && expr_stack->value_required) {
    expr_pos_st_diagnostic(es_error, ec_undefined_identifier, pos_curr_token,
                           locator->header->identifier);
    enter_undefined_symbol(locator);
    make_error_operand(result);
    return;
  }
  a_symbol *symbol = alloc_symbol(sk_undefined, locator->header, pos_curr_token);
  make_undefined_symbol_operand(symbol, result);
}

// C99 6.7.4p3: an inline definition of a function with external linkage may not name what has
// internal linkage.
static void check_c99_inline_definition(a_symbol *symbol, a_storage_class storage_class)
{
  if (!std_c99_inlining || curr_routine() == nullptr || !expr_stack->code_is_generated) return;
  if (storage_class != sc_static || source_corresp_entry_for_symbol(symbol)->is_local) return;
  a_routine *routine = curr_routine();
  if (!routine->is_inline || routine->gnu_inline || routine->storage_class == sc_static) return;
  record_ref_within_inline_function(routine, symbol, &pos_curr_token, false);
}

static void make_operand_of_variable(a_symbol *symbol, an_operand *result)
{
  a_variable *variable = variable_of_symbol(symbol);
  if (variable == nullptr || is_error_type(variable->type)) {
    make_error_operand(result);
    return;
  }
  if (check_misra_c_2004) misra_hooks.note_use_of_variable(variable);
  if (c99_mode && !gcc_mode) check_c99_inline_definition(symbol, variable->storage_class);
  a_ref_entry *ref = ref_entry(symbol, pos_curr_token);
  make_lvalue_variable_operand(variable, &pos_curr_token, &end_pos_curr_token, result, ref);
  if (!is_integral_or_enum_type(variable->type))
    rule_out_expr_kinds(rule_out_integral_constant, result);
}

// A name of a function stands for its address without saying so, unless it is called.
static void check_routine_name_for_misra(unsigned flags)
{
  if ((flags & se_address_operand) == 0 && next_token() != tok_lparen)
    expr_pos_diagnostic(misra_required_severity, ec_misra_c_2004_16_9, pos_curr_token);
}

static void make_operand_of_routine(a_symbol *symbol, unsigned flags, an_operand *result)
{
  a_routine *routine = routine_of_symbol(symbol);
  bool foldable = is_gnu_builtin_function(routine) && is_foldable_gnu_builtin_function(routine);
  if (must_be_integral() && !foldable) {
    expr_pos_error(ec_expr_not_integral_constant, pos_curr_token);
    make_error_operand(result);
    return;
  }
  if (check_misra_c_2004) check_routine_name_for_misra(flags);
  check_c99_inline_definition(symbol, routine->storage_class);
  a_ref_entry *ref = ref_entry(symbol, pos_curr_token);
  make_function_designator_operand(symbol, &pos_curr_token, &end_pos_curr_token, result, ref);
}

// A parameter named in a later declarator of its own list: void f(int n, int a[n]).
static void make_operand_of_parameter(a_symbol *symbol, an_operand *result)
{
  bool allowed = expr_stack->in_array_dimension || expr_stack->unevaluated;
  if (!allowed) {
    expr_pos_error(ec_param_not_allowed, pos_curr_token);
    make_error_operand(result);
    return;
  }
  record_symbol_reference(rk_plain, symbol, &pos_curr_token, expr_stack->code_is_generated);
  a_param_type *param = symbol->variant.param_type;
  an_expr_node *node = alloc_expr_node(enk_param_ref);
  node->type = param->type;
  param_ref_of(node).position = (int)param->number;
  make_lvalue_expression_operand(node, result);
  result->is_id_expression = true;
}

static void make_operand_of_symbol(a_symbol *symbol, const a_symbol_locator *locator,
                                   unsigned flags, an_operand *result)
{
  switch (symbol->kind) {
  case sk_constant:
    make_sym_constant_operand(symbol, &pos_curr_token, result);
    add_ref_entry_to_operand(ref_entry(symbol, pos_curr_token), result);
    break;
  case sk_variable:
  case sk_static_data_member: make_operand_of_variable(symbol, result); break;
  case sk_routine: make_operand_of_routine(symbol, flags, result); break;
  case sk_field: make_operand_of_member(symbol, locator, flags, result); break;
  case sk_member_function:
    if (routine_of_symbol(symbol)->is_static_member)
      make_operand_of_routine(symbol, flags, result);
    else
      make_operand_of_member(symbol, locator, flags, result);
    break;
  case sk_overloaded_function:
    if (symbol->is_class_member)
      make_operand_of_member(symbol, locator, flags, result);
    else
      make_indefinite_function_operand(symbol, result);
    break;
  case sk_function_template: make_indefinite_function_operand(symbol, result); break;
  case sk_parameter: make_operand_of_parameter(symbol, result); break;
  case sk_undefined: make_error_operand(result); break;
  case sk_namespace:
    expr_pos_error(ec_namespace_name_not_allowed, pos_curr_token);
    make_error_operand(result);
    break;
  case sk_type:
  case sk_class_or_struct_tag:
  case sk_union_tag:
  case sk_enum_tag:
    expr_pos_error(ec_type_identifier_not_allowed, pos_curr_token);
    make_error_operand(result);
    break;
  default:
    expr_pos_st_diagnostic(es_error, ec_undefined_identifier, pos_curr_token,
                           symbol->header->identifier);
    make_error_operand(result);
    break;
  }
}

// A name that stands for what the standard library calls so; one that isn't known is a function about to be called.
static void check_name_for_misra(const a_symbol_locator *locator, const a_symbol *symbol)
{
  unsigned kinds = ansi_c_function;
  if (symbol != nullptr) {
    bool is_routine = symbol->kind == sk_routine;
    bool is_variable = symbol->kind == sk_variable;
    kinds = is_routine ? ansi_c_function : is_variable ? ansi_c_object : ansi_c_none;
  }
  misra_hooks.check_for_invalid_identifier(locator->header->identifier, &pos_curr_token, kinds);
}

// A::x, or N::x, of which the class or namespace has none.
static void report_unknown_qualified_name(const a_symbol_locator *locator, an_operand *result)
{
  make_error_operand(result);
  if (locator->header == nullptr) return; // reported
  const char *name = locator->header->identifier;
  a_symbol *owner = nullptr;
  if (locator->qualifier_is_class)
    owner = skip_typerefs(locator->qualifier.class_type)->source_corresp.assoc_symbol;
  else if (locator->qualifier.name_space != nullptr)
    owner = locator->qualifier.name_space->source_corresp.assoc_symbol;
  if (owner == nullptr)
    expr_pos_st_diagnostic(es_error, ec_name_not_found_in_file_scope, pos_curr_token, name);
  else if (expr_error_should_be_issued())
    pos_stsy_error(ec_not_a_member, pos_curr_token, name, owner);
}

static bool check_access(a_symbol_locator *locator)
{
  if (C_dialect != 2) return true;
  bool failed = false;
  f_check_ambiguity_and_verify_access(locator, false, nullptr, &failed);
  return !failed;
}

void scan_identifier_expression(an_operand *result, unsigned flags)
{
  a_symbol_locator locator = locator_for_curr_id;
  a_source_position pos = pos_curr_token, end = end_pos_curr_token;
  a_symbol *symbol;
  if (C_dialect == 2) {
    bool error_found = false;
    symbol = coalesce_and_lookup_generalized_identifier(0, 0, &error_found);
    locator = locator_for_curr_id;
  } else {
    symbol = normal_id_lookup(&locator, lo_none);
  }
  if (check_misra_c_2004) check_name_for_misra(&locator, symbol);
  if (C_dialect == 2 && symbol != nullptr && is_type_symbol(symbol) && next_token() == tok_lparen) {
    get_token();
    scan_functional_cast(type_of_symbol(symbol), pos, result);
    return;
  }
  if (symbol == nullptr && (locator.qualifier_bits & qb_qualified) != 0) {
    report_unknown_qualified_name(&locator, result);
  } else if (symbol == nullptr) {
    make_operand_of_unknown_name(&locator, result);
  } else if (!check_access(&locator)) {
    make_error_operand(result);
  } else {
    make_operand_of_symbol(symbol, &locator, flags, result);
  }
  if (result->kind != ok_error) {
    result->is_id_expression = true;
    result->position = result->name_position = pos;
    result->end_position = end;
  }
  error_position = pos;
  curr_construct_end_position = end;
  get_token();
}

// -------------------------------------------------------------------------------------------------
// Dispatch

static void report_missing_expression(an_operand *result)
{
  error_position = pos_curr_token;
  if (expr_error_should_be_issued()) pos_error(ec_exp_primary_expr, pos_curr_token);
  make_error_operand(result);
  result->position = result->end_position = pos_curr_token;
  flush_tokens_without_warning();
}

static void scan_gnu_null(an_operand *result)
{
  an_integer_kind kind = targ_sizeof_pointer == targ_sizeof_int    ? ik_int
                         : targ_sizeof_pointer == targ_sizeof_long ? ik_long
                                                                   : ik_int;
  make_integer_constant_operand(0, integer_type(kind), result);
  result->value.constant.is_gnu_null = true;
  finish_literal();
}

// GNU: the address of a label has no meaning for the code that is generated.
static void scan_label_address(an_operand *result)
{
  if (gcc_mode || gpp_mode)
    expr_pos_st_diagnostic(es_error, ec_not_supported, pos_curr_token, "GCC && operator");
  report_missing_expression(result);
}

// C++: int(x).
static bool scan_functional_cast_of_keyword(an_operand *result)
{
  a_type *type = type_of_functional_cast_keyword();
  if (type == nullptr) return false;
  a_source_position pos = pos_curr_token;
  get_token();
  if (curr_token == tok_lparen) {
    scan_functional_cast(type, pos, result);
  } else {
    expr_pos_error(ec_type_identifier_not_allowed, pos);
    make_error_operand(result);
    result->position = result->end_position = pos;
  }
  return true;
}

void scan_primary(an_operand *result, an_operand *, int min_precedence, unsigned flags)
{
  error_position = pos_curr_token;
  switch (curr_token) {
  case tok_identifier: scan_identifier_expression(result, flags); return;
  case tok_int_constant:
  case tok_char_constant:
  case tok_true:
  case tok_false: scan_integer_constant(result); return;
  case tok_float_constant:
  case tok_fixed_point_constant: scan_floating_constant(result, flags, min_precedence); return;
  case tok_imaginary_unit:
  case tok_nan:
  case tok_infinity: scan_named_floating_constant(result, flags, min_precedence); return;
  case tok_string_literal: scan_string_literal(result); return;
  case tok_func_name:
  case tok_function_name:
  case tok_pretty_function_name:
  case tok_decorated_function_name: scan_function_name_token(result); return;
  case tok_lparen: scan_parenthesized_form(result, flags); return;
  case tok_plus_plus:
  case tok_minus_minus: scan_prefix_incr_decr(result); return;
  case tok_ampersand: scan_address_of_operator(result); return;
  case tok_star: scan_indirection_operator(result); return;
  case tok_plus:
  case tok_minus:
  case tok_compl:
  case tok_not: scan_prefix_operator(result); return;
  case tok_real:
  case tok_imag: scan_real_or_imag_operator(result); return;
  case tok_sizeof: scan_sizeof_operator(result); return;
  case tok_alignof: scan_alignof_operator(result); return;
  case tok_builtin_offsetof: scan_offsetof_operator(result); return;
  case tok_intaddr: scan_intaddr_operator(result); return;
  case tok_generic: scan_generic_operator(result); return;
  case tok_builtin_types_compatible_p: scan_types_compatible_operator(result); return;
  case tok_va_start:
  case tok_va_arg:
  case tok_va_end:
  case tok_va_copy: scan_va_operator(result); return;
  case tok_va_argref:
  case tok_va_parmadr:
  case tok_va_argcsu:
  case tok_segment_begin:
  case tok_segment_end:
  case tok_segment_size: scan_target_operator(result); return;
  case tok_static_cast:
  case tok_const_cast:
  case tok_dynamic_cast:
  case tok_reinterpret_cast: scan_keyword_cast(result); return;
  case tok_null: scan_gnu_null(result); return;
  case tok_and_and: scan_label_address(result); return;
  case tok_this: scan_this(result); return;
  case tok_throw: scan_throw_operator(result); return;
  case tok_new: scan_new_operator(result); return;
  case tok_delete: scan_delete_operator(result); return;
  case tok_operator: scan_identifier_expression(result, flags); return;
  case tok_colon_colon:
    if (C_dialect == 2 && next_token() == tok_new) {
      scan_new_operator(result);
      return;
    }
    if (C_dialect == 2 && next_token() == tok_delete) {
      scan_delete_operator(result);
      return;
    }
    if (C_dialect == 2 && expr_stack->expression_kind != ek_preprocessing) {
      scan_identifier_expression(result, flags);
      return;
    }
    if (expr_stack->expression_kind == ek_preprocessing)
      expr_pos_error(ec_bad_pp_operator, pos_curr_token);
    report_missing_expression(result);
    return;
  default:
    if (C_dialect == 2 && scan_functional_cast_of_keyword(result)) return;
    report_missing_expression(result);
    return;
  }
}
