// il_traverse.cpp - the light traversal of expressions and statements, for code that only looks at
// the bodies of functions.
// Rule:    a callback may set skip_subtree (cleared here) or stop (which ends the whole traversal).
// Entry:   traverse_expr, traverse_statement, traverse_constant, traverse_dynamic_init.
#include "il/il_walk.h"
#include "mem/stack_limit.h"

typedef an_expr_or_stmt_traversal_block a_block;

void clear_expr_or_stmt_traversal_block(a_block *block)
{
  *block = {};
}

// True: the callback wants no look at the parts.
static bool parts_are_skipped(a_block *block)
{
  bool skip = block->skip_subtree || block->stop;
  block->skip_subtree = false;
  return skip;
}

static void visit_type(a_type *type, a_block *block)
{
  if (block->type_callback != nullptr && type != nullptr) block->type_callback(type, block);
}

static void visit_routine(a_routine *routine, a_block *block)
{
  if (block->routine_callback != nullptr && routine != nullptr) {
    block->routine_callback(routine, block);
  }
}

static void traverse_optional(an_expr_node *expr, a_block *block)
{
  if (expr != nullptr && !block->stop) traverse_expr(expr, block);
}

static void traverse_optional_init(a_dynamic_init *init, a_block *block)
{
  if (init != nullptr && !block->stop) traverse_dynamic_init(init, block);
}

// --- Constants and initializations ---------------------------------------------------------------

void traverse_constant(a_constant *constant, a_block *block)
{
  check_recursion();
  if (block->constant_callback != nullptr) {
    block->constant_callback(constant, block);
    if (parts_are_skipped(block)) return;
  }
  visit_type(constant->type, block);
  switch (constant->kind) {
  case ck_aggregate:
    for (a_constant *element = aggregate_of(constant).first_element;
         element != nullptr && !block->stop; element = element->next) {
      traverse_constant(element, block);
    }
    break;
  case ck_init_repeat: traverse_constant(init_repeat_of(constant).repeated, block); break;
  case ck_dynamic_init:
    if (block->follow_dynamic_inits) traverse_dynamic_init(dynamic_init_of(constant), block);
    break;
  case ck_address:
    if (address_of(constant).kind == ack_routine) {
      visit_routine((a_routine *)address_of(constant).entity, block);
    } else if (address_of(constant).kind == ack_constant) {
      traverse_constant((a_constant *)address_of(constant).entity, block);
    }
    break;
  case ck_address_difference:
    traverse_constant(address_difference_of(constant).minuend, block);
    if (!block->stop) traverse_constant(address_difference_of(constant).subtrahend, block);
    break;
  case ck_ptr_to_member:
    if (ptr_to_member_of(constant).is_member_function) {
      visit_routine((a_routine *)ptr_to_member_of(constant).member, block);
    }
    break;
  case ck_template_param:
    if (template_param_of(constant).kind == tpck_expression) {
      traverse_optional(template_param_of(constant).expr, block);
    }
    break;
  case ck_error:
  case ck_integer:
  case ck_string:
  case ck_float:
  case ck_complex:
  case ck_imaginary:
  case ck_designator: break;
  case ck_last: unexpected_kind("constant");
  }
}

void traverse_dynamic_init(a_dynamic_init *init, a_block *block)
{
  if (block->init_callback != nullptr) {
    block->init_callback(init, block);
    if (parts_are_skipped(block)) return;
  }
  switch (init->kind) {
  case dik_constant:
  case dik_constant_via_temp: traverse_constant(constant_of(init), block); break;
  case dik_expression:
  case dik_call_returning_class: traverse_optional(expr_of(init), block); break;
  case dik_constructor:
    visit_routine(constructor_of(init).routine, block);
    traverse_expr_list(constructor_of(init).first_arg, block);
    break;
  case dik_none:
  case dik_zero:
  case dik_bitwise_copy: break;
  case dik_last: unexpected_kind("dynamic initialization");
  }
  if (!block->stop) visit_routine(init->destructor, block);
}

// --- Expressions ---------------------------------------------------------------------------------

// Casts that the block wants to look through stand for their operand.
static an_expr_node *skip_followed_casts(an_expr_node *expr, a_block *block)
{
  while (expr->kind == enk_operation) {
    an_expr_operator_kind op = op_of(expr);
    bool is_pointer_cast = op == eok_cast && expr->type != nullptr && is_pointer_type(expr->type) &&
                           is_pointer_type(first_operand_of(expr)->type);
    bool is_followed =
        (block->follow_lvalue_casts &&
         (op == eok_lvalue_cast || op == eok_cast_to_lvalue || is_pointer_cast)) ||
        (block->follow_class_casts && (op == eok_derived_to_base || op == eok_base_to_derived));
    if (!is_followed) break;
    expr = first_operand_of(expr);
  }
  return expr;
}

