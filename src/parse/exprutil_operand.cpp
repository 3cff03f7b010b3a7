// exprutil_operand.cpp - operands: making them, their details, and turning them into IL.
// Rule:    an error operand is silent: whoever makes one has reported; every operation on it yields
//          another.
// Entry:   make_*_operand, make_node_from_operand, restore_operand_details, conv_to_error_operand.
#include <cstring>

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "mem/mem_manage.h"
#include "parse/exprutil.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Clearing and kinds

void set_operand_kind(an_operand *operand, an_operand_kind kind)
{
  operand->kind = kind;
  operand->symbol = nullptr;
  if (kind == ok_constant) {
    clear_constant(&operand->value.constant, ck_error);
  } else {
    operand->value.expr = nullptr;
  }
}

// The constant at the end is as large as the rest together, so it is left as it is unless the kind
// asks.
void clear_operand(an_operand_kind kind, an_operand *operand)
{
  memset((void *)operand, 0, offsetof(an_operand, value));
  set_operand_kind(operand, kind);
}

// The value is the caller's: a constant is large, and clearing it before it is copied would be
// waste.
static void start_operand_without_value(an_operand_kind kind, a_type *type, an_operand_state state,
                                        an_operand *operand)
{
  memset((void *)operand, 0, offsetof(an_operand, value));
  operand->kind = kind;
  operand->type = type;
  operand->state = state;
  operand->position = pos_curr_token;
  operand->end_position = end_pos_curr_token;
}

static void start_operand(an_operand_kind kind, a_type *type, an_operand_state state,
                          an_operand *operand)
{
  start_operand_without_value(kind, type, state, operand);
  set_operand_kind(operand, kind);
}

void make_error_operand(an_operand *operand)
{
  start_operand(ok_error, error_type(), os_none, operand);
  operand->position = operand->end_position = error_position;
}

void error_and_make_error_operand(an_error_code code, an_operand *operand)
{
  expr_pos_error(code, error_position);
  make_error_operand(operand);
}

// -------------------------------------------------------------------------------------------------
// Expressions

static void make_expr_operand_of_state(an_expr_node *node, an_operand_state state,
                                       an_operand *operand)
{
  if (node->kind == enk_error) {
    make_error_operand(operand);
    return;
  }
  start_operand(ok_expression, node->type, state, operand);
  operand->value.expr = node;
  operand->ruled_out_expr_kinds = rule_out_integral_constant | rule_out_any_constant;
}

void make_expression_operand(an_expr_node *node, an_operand *operand)
{
  make_expr_operand_of_state(node, os_rvalue, operand);
}

void make_lvalue_expression_operand(an_expr_node *node, an_operand *operand)
{
  node->is_lvalue = true;
  make_expr_operand_of_state(node, os_lvalue, operand);
  if (is_function_type(node->type) && operand->kind == ok_expression)
    operand->state = os_function_designator;
}

void make_lhsref_expression_operand(an_expr_node *node, an_operand *operand)
{
  node->is_lvalue = true;
  make_expr_operand_of_state(node, os_lhsref, operand);
}

void make_lvalue_or_rvalue_expression_operand(an_expr_node *node, an_operand *operand)
{
  if (node->is_lvalue)
    make_lvalue_expression_operand(node, operand);
  else
    make_expression_operand(node, operand);
}

void make_lvalue_variable_operand(a_variable *variable, a_source_position *pos,
                                  a_source_position *end_pos, an_operand *operand, a_ref_entry *ref)
{
  an_expr_node *node = var_lvalue_expr(variable);
  node->expr_range.start = *pos;
  node->expr_range.end = *end_pos;
  make_lvalue_expression_operand(node, operand);
  operand->position = operand->name_position = *pos;
  operand->end_position = *end_pos;
  operand->ruled_out_expr_kinds = 0;
  operand->is_id_expression = true;
  add_ref_entry_to_operand(ref, operand);
  if (is_any_reference_type(variable->type)) add_reference_indirection(operand);
}

