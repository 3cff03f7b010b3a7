// il_copy.cpp - copies of expression trees with all that hangs on them.
// Rule:    a use of a temporary (enk_temp_ref) in the copy refers to the copy of its
//          initialization. Scopes and named variables are shared: a block printed twice declares
//          them twice.
#include "il/il.h"
#include "mem/stack_limit.h"

namespace {

// Pairs of an initialization and its copy, innermost first; on the stack of the copying routines.
struct a_copied_init {
  a_copied_init *next;
  a_dynamic_init *original;
  a_dynamic_init *copy;
};

struct a_copy_state {
  bool keep_constants;
  a_copied_init *inits;
};

} // namespace

static an_expr_node *copy_tree(const an_expr_node *expr, a_copy_state *state);
static a_statement *copy_statement_list(const a_statement *list, a_copy_state *state);

static an_expr_node *copy_list(const an_expr_node *list, a_copy_state *state)
{
  an_expr_node *head = nullptr;
  an_expr_node **link = &head;
  for (; list != nullptr; list = list->next) {
    *link = copy_tree(list, state);
    link = &(*link)->next;
  }
  return head;
}

static a_constant *copy_constant_in_tree(a_constant *constant, a_copy_state *state)
{
  bool may_be_shared = constant->kind != ck_aggregate && constant->kind != ck_init_repeat &&
                       constant->kind != ck_dynamic_init;
  if (state->keep_constants || may_be_shared) return constant;
  return copy_unshared_constant(constant);
}

static a_dynamic_init *find_copied_init(a_dynamic_init *init, a_copy_state *state)
{
  for (a_copied_init *pair = state->inits; pair != nullptr; pair = pair->next) {
    if (pair->original == init) return pair->copy;
  }
  return nullptr;
}

static a_dynamic_init *copy_init(a_dynamic_init *init, a_copy_state *state)
{
  if (init == nullptr) return nullptr;
  a_dynamic_init *copy = alloc_dynamic_init(init->kind);
  *copy = *init;
  copy->next = nullptr;
  copy->next_destruction = nullptr;
  copy->destruction_lifetime = nullptr;
  a_copied_init *pair = (a_copied_init *)alloc_in_region(0, sizeof(a_copied_init));
  *pair = {state->inits, init, copy};
  state->inits = pair;
  switch (init->kind) {
  case dik_constant:
  case dik_constant_via_temp:
    constant_of(copy) = copy_constant_in_tree(constant_of(init), state);
    break;
  case dik_expression:
  case dik_call_returning_class: expr_of(copy) = copy_tree(expr_of(init), state); break;
  case dik_constructor:
    constructor_of(copy).first_arg = copy_list(constructor_of(init).first_arg, state);
    break;
  case dik_none:
  case dik_zero:
  case dik_bitwise_copy: break;
  case dik_last: unexpected_kind("dynamic initialization");
  }
  return copy;
}

// --- Statements ----------------------------------------------------------------------------------

static an_expr_node *copy_optional(const an_expr_node *expr, a_copy_state *state)
{
  return expr == nullptr ? nullptr : copy_tree(expr, state);
}

static a_for_supplement *copy_for_supplement(const a_for_supplement *from, a_copy_state *state)
{
  a_for_supplement *copy = alloc_curr_entry<a_for_supplement>();
  *copy = *from;
  copy->init_statement = copy_statement_list(from->init_statement, state);
  copy->increment_expr = copy_optional(from->increment_expr, state);
  copy->pre_increment_statement = copy_statement_list(from->pre_increment_statement, state);
  copy->pre_test_statement = copy_statement_list(from->pre_test_statement, state);
  return copy;
}

static an_asm_entry *copy_asm_entry(const an_asm_entry *from, a_copy_state *state)
{
  an_asm_entry *copy = alloc_asm_entry();
  *copy = *from;
  an_asm_operand **link = &copy->operands;
  for (const an_asm_operand *operand = from->operands; operand != nullptr;
       operand = operand->next) {
    an_asm_operand *new_operand = alloc_asm_operand();
    *new_operand = *operand;
    new_operand->expr = copy_tree(operand->expr, state);
    new_operand->next = nullptr;
    *link = new_operand;
    link = &new_operand->next;
  }
  return copy;
}