static void traverse_parts_of_expr(an_expr_node *expr, a_block *block)
{
  switch (expr->kind) {
  case enk_operation: traverse_expr_list(first_operand_of(expr), block); break;
  case enk_constant: traverse_constant(constant_of(expr), block); break;
  case enk_temp_init:
    if (block->follow_dynamic_inits) traverse_optional_init(dynamic_init_of(expr), block);
    break;
  case enk_new_delete: {
    a_new_delete_supplement *supplement = new_delete_of(expr);
    visit_type(supplement->type, block);
    visit_routine(supplement->routine, block);
    traverse_expr_list(supplement->first_arg, block);
    traverse_optional_init(supplement->init, block);
    break;
  }
  case enk_lambda: traverse_optional_init(lambda_of(expr).dynamic_init, block); break;
  case enk_throw:
    if (throw_of(expr) == nullptr) break;
    visit_type(throw_of(expr)->type, block);
    traverse_optional(throw_of(expr)->expr, block);
    traverse_optional_init(throw_of(expr)->dynamic_init, block);
    break;
  case enk_condition:
    traverse_optional_init(condition_of(expr)->dynamic_init, block);
    traverse_optional(condition_of(expr)->expr, block);
    break;
  case enk_lifetime_wrapper: traverse_optional(lifetime_wrapper_of(expr).expr, block); break;
  case enk_typeid:
    visit_type(typeid_of(expr).type, block);
    traverse_optional(typeid_of(expr).expr, block);
    break;
  case enk_sizeof:
  case enk_sizeof_pack:
    if (sizeof_of(expr).is_template) break;
    if (sizeof_of(expr).is_type) {
      visit_type(sizeof_of(expr).type, block);
    } else {
      traverse_optional(sizeof_of(expr).expr, block);
    }
    break;
  case enk_statement_expr: traverse_statement_list(statement_of(expr), block); break;
  case enk_lowered_eh_construct:
    if (eh_construct_of(expr).kind == lek_internal_try) {
      traverse_expr_list(eh_construct_of(expr).operands, block);
    }
    break;
  case enk_wrapper_call: traverse_expr_list(wrapper_call_args_of(expr), block); break;
  case enk_routine: visit_routine(routine_of(expr), block); break;
  case enk_type_operand: visit_type(type_operand_of(expr), block); break;
  case enk_builtin_operation:
    traverse_expr_list(builtin_operation_of(expr).first_argument, block);
    break;
  case enk_error:
  case enk_variable:
  case enk_field:
  case enk_address_of_ellipsis:
  case enk_temp_ref:
  case enk_variable_marker:
  case enk_param_ref: break;
  case enk_last: unexpected_kind("expression node");
  }
}

void traverse_expr(an_expr_node *expr, a_block *block)
{
  check_recursion();
  if (block->follow_lvalue_casts || block->follow_class_casts) {
    expr = skip_followed_casts(expr, block);
  }
  visit_type(expr->type, block);
  if (block->expr_callback != nullptr) block->expr_callback(expr, block);
  if (block->stop) return;
  if (block->skip_subtree) {
    block->skip_subtree = false;
    return;
  }
  traverse_parts_of_expr(expr, block);
  if (block->expr_end_callback != nullptr && !block->stop) block->expr_end_callback(expr, block);
}

// The next operand is read first: an end callback may rewrite the node.
void traverse_expr_list(an_expr_node *list, a_block *block)
{
  while (list != nullptr && !block->stop) {
    an_expr_node *next = list->next;
    traverse_expr(list, block);
    list = next;
  }
}

// --- Statements ----------------------------------------------------------------------------------

void traverse_statement_list(a_statement *list, a_block *block)
{
  for (; list != nullptr && !block->stop; list = list->next)
    traverse_statement(list, block);
}

static void traverse_for_supplement(a_for_supplement *supplement, a_block *block)
{
  traverse_optional(supplement->increment_expr, block);
  traverse_statement_list(supplement->pre_test_statement, block);
  traverse_statement_list(supplement->pre_increment_statement, block);
}

void traverse_statement(a_statement *statement, a_block *block)
{
  check_recursion();
  if (block->stmt_callback != nullptr) {
    block->stmt_callback(statement, block);
    if (parts_are_skipped(block)) return;
  }
  traverse_statement_list(statement->pre_statement, block);
  if (statement->kind == stmk_for) {
    traverse_statement_list(for_supplement_of(statement)->init_statement, block);
  }
  traverse_optional(statement->expr, block);
  if (block->stop) return;
  switch (statement->kind) {
  case stmk_if:
    traverse_statement_list(then_statement_of(statement), block);
    traverse_statement_list(else_statement_of(statement), block);
    break;
  case stmk_while:
  case stmk_do:
  case stmk_switch: traverse_statement_list(body_of(statement), block); break;
  case stmk_for:
    traverse_for_supplement(for_supplement_of(statement), block);
    traverse_statement_list(body_of(statement), block);
    break;
  case stmk_block: traverse_statement_list(first_statement_of(statement), block); break;
  case stmk_case:
    if (case_entry_of(statement)->low_value != nullptr) {
      traverse_constant(case_entry_of(statement)->low_value, block);
    }
    if (case_entry_of(statement)->high_value != nullptr) {
      traverse_constant(case_entry_of(statement)->high_value, block);
    }
    break;
  case stmk_return:
  case stmk_init: traverse_optional_init(dynamic_init_of(statement), block); break;
  case stmk_asm:
    for (an_asm_operand *operand = asm_entry_of(statement)->operands;
         operand != nullptr && !block->stop; operand = operand->next) {
      traverse_expr(operand->expr, block);
    }
    break;
  case stmk_try:
    traverse_statement_list(try_supplement_of(statement)->try_block, block);
    for (a_handler *handler = try_supplement_of(statement)->handlers;
         handler != nullptr && !block->stop; handler = handler->next) {
      traverse_statement_list(handler->body, block);
    }
    break;
  case stmk_vla_decl: traverse_optional(vla_dimension_of(statement)->expr, block); break;
  case stmk_expr:
  case stmk_goto:
  case stmk_label:
  case stmk_decl_entities:
  case stmk_type_or_var_decl:
  case stmk_computed_goto:
  case stmk_vla_dealloc: break;
  case stmk_last: unexpected_kind("statement");
  }
}