void make_function_designator_operand(a_symbol *symbol, a_source_position *pos,
                                      a_source_position *end_pos, an_operand *operand,
                                      a_ref_entry *ref)
{
  a_routine *routine = routine_of_symbol(symbol);
  an_expr_node *node = function_lvalue_expr(routine);
  node->expr_range.start = *pos;
  node->expr_range.end = *end_pos;
  start_operand(ok_expression, routine->type, os_function_designator, operand);
  operand->value.expr = node;
  operand->symbol = symbol;
  operand->position = operand->name_position = *pos;
  operand->end_position = *end_pos;
  operand->names_virtual_function = routine->is_virtual;
  operand->is_id_expression = true;
  add_ref_entry_to_operand(ref, operand);
  if (is_error_type(routine->type)) conv_to_error_operand(operand);
}

void make_indefinite_function_operand(a_symbol *symbol, an_operand *operand)
{
  start_operand(ok_indefinite_function, unknown_type(), os_function_designator, operand);
  operand->symbol = symbol;
}

void make_sym_for_member_operand(a_symbol *symbol, an_operand *operand)
{
  bool is_data = symbol->kind == sk_field;
  start_operand(ok_sym_for_member, type_of_entity_symbol(symbol),
                is_data ? os_rvalue : os_function_designator, operand);
  operand->symbol = symbol;
}

void make_undefined_symbol_operand(a_symbol *symbol, an_operand *operand)
{
  start_operand(ok_undefined_symbol, unknown_type(), os_function_designator, operand);
  operand->symbol = symbol;
}

// -------------------------------------------------------------------------------------------------
// Constants

void make_constant_operand(a_constant *constant, an_operand *operand)
{
  if (constant->kind == ck_error ||
      (constant->type != nullptr && constant->type->kind == tk_error)) {
    make_error_operand(operand);
    return;
  }
  start_operand_without_value(ok_constant, constant->type, os_rvalue, operand);
  operand->value.constant = *constant;
}

void make_string_constant_operand(a_constant *constant, an_operand *operand)
{
  make_constant_operand(constant, operand);
  if (operand->kind == ok_error) return;
  operand->state = os_lvalue;
  operand->is_string_literal = true;
}

void make_integer_constant_operand(long value, a_type *type, an_operand *operand)
{
  a_constant constant;
  set_integer_constant(&constant, value, int_kind_of_type(type));
  constant.type = type;
  make_constant_operand(&constant, operand);
}

void make_sym_constant_operand(a_symbol *symbol, a_source_position *pos, an_operand *operand)
{
  make_constant_operand(constant_of_symbol(symbol), operand);
  operand->position = operand->name_position = *pos;
}

void make_imaginary_unit_operand(an_operand *operand)
{
  a_constant constant;
  a_type *type = imaginary_type(fk_float);
  clear_constant(&constant, ck_imaginary);
  constant.type = type;
  bool overflow = false;
  fp_host_large_integer_to_float(fk_float, 1, &float_of(&constant), &overflow);
  make_constant_operand(&constant, operand);
}

void make_infinity_operand(an_operand *operand)
{
  a_constant constant;
  make_huge_fp_val(&constant, float_type(fk_float));
  make_constant_operand(&constant, operand);
}

void make_nan_operand(an_operand *operand)
{
  a_constant constant;
  clear_constant(&constant, ck_float);
  constant.type = float_type(fk_float);
  make_fp_nan(&float_of(&constant), fk_float);
  make_constant_operand(&constant, operand);
}

// -------------------------------------------------------------------------------------------------
// Members

// A member has the qualifiers of its object, but a mutable one is never const.
static a_type *type_of_selected_field(a_field *field, a_type *object_type)
{
  a_type_qualifier_set qualifiers =
      f_get_type_qualifiers(object_type, false) & (tq_const | tq_volatile);
  if (field->is_mutable) qualifiers &= ~(unsigned)tq_const;
  return qualifiers == 0 ? field->type : f_make_qualified_type(field->type, qualifiers);
}

