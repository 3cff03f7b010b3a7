// expr_select_class.cpp - C++: members of objects, behind `.` and `->`: functions, static members,
// qualified names, destructors, chains of operator->.
// Entry:   scan_class_field_selection.
// See:     C++98 5.2.5, 5.2.4, 12.4, 13.5.6.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/decls.h"
#include "parse/expr_internal.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/symbol_ref.h"

// -------------------------------------------------------------------------------------------------
// Members of objects

static void report_unknown_class_member(a_type *class_type, const a_symbol_locator *locator,
                                        a_source_position pos)
{
  a_symbol *class_symbol = skip_typerefs(class_type)->source_corresp.assoc_symbol;
  if (!expr_error_should_be_issued() || locator->header == nullptr) return;
  if (class_symbol != nullptr && class_symbol->header != nullptr)
    pos_stsy_error(ec_not_a_member, pos, locator->header->identifier, class_symbol);
  else
    pos_st_error(ec_not_a_field_name, pos, locator->header->identifier);
}

// object.A::m: the class in which the name is looked up; null, reported, when the object has no A.
static a_type *class_to_look_in(a_type *class_type, const a_symbol_locator *locator,
                                a_source_position pos)
{
  if ((locator->qualifier_bits & qb_qualified) == 0 || !locator->qualifier_is_class)
    return class_type;
  a_type *qualifier = skip_typerefs(locator->qualifier.class_type);
  if (is_same_class_or_base_class_thereof(qualifier, class_type)) return qualifier;
  expr_pos_ty_diagnostic(es_error, ec_name_not_member_of_class_or_base_classes, pos, class_type);
  return nullptr;
}

void keep_side_effects_of_object(an_operand *object, an_operand *result)
{
  if (object->kind != ok_expression || result->kind == ok_error) return;
  an_expr_node *node = object->value.expr;
  if (!node_has_side_effects(node)) return;
  an_operand saved = *result;
  bool is_lvalue = is_lvalue_operand(result);
  an_expr_node *comma = make_comma_node(node, make_node_from_operand(result));
  set_expr_result_not_used(node);
  if (is_lvalue)
    make_lvalue_expression_operand(comma, result);
  else
    make_expression_operand(comma, result);
  restore_operand_details_incl_ref(result, &saved);
}

static void select_found_member(a_symbol *symbol, an_operand *object, bool is_arrow,
                                const a_symbol_locator *locator, a_source_position *pos,
                                an_operand *result)
{
  a_source_position end = end_pos_curr_token;
  bool is_qualified = (locator->qualifier_bits & qb_qualified) != 0;
  switch (symbol->kind) {
  case sk_field:
    record_symbol_reference(rk_plain, symbol, pos, expr_stack->code_is_generated);
    select_member(symbol, object, is_arrow, pos, result);
    return;
  case sk_member_function:
  case sk_overloaded_function:
  case sk_function_template:
    if (is_qualified) step_object_to_class(object, is_arrow, symbol->parent.class_type);
    select_function(symbol, object, is_arrow, pos, result);
    result->suppress_virtual = is_qualified;
    return;
  case sk_static_data_member:
    make_lvalue_variable_operand(variable_of_symbol(symbol), pos, &end, result,
                                 ref_entry(symbol, *pos));
    break;
  case sk_constant: make_sym_constant_operand(symbol, pos, result); break;
  default:
    expr_pos_error(ec_type_identifier_not_allowed, *pos);
    make_error_operand(result);
    return;
  }
  keep_side_effects_of_object(object, result);
}

static void select_class_member(an_operand *object, a_type *class_type, bool is_arrow,
                                a_symbol_locator *locator, a_source_position *pos,
                                an_operand *result)
{
  a_type *where = class_to_look_in(skip_typerefs(class_type), locator, *pos);
  make_error_operand(result);
  if (where == nullptr || locator->header == nullptr) return;
  if (locator->is_qualified && (locator->qualifier_bits & qb_qualified) != 0 &&
      !locator->qualifier_is_class && locator->header != nullptr) {
    report_unknown_class_member(class_type, locator, *pos);
    return;
  }
  locator->symbol = nullptr;
  a_symbol *symbol = class_qualified_id_lookup(locator, where, lo_none);
  if (symbol == nullptr) {
    report_unknown_class_member(where, locator, *pos);
    return;
  }
  bool failed = false;
  f_check_ambiguity_and_verify_access(locator, false, where, &failed);
  if (failed) return;
  select_found_member(symbol, object, is_arrow, locator, pos, result);
}

