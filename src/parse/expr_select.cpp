// expr_select.cpp - subscripts, members of objects, offsetof.
// Entry:   scan_subscript, scan_field_selection, select_member, scan_offsetof_operator.
// See:     C99 6.5.2.1, 6.5.2.3, 7.17.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/decls.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// []

void scan_subscript(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_operand index;
  bool forbidden = expr_stack->expression_kind == ek_preprocessing ||
                   expr_stack->expression_kind == ek_integral_constant;
  get_token();
  ++expr_stack->paren_depth;
  add_stop_token(tok_rbracket);
  scan_expression(&index, nullptr, prec_lowest, 0);
  remove_stop_token(tok_rbracket);
  --expr_stack->paren_depth;
  a_source_position end = end_pos_curr_token;
  required_token(tok_rbracket, ec_exp_rbracket);
  if (forbidden) {
    if (left->kind != ok_error) expr_pos_error(not_allowed_in_constant_code(), pos);
    make_error_operand(result);
    return;
  }
  if (C_dialect == 2 && do_overloaded_operator_by_name(onk_subscript, &pos, left, &index, result))
    return;
  do_operand_transformations(left, 0);
  do_operand_transformations(&index, 0);
  a_source_position start = left->position;
  an_operand *pointer = left, *number = &index;
  if (index.kind != ok_error && is_pointer_type(index.type) && left->kind != ok_error &&
      !is_pointer_type(left->type)) {
    pointer = &index;
    number = left;
  }
  bool pointer_ok = check_object_pointer_operand(pointer);
  bool number_ok = check_integral_or_enum_operand(number);
  if (!pointer_ok || !number_ok) {
    change_operand_refs_to_error(left);
    change_operand_refs_to_error(&index);
    make_error_operand(result);
    return;
  }
  promote_operand(number);
  unsigned ruled_out = pointer->ruled_out_expr_kinds | number->ruled_out_expr_kinds;
  a_type *element = type_pointed_to(pointer->type);
  an_expr_node *pointer_node = make_node_from_operand(pointer);
  pointer_node->next = make_node_from_operand(number);
  an_expr_node *node = make_lvalue_operator_node(eok_subscript, element, pointer_node);
  node->operator_position = pos;
  make_lvalue_expression_operand(node, result);
  result->position = start;
  result->end_position = end;
  node->expr_range.start = start;
  node->expr_range.end = end;
  result->ruled_out_expr_kinds = (unsigned char)ruled_out;
  rule_out_expr_kinds(rule_out_integral_constant, result);
  check_pointer_range(result, false);
}

// -------------------------------------------------------------------------------------------------
// . and ->

// A member of an anonymous struct or union is reached through the unnamed member that holds it.
void select_member(a_symbol *symbol, an_operand *object, bool is_arrow, a_source_position *pos,
                   an_operand *result)
{
  a_symbol *parent = symbol->variant.field.anonymous_parent;
  if (parent != nullptr) {
    an_operand holder;
    select_member(parent, object, is_arrow, pos, &holder);
    make_field_operand(field_of_symbol(symbol), &holder, false, pos, result);
    return;
  }
  if (C_dialect == 2) {
    a_source_correspondence *corresp = &field_of_symbol(symbol)->source_corresp;
    step_object_to_class(object, is_arrow, parent_class_of(corresp));
  }
  make_field_operand(field_of_symbol(symbol), object, is_arrow, pos, result);
}

static void report_unknown_member(a_type *class_type, a_symbol_locator *locator,
                                  a_source_position pos)
{
  a_symbol *class_symbol = skip_typerefs(class_type)->source_corresp.assoc_symbol;
  const char *name = locator->header->identifier;
  if (!expr_error_should_be_issued()) return;
  if (class_symbol != nullptr) {
    pos_stsy_error(ec_not_a_field, pos, name, class_symbol);
  } else {
    pos_st_error(ec_not_a_field_name, pos, name);
  }
}

// Old C: any structure's member name may stand behind any object, as long as all of that name
// agree.
static a_symbol *field_of_any_class(a_symbol_locator *locator, a_symbol **other)
{
  a_symbol *found = nullptr;
  *other = nullptr;
  a_symbol *chains[] = {locator->header->active_symbols, locator->header->inactive_symbols};
  for (a_symbol *symbol : chains) {
    for (; symbol != nullptr; symbol = symbol->next_same_name) {
      if (symbol->kind != sk_field || symbol == found) continue;
      if (found != nullptr && field_of_symbol(found)->offset != field_of_symbol(symbol)->offset)
        *other = symbol;
      if (found == nullptr) found = symbol;
    }
  }
  return found;
}