static an_expr_node *make_field_node(a_field *field, a_source_position *pos)
{
  an_expr_node *node = alloc_expr_node(enk_field);
  field_of(node) = field;
  node->type = field->type;
  if (pos != nullptr) node->expr_range.start = node->expr_range.end = *pos;
  return node;
}

void make_field_operand(a_field *field, an_operand *object, bool is_arrow,
                        a_source_position *member_pos, an_operand *result)
{
  if (object->kind == ok_error) {
    *result = *object;
    return;
  }
  a_type *object_type = is_arrow ? type_pointed_to(object->type) : object->type;
  a_type *type = type_of_selected_field(field, object_type);
  bool is_lvalue = is_arrow || is_lvalue_operand(object);
  a_source_position start = object->position;
  a_ref_entry *refs = object->ref_entries, *last_ref = object->last_ref_entry;
  an_expr_node *object_node = make_node_from_operand(object);
  object_node->next = make_field_node(field, member_pos);
  an_expr_node *node =
      make_operator_node(is_arrow ? eok_arrow_field : eok_dot_field, type, object_node);
  if (is_lvalue) {
    node->is_lvalue = true;
    make_lvalue_expression_operand(node, result);
  } else {
    node->type = rvalue_type(type);
    make_expression_operand(node, result);
  }
  result->position = start;
  result->end_position = end_pos_curr_token;
  if (!is_arrow) { // a use of a member is a use of its object: it is classified with the member
    result->ref_entries = refs;
    result->last_ref_entry = last_ref;
  }
  node->expr_range.start = start;
  node->expr_range.end = result->end_position;
  if (is_any_reference_type(field->type)) {
    node->type = field->type;
    add_reference_indirection(result);
  }
}

// -------------------------------------------------------------------------------------------------
// From operands to IL

static void set_node_positions(an_expr_node *node, const an_operand *operand)
{
  node->expr_range.start = operand->position;
  node->expr_range.end = operand->end_position;
}

an_expr_node *make_node_from_operand(an_operand *operand)
{
  switch (operand->kind) {
  case ok_expression: {
    an_expr_node *node = operand->value.expr;
    if (node->expr_range.start.seq == 0) set_node_positions(node, operand);
    return node;
  }
  case ok_constant: {
    an_expr_node *node = alloc_node_for_constant(&operand->value.constant);
    node->is_lvalue = operand->state == os_lvalue;
    set_node_positions(node, operand);
    return node;
  }
  case ok_error:
  case ok_indefinite_function:
  case ok_sym_for_member:
  case ok_undefined_symbol: break;
  }
  return error_node();
}

void extract_constant_from_operand(an_operand *operand, a_constant *constant)
{
  if (operand->kind == ok_constant) {
    *constant = operand->value.constant;
  } else {
    set_error_constant(constant);
  }
}

// -------------------------------------------------------------------------------------------------
// Details that survive a transformation

void restore_operand_details(an_operand *operand, const an_operand *saved)
{
  operand->position = saved->position;
  operand->end_position = saved->end_position;
  if (operand->kind == ok_expression && !operand->value.expr->is_lowered) {
    set_node_positions(operand->value.expr, operand);
  }
  operand->is_bound_function = saved->is_bound_function;
  operand->selector_is_object_pointer = saved->selector_is_object_pointer;
  operand->names_virtual_function = saved->names_virtual_function;
  operand->suppress_virtual = saved->suppress_virtual;
  operand->no_member_pointer_check = saved->no_member_pointer_check;
  operand->pending_address_of_id = saved->pending_address_of_id;
  if (operand->kind == ok_indefinite_function) {
    operand->pending_address_of = saved->pending_address_of;
    operand->address_position = saved->address_position;
  }
  operand->ruled_out_expr_kinds |= saved->ruled_out_expr_kinds;
  operand->parenthesized = saved->parenthesized;
  operand->kept_across_restore = saved->kept_across_restore;
  operand->pack_expansion = saved->pack_expansion;
}

void restore_operand_details_incl_ref(an_operand *operand, const an_operand *saved)
{
  restore_operand_details(operand, saved);
  operand->ref_entries = saved->ref_entries;
  operand->last_ref_entry = saved->last_ref_entry;
  restore_operand_form_of_name_reference(operand, saved);
}