// -------------------------------------------------------------------------------------------------
// ->

// The class objects that an operator-> was called on already.
struct an_arrow_step {
  an_arrow_step *previous;
  a_type *class_type;
};

static bool was_passed(const an_arrow_step *step, a_type *class_type)
{
  for (; step != nullptr; step = step->previous) {
    if (identical_types(step->class_type, class_type)) return true;
  }
  return false;
}

static bool follow_arrow(an_operand *object, const an_arrow_step *passed)
{
  if (object->kind == ok_error || !is_class_struct_union_type(object->type)) return true;
  a_type *class_type = skip_typerefs(object->type);
  if (was_passed(passed, class_type)) {
    expr_pos_ty_diagnostic(es_error, ec_op_arrow_loop, object->position, class_type);
    conv_to_error_operand(object);
    return false;
  }
  a_source_position pos = pos_curr_token;
  an_operand left = *object;
  if (!do_overloaded_operator_by_name(onk_arrow, &pos, &left, nullptr, object)) {
    expr_pos_error(ec_expr_not_pointer, object->position);
    conv_to_error_operand(object);
    return false;
  }
  an_arrow_step step = {const_cast<an_arrow_step *>(passed), class_type};
  return follow_arrow(object, &step);
}

static void follow_operator_arrows(an_operand *object)
{
  follow_arrow(object, nullptr);
}

// -------------------------------------------------------------------------------------------------
// Destructors

// The type that the name behind `~` stands for; null, reported, when it is none.
static a_type *type_of_destructor_name(a_type *object_type)
{
  a_source_position pos = pos_curr_token;
  if (curr_token != tok_identifier) {
    bool is_type = is_type_start(0);
    if (is_type)
      expr_pos_ty_diagnostic(es_error, ec_invalid_destructor_name, pos, object_type);
    else
      syntax_error(ec_exp_identifier);
    if (is_type) get_token();
    return nullptr;
  }
  a_symbol *class_symbol = skip_typerefs(object_type)->source_corresp.assoc_symbol;
  a_symbol_locator locator = locator_for_curr_id;
  bool is_class = is_class_struct_union_type(object_type) && class_symbol != nullptr;
  get_token();
  if (is_class && locator.header == class_symbol->header) return object_type;
  a_symbol *symbol = normal_id_lookup(&locator, lo_type_only);
  if (symbol == nullptr || !is_type_symbol(symbol)) {
    expr_pos_error(ec_destructor_name_mismatch, pos);
    return nullptr;
  }
  if (identical_types(skip_typerefs(type_of_symbol(symbol)), skip_typerefs(object_type)))
    return object_type;
  expr_pos_ty_diagnostic(es_error, ec_destructor_type_mismatch, pos, object_type);
  return nullptr;
}

// Nothing to call: what the object does is all.
static void discard_object(an_operand *object, an_operand *result)
{
  an_expr_node *node = add_cast(make_node_from_operand(object), void_type());
  change_some_ref_kinds(object->ref_entries, rk_plain, rk_read);
  make_expression_operand(node, result);
  rule_out_expr_kinds(rule_out_any_constant, result);
}

static void call_without_destructor(an_operand *object, an_operand *result)
{
  if (curr_token != tok_lparen) {
    syntax_error(ec_exp_lparen);
    make_error_operand(result);
    return;
  }
  get_token();
  required_token(tok_rparen, ec_exp_rparen);
  discard_object(object, result);
}

static void select_destructor(a_type *class_type, an_operand *object, bool is_arrow,
                              bool is_qualified, a_source_position *pos, an_operand *result)
{
  a_symbol *class_symbol = skip_typerefs(class_type)->source_corresp.assoc_symbol;
  a_symbol *destructor = is_class_struct_union_type(class_type)
                             ? class_supplement_of_symbol(class_symbol)->destructor
                             : nullptr;
  if (destructor == nullptr) {
    call_without_destructor(object, result);
    return;
  }
  if (!have_access_to_symbol(destructor))
    expr_pos_sy_diagnostic(es_error, ec_no_access_to_name, *pos, destructor);
  step_object_to_class(object, is_arrow, class_type);
  select_function(destructor, object, is_arrow, pos, result);
  result->suppress_virtual = is_qualified;
}

