// il_hooks.cpp - passing the events of completed bodies to the observers.
#include "il/il_hooks.h"
#include "il/il_walk.h"
#include "mem/check.h"

IL_HOOKS_CONTAINER il_hooks;

void IL_HOOKS_CONTAINER::add(IL_HOOKS *hooks)
{
  check(count < max_hooks);
  active[count++] = hooks;
}

static void visit_expression(an_expr_node *expr, an_expr_or_stmt_traversal_block *)
{
  for (IL_HOOKS *hooks : il_hooks) {
    hooks->expression(expr);
    if (is_operation(expr, eok_call)) hooks->function_call(expr);
  }
}

static void visit_initialization(a_dynamic_init *init, an_expr_or_stmt_traversal_block *)
{
  for (IL_HOOKS *hooks : il_hooks)
    hooks->dynamic_variable_initialization(init);
}

void IL_HOOKS_CONTAINER::body_completed(a_routine *routine, a_statement *body)
{
  if (count == 0) return;
  for (IL_HOOKS *hooks : *this)
    hooks->routine_definition(routine);
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = visit_expression;
  block.init_callback = visit_initialization;
  block.follow_dynamic_inits = true;
  if (body != nullptr) traverse_statement(body, &block);
  for (IL_HOOKS *hooks : *this)
    hooks->end_routine_definition(routine);
}
