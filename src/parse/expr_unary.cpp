// expr_unary.cpp - prefix and postfix operators with one operand.
// Entry:   scan_prefix_operator, scan_address_of_operator, scan_indirection_operator,
//          scan_prefix_incr_decr,
//          scan_postfix_incr_decr.
// See:     C99 6.5.2.4, 6.5.3.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// + - ~ !

static an_expr_operator_kind unary_operator_of_token(a_token_kind token, a_type *type)
{
  switch (token) {
  case tok_plus: return eok_plus;
  case tok_minus: return eok_negate;
  case tok_not: return eok_not;
  case tok_compl: return is_complex_type(type) ? eok_conj : eok_complement;
  default: return eok_none;
  }
}

static bool check_unary_operand(a_token_kind token, an_operand *operand)
{
  switch (token) {
  case tok_not: return check_scalar_operand(operand);
  case tok_compl:
    if (is_complex_type(operand->type) && (gcc_mode || gpp_mode)) return true; // GNU: conjugate
    return check_integral_or_enum_operand(operand);
  default: return check_arithmetic_or_enum_operand(operand);
  }
}

void scan_prefix_operator(an_operand *result)
{
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token;
  an_operand operand;
  get_token();
  scan_expression(&operand, nullptr, prec_unary, 0);
  if (C_dialect == 2 && do_overloaded_operator(token, &pos, &operand, nullptr, result)) return;
  do_operand_transformations(&operand, 0);
  if (!check_unary_operand(token, &operand)) {
    make_error_operand(result);
    return;
  }
  a_type *type;
  if (token == tok_not) {
    type = boolean_result_type();
  } else {
    promote_operand(&operand);
    if (operand.kind == ok_error) {
      make_error_operand(result);
      return;
    }
    type = rvalue_type(operand.type);
    if (C_dialect == 1 && is_real_floating_type(type) && float_kind_of_type(type) == fk_float) {
      type = float_type(fk_double);
      cast_operand(type, &operand, false);
    }
  }
  do_unary_operation(unary_operator_of_token(token, type), &operand, type, result, &pos, token);
}

// -------------------------------------------------------------------------------------------------
// __real, __imag

// The imaginary part of a real value: zero, behind what computing the value does.
static void make_zero_imaginary_part(an_operand *operand, an_operand *result)
{
  a_constant zero;
  make_zero_of_proper_type(rvalue_type(operand->type), &zero);
  an_operand value = *operand;
  make_constant_operand(&zero, result);
  if (value.kind != ok_expression) return;
  an_expr_node *effects = make_node_from_operand(&value);
  if (!node_has_side_effects(effects)) return;
  make_expression_operand(make_comma_node(effects, make_node_from_operand(result)), result);
}

void scan_real_or_imag_operator(an_operand *result)
{
  bool is_real = curr_token == tok_real;
  a_source_position pos = pos_curr_token;
  an_operand operand;
  get_token();
  scan_expression(&operand, nullptr, prec_unary, 0);
  bool is_lvalue =
      is_lvalue_operand(&operand) && is_complex_type(operand.type) && operand.kind == ok_expression;
  if (!is_lvalue) do_operand_transformations(&operand, 0);
  if (!check_arithmetic_or_enum_operand(&operand)) {
    make_error_operand(result);
    return;
  }
  if (!is_complex_type(operand.type)) { // a real value is its own real part
    if (is_real) {
      *result = operand;
      return;
    }
    make_zero_imaginary_part(&operand, result);
    return;
  }
  a_type *part = float_type(float_kind_of_type(operand.type));
  if (is_lvalue) {
    a_type_qualifier_set qualifiers = get_type_qualifiers(operand.type);
    an_operand saved = operand;
    an_expr_node *node =
        make_lvalue_operator_node(is_real ? eok_real : eok_imag,
                                  qualifiers != 0 ? f_make_qualified_type(part, qualifiers) : part,
                                  make_node_from_operand(&operand));
    make_lvalue_expression_operand(node, result);
    result->ref_entries = saved.ref_entries;
    result->last_ref_entry = saved.last_ref_entry;
    result->position = pos;
    result->end_position = saved.end_position;
    return;
  }
  do_unary_operation(is_real ? eok_real : eok_imag, &operand, part, result, &pos,
                     is_real ? tok_real : tok_imag);
}

// -------------------------------------------------------------------------------------------------
// &

