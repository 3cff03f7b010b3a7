// misra_routine.cpp - rules on functions: their prototypes, their exits, assembly in them.
// Entry:   check_routine_for_misra_violations, check_routine_params.
#include "check/misra.h"
#include "check/misra_private.h"
#include "errors/error.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "parse/scope_stk.h"

//---------------------------------------------------------------------------------------------
// Prototypes (16.3)

// 1472 at the first that has no name; `pos` is for one that has no position.
static void check_routine_params_for_names(a_param_type *params, a_source_position pos)
{
  for (; params != nullptr; params = params->next) {
    if (params->name != nullptr) continue;
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_16_3,
                   is_null_position(params->position) ? pos : params->position);
    return;
  }
}

void check_routine_params(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind != tk_routine || !routine_supplement_of(type)->is_prototyped) return;
  check_routine_params_for_names(routine_supplement_of(type)->param_types, error_position);
}

//---------------------------------------------------------------------------------------------
// Assembly (2.1)

struct a_code_mixture {
  bool has_asm;
  bool has_code;
};

// Blocks and returns are what a function needs around its assembly.
static void note_kind_of_code(a_statement *statement, an_expr_or_stmt_traversal_block *block)
{
  a_code_mixture *mixture = (a_code_mixture *)block->data;
  if (statement->kind == stmk_asm)
    mixture->has_asm = true;
  else if (statement->kind != stmk_block && statement->kind != stmk_return &&
           statement->kind != stmk_decl_entities)
    mixture->has_code = true;
}

static bool routine_mixes_asm_and_code(a_statement *body)
{
  a_code_mixture mixture = {false, false};
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.stmt_callback = note_kind_of_code;
  block.data = &mixture;
  traverse_statement(body, &block);
  return mixture.has_asm && mixture.has_code;
}

//---------------------------------------------------------------------------------------------
// Exits (14.7)

struct a_return_count {
  int number;
  a_statement *last;
  a_source_position second;
};

static void count_return(a_statement *statement, an_expr_or_stmt_traversal_block *block)
{
  if (statement->kind != stmk_return || statement->is_compiler_generated) return;
  a_return_count *count = (a_return_count *)block->data;
  if (++count->number == 2) count->second = statement->start_position;
  count->last = statement;
}

static bool is_last_statement(const a_statement *block, const a_statement *wanted)
{
  while (block != nullptr && block->kind == stmk_block) {
    const a_statement *last = first_statement_of(block);
    while (last != nullptr && last->next != nullptr)
      last = last->next;
    block = last;
  }
  return block == wanted;
}

// A body that ends without a return statement has its exit at the end.
static void check_exits(a_source_position position, a_statement *body)
{
  a_return_count count = {0, nullptr, null_source_position};
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.stmt_callback = count_return;
  block.data = &count;
  traverse_statement(body, &block);
  if (count.number > 1) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_14_7, count.second);
  } else if (count.number == 1 && !is_last_statement(body, count.last)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_14_7, position);
  }
}

//---------------------------------------------------------------------------------------------
// The body

// The declarator of the latest declaration, which has the body.
static a_source_position position_of_definition(const a_routine *routine)
{
  const a_decl_position_supplement *supplement = routine->source_corresp.decl_position_supplement;
  return supplement != nullptr ? supplement->declarator_range.start
                               : routine->source_corresp.decl_position;
}

// The function's scope is the innermost one on the scope stack.
void check_routine_for_misra_violations(a_routine *routine)
{
  a_scope *scope = scope_stack[depth_innermost_function_scope].il_scope;
  a_statement *body = scope != nullptr ? scope->assoc_block : nullptr;
  if (body == nullptr) return;
  a_source_position position = position_of_definition(routine);
  // Whether a rule is on is asked for the place that the messages are about.
  a_source_position saved_position = error_position;
  error_position = position;
  if (misra_c_2004_generate_diagnostic(ec_misra_c_2004_16_7, misra_advisory_severity)) {
    check_pointer_parameters(scope, body);
  }
  if (routine_mixes_asm_and_code(body)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_2_1, position);
  }
  check_statements(body);
  check_exits(position, body);
  error_position = saved_position;
}
