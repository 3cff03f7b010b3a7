// expr_throw.cpp - throw.
// Entry:   scan_throw_operator.
// See:     C++98 15.1.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/scope_stk.h"

// Behind `throw` alone the current exception goes on.
static bool is_rethrow()
{
  switch (curr_token) {
  case tok_semicolon:
  case tok_comma:
  case tok_colon:
  case tok_rparen:
  case tok_rbracket:
  case tok_rbrace: return true;
  default: return false;
  }
}

static void check_throw_is_allowed(a_source_position position)
{
  if (!exceptions_enabled) expr_pos_error(ec_no_exception_support, position);
  a_routine *routine = curr_routine();
  bool is_c = routine != nullptr && routine->source_corresp.name_linkage == nlk_c;
  if (exceptions_enabled && is_c && !routine->is_main && !extern_c_can_throw)
    expr_pos_error(ec_extern_c_cannot_throw, position);
}

static bool check_thrown_type(an_operand *operand)
{
  if (operand->kind == ok_error) return false;
  a_type *type = operand->type;
  if (is_void_type(type)) {
    expr_pos_error(ec_void_throw, operand->position);
    return false;
  }
  bool is_object_pointer = is_pointer_type(type) && !is_void_type(type_pointed_to(type)) &&
                           !is_function_type(type_pointed_to(type));
  if (is_object_pointer && is_incomplete_type(type_pointed_to(type))) {
    expr_pos_error(ec_ptr_incomplete_throw, operand->position);
    return false;
  }
  if (is_incomplete_type(type)) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, operand->position, type);
    return false;
  }
  check_for_abstract_object(type, &operand->position);
  return true;
}

// The thrown object is a copy of the value.
static void make_thrown_object(an_operand *operand, a_throw_supplement *supplement)
{
  a_type *type = make_unqualified_type(rvalue_type(operand->type));
  prep_initializer_operand(operand, type, 1, ec_bad_initializer_type, &operand->position);
  if (operand->kind == ok_error) return;
  supplement->type = type;
  supplement->dynamic_init = dynamic_init_from_expr(make_node_from_operand(operand), type);
  supplement->routine = expr_select_destructor(type, &operand->position);
}

void scan_throw_operator(an_operand *result)
{
  a_source_position position = pos_curr_token, end = end_pos_curr_token;
  check_throw_is_allowed(position);
  get_token();
  an_expr_node *node = alloc_expr_node(enk_throw);
  node->type = void_type();
  bool ok = true;
  if (is_rethrow()) {
    throw_of(node) = nullptr;
  } else {
    an_operand operand;
    bool saved = expr_stack->in_return_or_throw;
    expr_stack->in_return_or_throw = true;
    scan_expression(&operand, nullptr, prec_comma, se_stop_at_comma);
    end = operand.end_position;
    if (!is_class_struct_union_type(operand.type)) do_operand_transformations(&operand, 0);
    ok = check_thrown_type(&operand);
    if (ok) {
      make_thrown_object(&operand, throw_of(node));
      ok = operand.kind != ok_error;
    }
    expr_stack->in_return_or_throw = saved;
  }
  if (in_constant_context()) {
    if (ok) expr_pos_error(not_allowed_in_constant_code(), position);
    ok = false;
  }
  if (ok) {
    node->expr_range.start = position;
    node->expr_range.end = end;
    make_expression_operand(node, result);
  } else {
    make_error_operand(result);
  }
  result->position = position;
  result->end_position = end;
  rule_out_expr_kinds(rule_out_any_constant, result);
}