void restore_operand_id_details(an_operand *operand, const an_operand *saved)
{
  operand->is_id_expression = saved->is_id_expression;
  operand->followed_by_paren = saved->followed_by_paren;
}

void restore_operand_form_of_name_reference(an_operand *operand, const an_operand *saved)
{
  operand->has_name_reference = saved->has_name_reference;
  operand->name_reference = saved->name_reference;
}

a_variable *make_expression_temporary(a_type *type)
{
  return alloc_temporary_variable(type_without_variable_bounds(type), false);
}

// A temporary is declared in front of everything, where variable bounds have no values yet.
static an_expr_node *with_variable_bounds(an_expr_node *value, a_type *type)
{
  return is_variably_modified_type(type) ? add_cast(value, type) : value;
}

// The operand and its copy have one value, evaluated once, where the operand stands: `a ?: b`.
// What may
// not be evaluated twice goes to a temporary.  The operand is an rvalue.
void clone_operand(an_operand *operand, an_operand *copy)
{
  *copy = *operand;
  copy->ref_entries = copy->last_ref_entry = nullptr;
  if (operand->kind != ok_expression) return;
  an_expr_node *node = make_node_from_operand(operand);
  bool once = node_has_side_effects(node) || !is_invariant_expr(node);
  if (!once || !in_function_scope() || is_void_type(operand->type)) {
    copy->value.expr = copy_expr_tree(node, true);
    return;
  }
  a_variable *temporary = make_expression_temporary(operand->type);
  an_expr_node *target = var_lvalue_expr(temporary);
  target->next = node;
  an_expr_node *assignment =
      make_operator_node(assignment_operator_for_type(operand->type), temporary->type, target);
  set_node_positions(assignment, operand);
  operand->value.expr = with_variable_bounds(assignment, operand->type);
  copy->value.expr = with_variable_bounds(var_rvalue_expr(temporary), operand->type);
}

void discard_operand(an_operand *operand)
{
  if (operand->kind == ok_expression && is_lvalue_operand(operand)) {
    operand->value.expr->is_discarded_lvalue = true;
  }
  change_some_ref_kinds(operand->ref_entries, rk_plain, 0);
}

void conv_to_error_operand(an_operand *operand)
{
  change_operand_refs_to_error(operand);
  operand->ref_entries = operand->last_ref_entry = nullptr;
  operand->kind = ok_error;
  operand->state = os_none;
  operand->type = error_type();
  operand->symbol = nullptr;
  operand->value.expr = nullptr;
  operand->selector_is_object_pointer = false;
  operand->is_id_expression = false;
  operand->pending_address_of = operand->pending_address_of_id = false;
  operand->is_string_literal = false;
}

void normalize_error_operand(an_operand *operand)
{
  if (operand->kind != ok_error && operand->type->kind == tk_error) conv_to_error_operand(operand);
}

void rule_out_expr_kinds(unsigned kinds, an_operand *operand)
{
  if ((kinds & rule_out_any_constant) != 0) kinds |= rule_out_integral_constant;
  operand->ruled_out_expr_kinds |= kinds;
}

void preserve_ruled_out_expr_kinds_from_discarded_operand(an_operand *kept, an_operand *discarded)
{
  kept->ruled_out_expr_kinds |= discarded->ruled_out_expr_kinds;
}

// -------------------------------------------------------------------------------------------------
// Operands of template-dependent operations keep their source form.

void prep_generic_operand_full(an_operand *operand, bool keep_lvalue, bool apply_transformations)
{
  an_operand saved = *operand;
  if (apply_transformations) {
    unsigned flags = ot_leave_indefinite_functions;
    if (keep_lvalue) flags |= ot_keep_lvalues;
    do_operand_transformations(operand, flags);
  }
  restore_operand_details_incl_ref(operand, &saved);
  change_some_ref_kinds(operand->ref_entries, rk_plain, rk_generic);
}
