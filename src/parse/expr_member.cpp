// expr_member.cpp - members named without an object: `this`, members of its class, pointers to members.
// Owns:    the object of the member function that was selected last, until its call takes it.
// Rule:    an object operand is an lvalue or rvalue of a class, or (is_arrow) a pointer to one; before a
//          member of a base class is selected, the operand steps to that class.
// Entry:   scan_this, make_operand_of_member, select_function, take_bound_selector,
//          make_ptr_to_member_constant_operand, scan_ptr_to_member_selection.
// See:     C++98 9.3.1, 5.1, 5.5.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

static an_operand bound_selector;

// -------------------------------------------------------------------------------------------------
// this

static a_variable *this_variable()
{
  return innermost_function_scope != nullptr ? innermost_function_scope->this_param : nullptr;
}

static void make_this_pointer_operand(an_operand *result)
{
  make_expression_operand(this_param_value_expr(), result);
  result->type = make_unqualified_type(result->type);
}

void scan_this(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  if (this_variable() == nullptr) {
    expr_pos_error(ec_this_used_incorrectly, pos);
    make_error_operand(result);
  } else if (in_constant_context()) {
    expr_pos_error(ec_expr_not_constant, pos);
    make_error_operand(result);
  } else {
    make_this_pointer_operand(result);
  }
  curr_construct_end_position = end_pos_curr_token;
  get_token();
}

// -------------------------------------------------------------------------------------------------
// Steps to base classes

static a_type *class_of_selection(an_operand *object, bool is_arrow)
{
  return skip_typerefs(is_arrow ? type_pointed_to(object->type) : object->type);
}

bool step_object_to_class(an_operand *object, bool is_arrow, a_type *class_type)
{
  if (object->kind == ok_error || class_type == nullptr) return object->kind != ok_error;
  class_type = skip_typerefs(class_type);
  a_type *from = class_of_selection(object, is_arrow);
  if (identical_types(from, class_type)) return true;
  a_base_class *base = find_base_class_of(from, class_type);
  if (base == nullptr) return true; // a member of an anonymous union, reached through its holder
  if (base->is_ambiguous) {
    expr_pos_ty_diagnostic(es_error, ec_ambiguous_base_class, object->position, class_type);
    conv_to_error_operand(object);
    return false;
  }
  an_operand saved = *object;
  if (!is_arrow && !is_lvalue_operand(object)) conv_class_rvalue_operand_to_lvalue(object);
  an_expr_node *node = base_class_selection_expr(make_node_from_operand(object), base);
  if (is_arrow)
    make_expression_operand(node, object);
  else
    make_lvalue_expression_operand(node, object);
  restore_operand_details_incl_ref(object, &saved);
  return true;
}

// A member of an anonymous union or structure belongs, in the end, to the class that holds that.
static a_type *class_of_member(a_symbol *symbol)
{
  while (symbol->kind == sk_field && symbol->variant.field.anonymous_parent != nullptr)
    symbol = symbol->variant.field.anonymous_parent;
  if (symbol->kind == sk_field) return parent_class_of(&field_of_symbol(symbol)->source_corresp);
  return symbol->is_class_member ? symbol->parent.class_type : nullptr;
}

// -------------------------------------------------------------------------------------------------
// Functions

static bool is_nonstatic_function(a_symbol *symbol)
{
  return symbol->kind == sk_member_function && !routine_of_symbol(symbol)->is_static_member;
}

void select_function(a_symbol *symbol, an_operand *object, bool is_arrow, a_source_position *pos,
                     an_operand *result)
{
  a_source_position end = end_pos_curr_token;
  bool is_single = is_routine_symbol(symbol);
  if (is_single) {
    make_function_designator_operand(symbol, pos, &end, result, ref_entry(symbol, *pos));
  } else {
    make_indefinite_function_operand(symbol, result);
    result->position = result->name_position = *pos;
    result->end_position = end;
  }
  bool needs_object = !is_single || is_nonstatic_function(symbol);
  bool object_acts = object->kind == ok_expression && node_has_side_effects(object->value.expr);
  if (!needs_object && !object_acts) return;
  bound_selector = *object;
  if (!is_arrow) conv_class_operand_to_object_pointer(&bound_selector);
  result->is_bound_function = true;
}

void take_bound_selector(an_operand *selector)
{
  *selector = bound_selector;
}

void put_bound_selector(an_operand *selector)
{
  bound_selector = *selector;
}

// -------------------------------------------------------------------------------------------------
// Members named without an object

// `this` leads to an object of the member's class.
static bool this_exists_for_member_access(a_symbol *symbol)
{
  a_variable *variable = this_variable();
  if (variable == nullptr || in_constant_context()) return false;
  a_type *class_type = class_of_member(symbol);
  return class_type != nullptr &&
         is_same_class_or_base_class_thereof(class_type, type_pointed_to(variable->type));
}