// A case entry belongs to its statement; the copied switch gets the list of the copies when it
// ends.
static a_switch_case_entry *copy_case_entry(const a_switch_case_entry *from, a_statement *statement)
{
  a_switch_case_entry *copy = alloc_switch_case_entry();
  *copy = *from;
  copy->next = nullptr;
  copy->next_in_value_order = nullptr;
  copy->statement = statement;
  return copy;
}

static void collect_case_entries(a_statement *list, a_switch_supplement *supplement)
{
  for (; list != nullptr; list = list->next) {
    switch (list->kind) {
    case stmk_case: {
      a_switch_case_entry *entry = case_entry_of(list);
      if (entry->low_value == nullptr) supplement->default_case = entry;
      if (supplement->last_case == nullptr) {
        supplement->first_case = entry;
      } else {
        supplement->last_case->next = entry;
      }
      supplement->last_case = entry;
      break;
    }
    case stmk_if:
      collect_case_entries(then_statement_of(list), supplement);
      collect_case_entries(else_statement_of(list), supplement);
      break;
    case stmk_while:
    case stmk_do:
    case stmk_for: collect_case_entries(body_of(list), supplement); break;
    case stmk_block: collect_case_entries(first_statement_of(list), supplement); break;
    default: break;
    }
  }
}

static void copy_parts_of_statement(a_statement *copy, const a_statement *from, a_copy_state *state)
{
  switch (from->kind) {
  case stmk_if:
    then_statement_of(copy) = copy_statement_list(then_statement_of(from), state);
    else_statement_of(copy) = copy_statement_list(else_statement_of(from), state);
    break;
  case stmk_while:
  case stmk_do: body_of(copy) = copy_statement_list(body_of(from), state); break;
  case stmk_for:
    body_of(copy) = copy_statement_list(body_of(from), state);
    for_supplement_of(copy) = copy_for_supplement(for_supplement_of(from), state);
    break;
  case stmk_switch:
    body_of(copy) = copy_statement_list(body_of(from), state);
    switch_supplement_of(copy) = alloc_curr_entry<a_switch_supplement>();
    collect_case_entries(body_of(copy), switch_supplement_of(copy));
    break;
  case stmk_block: {
    a_block_supplement *supplement = alloc_curr_entry<a_block_supplement>();
    *supplement = *block_supplement_of(from);
    block_supplement_of(copy) = supplement;
    first_statement_of(copy) = copy_statement_list(first_statement_of(from), state);
    break;
  }
  case stmk_case: case_entry_of(copy) = copy_case_entry(case_entry_of(from), copy); break;
  case stmk_return:
  case stmk_init: dynamic_init_of(copy) = copy_init(dynamic_init_of(from), state); break;
  case stmk_asm: asm_entry_of(copy) = copy_asm_entry(asm_entry_of(from), state); break;
  case stmk_expr:
  case stmk_goto:
  case stmk_label:
  case stmk_try:
  case stmk_decl_entities:
  case stmk_vla_decl:
  case stmk_type_or_var_decl:
  case stmk_computed_goto:
  case stmk_vla_dealloc: break;
  case stmk_last: unexpected_kind("statement");
  }
}

static a_statement *copy_statement_list(const a_statement *list, a_copy_state *state)
{
  a_statement *head = nullptr;
  a_statement **link = &head;
  for (; list != nullptr; list = list->next) {
    a_statement *copy = copy_statement(list);
    copy->next = nullptr;
    copy->expr = copy_optional(list->expr, state);
    copy->pre_statement = copy_statement_list(list->pre_statement, state);
    copy_parts_of_statement(copy, list, state);
    *link = copy;
    link = &copy->next;
  }
  return head;
}

// --- Nodes ---------------------------------------------------------------------------------------