static void report_bad_object(an_operand *object, bool is_arrow)
{
  if (object->kind == ok_error || is_error_type(object->type)) return;
  if (!is_arrow) {
    expr_pos_error(ec_expr_not_class, object->position);
  } else {
    expr_pos_error(is_pointer_type(object->type) ? ec_expr_not_ptr_to_class : ec_expr_not_pointer,
                   object->position);
  }
}

// The object as if it were of the class of the field that the name happens to be of.
static void scan_old_fashioned_selection(an_operand *object, bool is_arrow,
                                         a_symbol_locator *locator, a_source_position *pos,
                                         an_operand *result)
{
  a_symbol *other;
  a_symbol *symbol = field_of_any_class(locator, &other);
  if (symbol == nullptr || (!is_arrow && !is_lvalue_operand(object))) {
    if (object->kind != ok_error)
      expr_pos_st_diagnostic(es_error, ec_not_a_field_name, *pos, locator->header->identifier);
    make_error_operand(result);
    return;
  }
  if (other != nullptr) {
    if (expr_error_should_be_issued()) pos_sy2_error(ec_pcc_field_ambiguity, *pos, symbol, other);
    make_error_operand(result);
    return;
  }
  expr_pos_warning(
      is_arrow ? ec_old_fashioned_ptr_field_selection : ec_old_fashioned_field_selection, *pos);
  a_type *pointer = make_pointer_type(parent_class_of(&field_of_symbol(symbol)->source_corresp));
  if (!is_arrow) {
    an_operand saved = *object;
    change_ref_kinds(object->ref_entries, rk_address_taken);
    make_expression_operand(add_address_of_to_node(make_node_from_operand(object)), object);
    restore_operand_details(object, &saved);
  }
  cast_operand(pointer, object, false);
  record_symbol_reference(rk_plain, symbol, pos, expr_stack->code_is_generated);
  select_member(symbol, object, true, pos, result);
}

// The class whose members may be named, or null.
static a_type *class_of_object(an_operand *object, bool is_arrow)
{
  if (object->kind == ok_error) return nullptr;
  a_type *type = object->type;
  if (is_arrow) {
    if (!is_pointer_type(type)) return nullptr;
    type = type_pointed_to(type);
  }
  return is_class_struct_union_type(type) ? type : nullptr;
}

static bool check_complete_class(a_type *class_type, an_operand *object, bool is_arrow)
{
  if (!is_incomplete_type(class_type)) return true;
  if (is_arrow) {
    expr_pos_error(ec_ptr_to_incomplete_class_type_not_allowed, object->position);
  } else {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, object->position, class_type);
  }
  return false;
}

static void scan_member_of(an_operand *object, bool is_arrow, a_symbol_locator *locator,
                           a_source_position *pos, an_operand *result)
{
  a_type *class_type = class_of_object(object, is_arrow);
  if (class_type == nullptr) {
    bool scalar = object->kind != ok_error && is_scalar_type(object->type);
    if (C_dialect == 1 && scalar) {
      scan_old_fashioned_selection(object, is_arrow, locator, pos, result);
      return;
    }
    report_bad_object(object, is_arrow);
    make_error_operand(result);
    return;
  }
  if (!check_complete_class(class_type, object, is_arrow)) {
    make_error_operand(result);
    return;
  }
  a_symbol *symbol = class_qualified_id_lookup(locator, skip_typerefs(class_type), lo_none);
  if (symbol == nullptr || symbol->kind != sk_field) {
    report_unknown_member(class_type, locator, *pos);
    make_error_operand(result);
    return;
  }
  if (C_dialect == 2) {
    bool failed = false;
    f_check_ambiguity_and_verify_access(locator, false, class_type, &failed);
  }
  record_symbol_reference(rk_plain, symbol, pos, expr_stack->code_is_generated);
  select_member(symbol, object, is_arrow, pos, result);
}