// sizeof(A::m): an object that is never looked at stands for the missing one.
static bool make_fake_object(a_symbol *symbol, a_source_position pos, an_operand *object)
{
  if (!expr_stack->unevaluated) return false;
  if (!cpp11_mode && strict_ansi_mode)
    expr_pos_diagnostic(strict_ansi_discretionary_severity, ec_member_ref_requires_object, pos);
  else if (!cpp11_mode && (gcc_mode || gpp_mode))
    expr_pos_diagnostic(es_discretionary_error, ec_member_ref_requires_object, pos);
  a_constant zero;
  make_zero_of_proper_type(make_pointer_type(class_of_member(symbol)), &zero);
  make_expression_operand(alloc_node_for_constant(&zero), object);
  object->is_fake_object = true;
  expr_stack->member_without_object_seen = true;
  expr_stack->member_position = pos;
  return true;
}

// Behind `&` a qualified name that nothing binds tighter to is a pointer to member.
static bool forms_pointer_to_member(const a_symbol_locator *locator, unsigned flags)
{
  bool is_qualified = (locator->qualifier_bits & qb_qualified) != 0;
  return is_qualified && (flags & se_address_operand) != 0 &&
         !token_binds_tighter(next_token(), prec_unary);
}

static void make_operand_of_field(a_symbol *symbol, const a_symbol_locator *locator, unsigned flags,
                                  an_operand *result)
{
  a_source_position pos = pos_curr_token;
  if (expr_stack->expression_kind == ek_integral_constant) {
    expr_pos_error(ec_expr_not_constant, pos);
    make_error_operand(result);
    return;
  }
  record_symbol_reference(rk_plain, symbol, &pos, expr_stack->code_is_generated);
  if (forms_pointer_to_member(locator, flags)) {
    make_sym_for_member_operand(symbol, result);
    return;
  }
  an_operand object;
  if (this_exists_for_member_access(symbol)) {
    make_this_pointer_operand(&object);
  } else if (!make_fake_object(symbol, pos, &object)) {
    expr_pos_error(ec_member_ref_requires_object, pos);
    make_error_operand(result);
    return;
  }
  select_member(symbol, &object, true, &pos, result);
}

// A set of functions, of which some may be static, or one function that needs an object.
static void make_operand_of_function(a_symbol *symbol, const a_symbol_locator *locator,
                                     unsigned flags, an_operand *result)
{
  a_source_position pos = pos_curr_token;
  bool is_qualified = (locator->qualifier_bits & qb_qualified) != 0;
  bool is_called = next_token() == tok_lparen && !forms_pointer_to_member(locator, flags);
  an_operand object;
  if (expr_stack->expression_kind == ek_integral_constant) {
    expr_pos_error(ec_expr_not_constant, pos);
    make_error_operand(result);
    return;
  }
  if (is_called && this_exists_for_member_access(symbol)) {
    make_this_pointer_operand(&object);
    step_object_to_class(&object, true, is_qualified ? class_of_member(symbol) : nullptr);
    select_function(symbol, &object, true, &pos, result);
  } else if (!is_routine_symbol(symbol)) {
    make_indefinite_function_operand(symbol, result);
    result->name_position = pos;
  } else if (!is_called) {
    make_sym_for_member_operand(symbol, result);
    result->name_position = pos;
    add_ref_entry_to_operand(ref_entry(symbol, pos), result);
  } else if (make_fake_object(symbol, pos, &object)) {
    select_function(symbol, &object, true, &pos, result);
  } else {
    expr_pos_error(ec_member_ref_requires_object, pos);
    make_error_operand(result);
  }
  result->suppress_virtual = is_qualified;
}

void bind_member_to_this(an_operand *function)
{
  bool is_set = function->kind == ok_indefinite_function && function->symbol->is_class_member;
  bool is_single = function->kind == ok_sym_for_member && is_routine_symbol(function->symbol);
  if ((!is_set && !is_single) || function->is_bound_function) return;
  an_operand saved = *function, object;
  a_source_position pos = saved.name_position;
  if (!this_exists_for_member_access(saved.symbol)) {
    if (is_set) return; // a static member may be meant
    expr_pos_error(ec_member_ref_requires_object, pos);
    conv_to_error_operand(function);
    return;
  }
  make_this_pointer_operand(&object);
  select_function(saved.symbol, &object, true, &pos, function);
  function->suppress_virtual = saved.suppress_virtual;
  function->end_position = saved.end_position;
}

void make_operand_of_member(a_symbol *symbol, const a_symbol_locator *locator, unsigned flags,
                            an_operand *result)
{
  if (symbol->kind == sk_field)
    make_operand_of_field(symbol, locator, flags, result);
  else
    make_operand_of_function(symbol, locator, flags, result);
}

// -------------------------------------------------------------------------------------------------
// Pointers to members

static bool check_ptr_to_member_type(a_symbol *symbol, a_source_position pos)
{
  a_type *type = type_of_entity_symbol(symbol);
  if (symbol->kind == sk_field && field_of_symbol(symbol)->is_bit_field) {
    expr_pos_error(ec_address_of_bit_field, pos);
    return false;
  }
  if (is_any_reference_type(type) || is_void_type(type)) {
    expr_pos_ty_diagnostic(es_error, ec_bad_member_type_in_ptr_to_member, pos, type);
    return false;
  }
  return true;
}