// At `~`.
static void scan_destructor_selection(an_operand *object, bool is_arrow, an_operand *result)
{
  a_source_position pos = pos_curr_token;
  a_type *object_type = is_arrow ? type_pointed_to(object->type) : object->type;
  get_token();
  a_type *type = type_of_destructor_name(object_type);
  if (type == nullptr) {
    change_operand_refs_to_error(object);
    make_error_operand(result);
    return;
  }
  select_destructor(type, object, is_arrow, false, &pos, result);
}

// -------------------------------------------------------------------------------------------------
// The operators

// The type of the object, or null, reported, when it has no members.
static a_type *check_object(an_operand *object, bool is_arrow)
{
  if (object->kind == ok_error || is_error_type(object->type)) return nullptr;
  a_type *type = object->type;
  if (is_arrow) {
    if (!is_pointer_type(type)) {
      expr_pos_error(ec_expr_not_pointer, object->position);
      return nullptr;
    }
    type = type_pointed_to(type);
  }
  if (curr_token == tok_compl && !is_class_struct_union_type(type)) return type;
  if (!is_class_struct_union_type(type)) {
    expr_pos_error(is_arrow ? ec_expr_not_ptr_to_class : ec_expr_not_class, object->position);
    return nullptr;
  }
  if (!is_incomplete_type(type)) return type;
  if (is_arrow)
    expr_pos_error(ec_ptr_to_incomplete_class_type_not_allowed, object->position);
  else
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, object->position, type);
  return nullptr;
}

// The name behind the operator, as a locator; false, reported, when none is there.
static bool scan_member_name(a_symbol_locator *locator)
{
  if (curr_token == tok_template) get_token();
  f_is_generalized_identifier_start(gid_destructor_name_allowed, nullptr);
  if (curr_token != tok_identifier) {
    syntax_error(ec_exp_identifier);
    return false;
  }
  *locator = locator_for_curr_id;
  return true;
}

void scan_class_field_selection(an_operand *left, an_operand *result)
{
  bool is_arrow = curr_token == tok_arrow;
  a_source_position op_pos = pos_curr_token, start = left->position;
  bool forbidden = expr_stack->expression_kind == ek_preprocessing ||
                   expr_stack->expression_kind == ek_integral_constant;
  if (is_arrow) follow_operator_arrows(left);
  do_operand_transformations(left, is_arrow ? 0 : ot_keep_lvalues | ot_keep_arrays);
  get_token();
  a_type *type = check_object(left, is_arrow);
  a_source_position pos = pos_curr_token, end = end_pos_curr_token;
  a_symbol_locator locator;
  bool is_destructor = curr_token == tok_compl;
  bool has_name = is_destructor || scan_member_name(&locator);
  make_error_operand(result);
  if (has_name && !is_destructor) end = end_pos_curr_token;
  if (forbidden && has_name) {
    if (left->kind != ok_error) expr_pos_error(not_allowed_in_constant_code(), op_pos);
  } else if (type != nullptr && is_destructor) {
    scan_destructor_selection(left, is_arrow, result);
    end = result->end_position;
  } else if (type != nullptr && has_name && locator.is_destructor_name) {
    get_token();
    select_destructor(locator.qualifier.class_type, left, is_arrow, true, &pos, result);
  } else if (type != nullptr && has_name) {
    select_class_member(left, type, is_arrow, &locator, &pos, result);
  } else if (is_destructor) {
    get_token();
  }
  if (result->kind == ok_error) change_operand_refs_to_error(left);
  if (result->kind == ok_expression) {
    result->value.expr->operator_position = op_pos;
    result->ruled_out_expr_kinds |= left->ruled_out_expr_kinds;
  }
  result->position = start;
  result->end_position = end;
  if (has_name && !is_destructor && !locator.is_destructor_name) get_token();
}