static void copy_supplements(an_expr_node *copy, const an_expr_node *from, a_copy_state *state)
{
  switch (from->kind) {
  case enk_new_delete: {
    a_new_delete_supplement *supplement = alloc_curr_entry<a_new_delete_supplement>();
    *supplement = *new_delete_of(from);
    supplement->first_arg = copy_list(supplement->first_arg, state);
    supplement->init = copy_init(supplement->init, state);
    supplement->cleanup_init = copy_init(supplement->cleanup_init, state);
    new_delete_of(copy) = supplement;
    break;
  }
  case enk_throw: {
    if (throw_of(from) == nullptr) break;
    a_throw_supplement *supplement = alloc_curr_entry<a_throw_supplement>();
    *supplement = *throw_of(from);
    supplement->expr = copy_optional(supplement->expr, state);
    supplement->dynamic_init = copy_init(supplement->dynamic_init, state);
    throw_of(copy) = supplement;
    break;
  }
  case enk_condition: {
    a_condition_supplement *supplement = alloc_curr_entry<a_condition_supplement>();
    *supplement = *condition_of(from);
    supplement->expr = copy_optional(supplement->expr, state);
    supplement->dynamic_init = copy_init(supplement->dynamic_init, state);
    condition_of(copy) = supplement;
    break;
  }
  default: break;
  }
}

static an_expr_node *copy_tree(const an_expr_node *expr, a_copy_state *state)
{
  check_recursion();
  an_expr_node *copy = copy_node(expr);
  switch (expr->kind) {
  case enk_operation: first_operand_of(copy) = copy_list(first_operand_of(expr), state); break;
  case enk_constant: constant_of(copy) = copy_constant_in_tree(constant_of(expr), state); break;
  case enk_temp_init: dynamic_init_of(copy) = copy_init(dynamic_init_of(expr), state); break;
  case enk_temp_ref: {
    a_dynamic_init *mapped = find_copied_init(dynamic_init_of(expr), state);
    if (mapped != nullptr) dynamic_init_of(copy) = mapped;
    break;
  }
  case enk_lambda:
    lambda_of(copy).dynamic_init = copy_init(lambda_of(expr).dynamic_init, state);
    break;
  case enk_lifetime_wrapper:
    lifetime_wrapper_of(copy).expr = copy_tree(lifetime_wrapper_of(expr).expr, state);
    break;
  case enk_typeid: typeid_of(copy).expr = copy_optional(typeid_of(expr).expr, state); break;
  case enk_sizeof:
  case enk_sizeof_pack:
    if (!sizeof_of(expr).is_type && !sizeof_of(expr).is_template) {
      sizeof_of(copy).expr = copy_optional(sizeof_of(expr).expr, state);
    }
    break;
  case enk_statement_expr:
    statement_of(copy) = copy_statement_list(statement_of(expr), state);
    break;
  case enk_wrapper_call:
    wrapper_call_args_of(copy) = copy_list(wrapper_call_args_of(expr), state);
    break;
  case enk_builtin_operation:
    builtin_operation_of(copy).first_argument =
        copy_list(builtin_operation_of(expr).first_argument, state);
    break;
  case enk_new_delete:
  case enk_throw:
  case enk_condition: copy_supplements(copy, expr, state); break;
  case enk_error:
  case enk_variable:
  case enk_field:
  case enk_address_of_ellipsis:
  case enk_lowered_eh_construct:
  case enk_routine:
  case enk_variable_marker:
  case enk_type_operand:
  case enk_param_ref: break;
  case enk_last: unexpected_kind("expression node");
  }
  return copy;
}

an_expr_node *copy_expr_tree(an_expr_node *expr, bool keep_constants)
{
  a_copy_state state = {keep_constants, nullptr};
  return copy_tree(expr, &state);
}

an_expr_node *copy_list_of_expr_trees(an_expr_node *list, bool keep_constants)
{
  a_copy_state state = {keep_constants, nullptr};
  return copy_list(list, &state);
}