void make_ptr_to_member_constant_operand(an_operand *operand)
{
  an_operand saved = *operand;
  a_symbol *symbol = saved.symbol;
  a_source_position pos = saved.position;
  change_ref_kinds(operand->ref_entries, rk_address_taken);
  if (!check_ptr_to_member_type(symbol, pos)) {
    conv_to_error_operand(operand);
    return;
  }
  a_constant constant;
  if (symbol->kind == sk_field)
    set_ptr_to_data_member_constant(field_of_symbol(symbol), &constant);
  else
    set_ptr_to_member_function_constant(routine_of_symbol(symbol), &constant);
  make_constant_operand(&constant, operand);
  operand->symbol = symbol;
  restore_operand_details_incl_ref(operand, &saved);
  rule_out_expr_kinds(rule_out_integral_constant, operand);
}

static an_error_code check_object_of_ptr_to_member(an_operand *object, bool is_arrow)
{
  if (is_arrow && !is_pointer_type(object->type)) return ec_expr_not_pointer;
  a_type *type = is_arrow ? type_pointed_to(object->type) : object->type;
  if (is_class_struct_union_type(type)) return ec_no_error;
  return is_arrow ? ec_expr_not_ptr_to_class : ec_expr_not_class;
}

// The object's class is the member's or derived from it.
static bool check_ptr_to_member_operands(an_operand *object, an_operand *pointer, bool is_arrow)
{
  if (object->kind == ok_error || pointer->kind == ok_error) return false;
  if (!is_ptr_to_member_type(pointer->type)) {
    expr_pos_error(ec_expr_not_ptr_to_member, pointer->position);
    return false;
  }
  an_error_code code = check_object_of_ptr_to_member(object, is_arrow);
  if (code != ec_no_error) {
    expr_pos_error(code, object->position);
    return false;
  }
  a_type *class_type = class_of_selection(object, is_arrow);
  a_type *member_class = skip_typerefs(pm_class_type(pointer->type));
  if (is_same_class_or_base_class_thereof(member_class, class_type))
    return step_object_to_class(object, is_arrow, member_class);
  expr_pos_ty2_diagnostic(es_error, ec_incompatible_ptr_to_member_selection_operands,
                          object->position, class_type, member_class);
  return false;
}

// A member function through a pointer: bound to the object, for a call.
static void select_function_by_pointer(an_operand *object, an_operand *pointer, bool is_arrow,
                                       an_operand *result)
{
  bound_selector = *object;
  if (!is_arrow) conv_class_operand_to_object_pointer(&bound_selector);
  *result = *pointer;
  result->is_bound_function = true;
  result->is_id_expression = false;
}

static void select_data_by_pointer(an_operand *object, an_operand *pointer, bool is_arrow,
                                   an_operand *result)
{
  bool is_lvalue = is_arrow || is_lvalue_operand(object);
  a_type_qualifier_set qualifiers =
      f_get_type_qualifiers(is_arrow ? type_pointed_to(object->type) : object->type, false);
  a_type *type = pm_member_type(pointer->type);
  qualifiers &= tq_const | tq_volatile;
  if (qualifiers != 0) type = f_make_qualified_type(type, qualifiers);
  an_expr_node *node = make_node_from_operand(object);
  node->next = make_node_from_operand(pointer);
  an_expr_operator_kind op = is_arrow ? eok_arrow_member : eok_dot_member;
  if (is_lvalue) {
    make_lvalue_expression_operand(make_lvalue_operator_node(op, type, node), result);
  } else {
    make_expression_operand(make_operator_node(op, rvalue_type(type), node), result);
  }
  if (!is_arrow) {
    result->ref_entries = object->ref_entries;
    result->last_ref_entry = object->last_ref_entry;
  }
}

void scan_ptr_to_member_selection(an_operand *left, a_rescan_control_block *, an_operand *result)
{
  a_token_kind token = curr_token;
  bool is_arrow = token == tok_arrow_star;
  a_source_position pos = pos_curr_token, start = left->position;
  an_operand pointer;
  get_token();
  scan_expression(&pointer, nullptr, prec_ptr_to_member, 0);
  a_source_position end = pointer.end_position;
  if (in_constant_context()) {
    if (left->kind != ok_error) expr_pos_error(not_allowed_in_constant_code(), pos);
    make_error_operand(result);
    return;
  }
  if (is_arrow && do_overloaded_operator(token, &pos, left, &pointer, result)) return;
  do_operand_transformations(left, is_arrow ? 0 : ot_keep_lvalues | ot_keep_arrays);
  do_operand_transformations(&pointer, 0);
  if (!check_ptr_to_member_operands(left, &pointer, is_arrow)) {
    operand_will_not_be_used_because_of_error(left);
    operand_will_not_be_used_because_of_error(&pointer);
    make_error_operand(result);
  } else if (is_function_type(pm_member_type(pointer.type))) {
    select_function_by_pointer(left, &pointer, is_arrow, result);
  } else {
    select_data_by_pointer(left, &pointer, is_arrow, result);
    result->value.expr->operator_position = pos;
  }
  result->position = start;
  result->end_position = end;
  rule_out_expr_kinds(rule_out_any_constant, result);
}