void scan_field_selection(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  if (C_dialect == 2) {
    scan_class_field_selection(left, result);
    return;
  }
  bool is_arrow = curr_token == tok_arrow;
  a_source_position op_pos = pos_curr_token;
  bool forbidden = expr_stack->expression_kind == ek_preprocessing ||
                   expr_stack->expression_kind == ek_integral_constant;
  if (is_arrow)
    do_operand_transformations(left, 0);
  else
    do_operand_transformations(left, ot_keep_lvalues | ot_keep_arrays);
  get_token();
  if (curr_token != tok_identifier) {
    syntax_error(ec_exp_identifier);
    change_operand_refs_to_error(left);
    make_error_operand(result);
    return;
  }
  a_symbol_locator locator = locator_for_curr_id;
  a_source_position pos = pos_curr_token, end = end_pos_curr_token, start = left->position;
  if (forbidden) {
    if (left->kind != ok_error) expr_pos_error(not_allowed_in_constant_code(), op_pos);
    make_error_operand(result);
  } else {
    scan_member_of(left, is_arrow, &locator, &pos, result);
  }
  if (result->kind == ok_error) change_operand_refs_to_error(left);
  if (result->kind == ok_expression) {
    result->value.expr->operator_position = op_pos;
    result->ruled_out_expr_kinds = left->ruled_out_expr_kinds;
  }
  result->position = start;
  result->end_position = end;
  get_token();
}

// -------------------------------------------------------------------------------------------------
// __builtin_offsetof(type, member-designator)

// The designator's start: a member of the type, on an object at address zero.
static bool start_offsetof_designator(a_type *type, an_operand *result)
{
  a_symbol_locator locator = locator_for_curr_id;
  a_source_position pos = pos_curr_token;
  if (curr_token != tok_identifier) {
    syntax_error(ec_exp_identifier);
    return false;
  }
  a_constant zero;
  make_zero_of_proper_type(make_pointer_type(type), &zero);
  an_operand object;
  make_expression_operand(alloc_node_for_constant(&zero), &object);
  an_operand lvalue;
  make_lvalue_expression_operand(add_indirection_to_node(make_node_from_operand(&object)), &lvalue);
  lvalue.position = pos;
  scan_member_of(&lvalue, false, &locator, &pos, result);
  result->position = pos;
  get_token();
  return result->kind != ok_error;
}

static bool check_offsetof_member(an_operand *operand)
{
  an_expr_node *node = operand->value.expr;
  if (is_operation(node, eok_dot_field) && field_of(second_operand_of(node))->is_bit_field) {
    expr_pos_error(ec_offsetof_bit_field, operand->position);
    return false;
  }
  return true;
}

static void scan_offsetof_designator(an_operand *operand)
{
  while (operand->kind != ok_error && (curr_token == tok_period || curr_token == tok_lbracket)) {
    an_operand left = *operand;
    if (curr_token == tok_period) {
      scan_field_selection(&left, nullptr, operand);
    } else {
      scan_subscript(&left, nullptr, operand);
    }
  }
}

// The designator's address is the offset: a constant, or, GNU, an expression when an index is none.
static void make_offset_operand(an_operand *designator, an_operand *result)
{
  an_expr_node *node = make_node_from_operand(designator);
  a_constant address;
  bool is_dependent = false;
  if (offset_overflows(node)) {
    expr_pos_error(ec_integer_overflow_internal, designator->position);
    make_error_operand(result);
    return;
  }
  if (constant_lvalue_address(node, &address, false, &is_dependent) && address.kind == ck_integer) {
    an_operand operand;
    make_constant_operand(&address, &operand);
    cast_operand(size_t_type(), &operand, true);
    *result = operand;
    if (result->kind == ok_constant) {
      result->value.constant.expr = nullptr;
      result->value.constant.type = size_t_type();
    }
    return;
  }
  if (in_constant_context() && expr_stack->value_required) {
    expr_pos_error(ec_nonconstant_offsetof, designator->position);
    make_error_operand(result);
    return;
  }
  make_expression_operand(add_address_of_to_node(node), result);
  cast_operand(size_t_type(), result, true);
}

void scan_offsetof_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) {
    make_error_operand(result);
    return;
  }
  add_stop_token(tok_rparen);
  add_stop_token(tok_comma);
  a_type *type = nullptr;
  type_name(&type);
  remove_stop_token(tok_comma);
  an_operand designator;
  bool ok = required_token(tok_comma, ec_exp_comma);
  if (ok && !is_class_struct_union_type(type) && !is_error_type(type)) {
    expr_pos_error(ec_expr_not_class, pos);
    ok = false;
  }
  an_expr_stack_entry entry;
  push_expr_stack(ek_normal, &entry, false, true);
  ok = ok && !is_error_type(type) && start_offsetof_designator(type, &designator);
  if (ok) scan_offsetof_designator(&designator);
  pop_expr_stack();
  ok = ok && designator.kind == ok_expression && check_offsetof_member(&designator);
  if (ok) {
    make_offset_operand(&designator, result);
  } else {
    make_error_operand(result);
    flush_tokens_without_warning();
  }
  remove_stop_token(tok_rparen);
  result->position = pos;
  result->end_position = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
}