static bool is_bit_field_selection(an_operand *operand)
{
  if (operand->kind != ok_expression) return false;
  an_expr_node *node = operand->value.expr;
  if (!is_operation(node, eok_dot_field) && !is_operation(node, eok_arrow_field)) return false;
  an_expr_node *field_node = second_operand_of(node);
  return field_node->kind == enk_field && field_of(field_node)->is_bit_field;
}

static bool check_address_operand(an_operand *operand)
{
  if (operand->kind == ok_error) return false;
  bool is_designator = operand->state == os_function_designator;
  if (!is_lvalue_operand(operand) && !is_designator) {
    revert_gcc_rvalue_to_lvalue_if_possible(operand, true);
    if (operand->kind == ok_error) return false;
  }
  if (!is_lvalue_operand(operand) && !is_designator) {
    expr_pos_error(ec_expr_not_an_lvalue_or_function_designator, operand->position);
    return false;
  }
  if (is_bit_field_selection(operand)) {
    expr_pos_error(ec_address_of_bit_field, operand->position);
    return false;
  }
  return true;
}

// &*p is p (C99 6.5.3.2p3), which matters where *p must not be evaluated.
static an_expr_node *address_node(an_expr_node *node)
{
  if (is_operation(node, eok_indirection)) {
    an_expr_node *pointer = first_operand_of(node);
    pointer->next = nullptr;
    return pointer;
  }
  return add_address_of_to_node(node);
}

static void make_address_operand(an_operand *operand, a_source_position *pos, an_operand *result)
{
  an_operand saved = *operand;
  a_type *type = make_pointer_type(operand->type);
  bool is_function = operand->state == os_function_designator;
  change_ref_kinds(operand->ref_entries, rk_address_taken);
  an_expr_node *node = make_node_from_operand(operand);
  a_constant address;
  bool is_dependent = false;
  bool fold = expr_stack->favor_constant_result || is_function;
  if (fold && constant_lvalue_address(node, &address, false, &is_dependent)) {
    address.type = type;
    address.expr = nullptr;
    make_constant_operand(&address, result);
  } else if (in_constant_context() && expr_stack->value_required) {
    expr_pos_error(ec_expr_not_constant, saved.position);
    make_error_operand(result);
    return;
  } else {
    an_expr_node *address_of_node = address_node(node);
    if (address_of_node->type != type && !identical_types(address_of_node->type, type)) {
      address_of_node = cast_node(address_of_node, type, true);
    }
    make_expression_operand(address_of_node, result);
    if (saved.ruled_out_expr_kinds == 0) result->ruled_out_expr_kinds = 0;
  }
  result->symbol = saved.symbol;
  result->position = *pos;
  result->end_position = saved.end_position;
  rule_out_expr_kinds(rule_out_integral_constant, result);
}

// &A::m; without the class, or in parentheses, an old form for functions.
static void make_address_of_member(an_operand *operand, a_source_position *pos, an_operand *result)
{
  bool is_standard = operand->suppress_virtual || operand->symbol->kind == sk_field;
  if (!is_standard || operand->parenthesized)
    expr_pos_diagnostic(strict_ansi_mode || gpp_mode ? strict_ansi_error_severity : es_warning,
                        ec_nonstd_member_function_address, operand->position);
  *result = *operand;
  make_ptr_to_member_constant_operand(result);
  result->position = *pos;
}

void scan_address_of_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_operand operand;
  get_token();
  scan_expression(&operand, nullptr, prec_unary, se_address_operand);
  if (expr_stack->expression_kind == ek_preprocessing) {
    expr_pos_error(ec_bad_pp_operator, pos);
    make_error_operand(result);
    return;
  }
  if (C_dialect == 2) {
    if (do_overloaded_operator(tok_ampersand, &pos, &operand, nullptr, result)) return;
    if (operand.kind == ok_indefinite_function) {
      *result = operand;
      result->pending_address_of = true;
      result->pending_address_of_id = operand.is_id_expression;
      result->address_position = pos;
      return;
    }
    if (operand.kind == ok_sym_for_member) {
      make_address_of_member(&operand, &pos, result);
      return;
    }
  }
  do_operand_transformations(&operand,
                             ot_keep_function_designators | ot_keep_arrays | ot_keep_lvalues);
  if (!check_address_operand(&operand)) {
    change_operand_refs_to_error(&operand);
    make_error_operand(result);
    return;
  }
  make_address_operand(&operand, &pos, result);
}

// -------------------------------------------------------------------------------------------------
// *

void scan_indirection_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_operand operand;
  get_token();
  scan_expression(&operand, nullptr, prec_unary, 0);
  if (expr_stack->expression_kind == ek_preprocessing ||
      expr_stack->expression_kind == ek_integral_constant) {
    if (operand.kind != ok_error) expr_pos_error(not_allowed_in_constant_code(), pos);
    make_error_operand(result);
    return;
  }
  if (C_dialect == 2 && do_overloaded_operator(tok_star, &pos, &operand, nullptr, result)) return;
  do_operand_transformations(&operand, 0);
  if (operand.kind != ok_error && !is_pointer_type(operand.type)) {
    expr_pos_error(ec_bad_indirection_operand, operand.position);
    conv_to_error_operand(&operand);
  }
  if (operand.kind == ok_error) {
    make_error_operand(result);
    return;
  }
  a_type *object = type_pointed_to(operand.type);
  if (is_void_type(object) && !(gcc_mode || gpp_mode) && strict_ansi_mode) {
    expr_pos_ty_diagnostic(strict_ansi_discretionary_severity, ec_incomplete_type_not_allowed,
                           operand.position, object);
  }
  an_operand saved = operand;
  an_expr_node *node = add_indirection_to_node(make_node_from_operand(&operand));
  node->operator_position = pos;
  make_lvalue_expression_operand(node, result);
  if (is_function_type(object)) result->state = os_function_designator;
  result->ruled_out_expr_kinds = saved.ruled_out_expr_kinds;
  rule_out_expr_kinds(rule_out_integral_constant, result);
  result->position = pos;
  result->end_position = saved.end_position;
  node->expr_range.start = pos;
  node->expr_range.end = saved.end_position;
}

// -------------------------------------------------------------------------------------------------
// ++ and --

static bool check_incr_decr_operand(an_operand *operand, bool is_decrement)
{
  if (operand->kind == ok_error) return false;
  eliminate_unusual_operand_kinds(operand);
  if (is_pointer_type(operand->type)) {
    if (!check_object_pointer_operand(operand)) return false;
  } else if (!check_arithmetic_or_enum_operand(operand)) {
    return false;
  }
  if (C_dialect == 2 && is_enum_type(operand->type) && !enum_type_is_integral) {
    expr_pos_error(ec_enum_type_not_allowed, operand->position);
    conv_to_error_operand(operand);
    return false;
  }
  if (C_dialect == 2 && is_decrement && is_bool_type(operand->type)) {
    expr_pos_error(ec_expr_not_arithmetic, operand->position);
    conv_to_error_operand(operand);
    return false;
  }
  return check_modifiable_lvalue_operand(operand);
}

static void finish_incr_decr(an_operand *operand, an_expr_operator_kind op, a_source_position *pos,
                             bool is_prefix, a_source_position end, an_operand *result)
{
  if (in_constant_context()) {
    if (operand->kind != ok_error) expr_pos_error(not_allowed_in_constant_code(), *pos);
    make_error_operand(result);
    return;
  }
  if (!check_incr_decr_operand(operand, op == eok_pre_decr || op == eok_post_decr)) {
    make_error_operand(result);
    return;
  }
  an_operand saved = *operand;
  modifying_lvalue(operand, true);
  an_expr_node *node =
      make_operator_node(op, rvalue_type(operand->type), make_node_from_operand(operand));
  node->operator_position = *pos;
  make_expression_operand(node, result);
  rule_out_expr_kinds(rule_out_any_constant, result);
  result->position = is_prefix ? *pos : saved.position;
  result->end_position = end;
  node->expr_range.start = result->position;
  node->expr_range.end = end;
}

void scan_prefix_incr_decr(an_operand *result)
{
  a_token_kind token = curr_token;
  an_expr_operator_kind op = token == tok_plus_plus ? eok_pre_incr : eok_pre_decr;
  a_source_position pos = pos_curr_token;
  an_operand operand;
  get_token();
  scan_expression(&operand, nullptr, prec_unary, 0);
  if (C_dialect == 2 && do_overloaded_operator(token, &pos, &operand, nullptr, result)) return;
  finish_incr_decr(&operand, op, &pos, true, operand.end_position, result);
}

void scan_postfix_incr_decr(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  an_expr_operator_kind op = curr_token == tok_plus_plus ? eok_post_incr : eok_post_decr;
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token, end = end_pos_curr_token;
  get_token();
  if (C_dialect == 2) {
    // The function is told from the prefix form by a second operand, which is 0.
    an_operand zero;
    make_integer_constant_operand(0, integer_type(ik_int), &zero);
    if (do_overloaded_operator(token, &pos, left, &zero, result)) return;
  }
  finish_incr_decr(left, op, &pos, false, end, result);
}
