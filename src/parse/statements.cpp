// statements.cpp - the statement scanner: dispatch, blocks, expression statements, the flow words.
// Owns:    struct_stmt_stack and the three flow words.
// Rule:    no flow graph is built: three words say what control reaches, merged where paths meet.
// Entry:   compound_statement, add_statement_at_stmt_pos, scan_statement.
// See:     C99 6.8; GNU extensions are marked "GNU".
#include "parse/statements.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/source_input.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "mem/stack_limit.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/exprutil.h"
#include "parse/func_def.h"
#include "parse/scope_stk.h"
#include "parse/statements_parts.h"
#include "parse/symbol_ref.h"

static constexpr int stmt_stack_growth = 30;

a_struct_stmt_stack_entry *struct_stmt_stack;
static int size_struct_stmt_stack;
int depth_stmt_stack = -1;
int struct_stmt_stack_base;
bool curr_stmt_reachable;
bool end_reachable;
bool unreachable_reported;
// A label was read and no statement behind it yet.
static bool directly_after_label;

//---------------------------------------------------------------------------------------------
// Flow words

a_flow_words curr_flow()
{
  return {curr_stmt_reachable, end_reachable, unreachable_reported};
}

void set_flow(a_flow_words flow)
{
  curr_stmt_reachable = flow.stmt_reachable;
  end_reachable = flow.end_reachable;
  unreachable_reported = flow.reported;
}

a_flow_words merged_flow(a_flow_words a, a_flow_words b)
{
  return {a.stmt_reachable || b.stmt_reachable, a.end_reachable || b.end_reachable,
          a.reported || b.reported};
}

static bool misra_wants_reachable_code()
{
  return check_misra_c_2004 &&
         misra_c_2004_generate_diagnostic(ec_misra_c_2004_14_1, misra_required_severity);
}

// The rule speaks of all code, whatever makes it unreachable.
static void report_unreachable(an_error_code code, a_source_position position)
{
  if (misra_wants_reachable_code()) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_14_1, position);
  } else {
    pos_warning(code, position);
  }
}

void warn_if_code_is_unreachable(an_error_code code, const a_source_position *position)
{
  if (curr_stmt_reachable || unreachable_reported) return;
  unreachable_reported = true;
  report_unreachable(code, *position);
}

// The constant operand that decides the condition; a conversion to bool and the left of a comma are
// looked through.
static a_constant *deciding_constant(an_expr_node *expr)
{
  while (expr != nullptr && expr->kind == enk_operation) {
    if (op_of(expr) == eok_cast_to_bool)
      expr = first_operand_of(expr);
    else if (op_of(expr) == eok_comma)
      expr = second_operand_of(expr);
    else
      return nullptr;
  }
  if (expr == nullptr || expr->kind != enk_constant) return nullptr;
  a_constant *constant = constant_of(expr);
  return constant->kind == ck_integer || constant->kind == ck_float ? constant : nullptr;
}

bool is_constant_true(an_expr_node *expr)
{
  a_constant *constant = deciding_constant(expr);
  return constant != nullptr && !is_zero_constant(constant);
}

bool is_constant_false(an_expr_node *expr)
{
  a_constant *constant = deciding_constant(expr);
  return constant != nullptr && is_zero_constant(constant);
}

//---------------------------------------------------------------------------------------------
// The stack of open statements

void push_stmt_entry(a_struct_stmt_kind kind, a_statement *statement)
{
  if (depth_stmt_stack + 1 >= size_struct_stmt_stack) {
    int new_size = size_struct_stmt_stack + stmt_stack_growth;
    if (new_size < 2 * size_struct_stmt_stack) new_size = 2 * size_struct_stmt_stack;
    struct_stmt_stack = (a_struct_stmt_stack_entry *)realloc_buffer(
        (char *)struct_stmt_stack, size_struct_stmt_stack * sizeof(a_struct_stmt_stack_entry),
        new_size * sizeof(a_struct_stmt_stack_entry));
    size_struct_stmt_stack = new_size;
  }
  bool in_statement_expression =
      depth_stmt_stack >= struct_stmt_stack_base && top_stmt_entry()->in_statement_expression;
  a_struct_stmt_stack_entry *entry = &struct_stmt_stack[++depth_stmt_stack];
  memset((void *)entry, 0, sizeof(*entry));
  entry->kind = kind;
  entry->statement = statement;
  entry->saved_flags = curr_flow();
  entry->scope_depth = -1;
  entry->in_statement_expression = in_statement_expression;
}

static bool is_loop_kind(a_struct_stmt_kind kind)
{
  return kind == ssk_while || kind == ssk_do || kind == ssk_for;
}

// The words behind the statement, its break label aside.
static void merge_flow_at_end(a_struct_stmt_stack_entry *entry, an_expr_node *condition)
{
  a_flow_words merged = merged_flow(entry->merged_flags, curr_flow());
  switch (entry->kind) {
  case ssk_while:
  case ssk_for: {
    bool endless =
        entry->kind == ssk_for && condition == nullptr ? true : is_constant_true(condition);
    set_flow(endless ? dead_flow : merged_flow(curr_flow(), entry->saved_flags));
    break;
  }
  case ssk_do:
    if (is_constant_true(condition)) set_flow(dead_flow);
    break;
  case ssk_switch: {
    bool has_default = switch_supplement_of(entry->statement)->default_case != nullptr;
    set_flow(has_default ? merged : merged_flow(merged, entry->saved_flags));
    break;
  }
  case ssk_if: {
    bool always = !entry->in_else_part && is_constant_true(condition);
    set_flow(entry->in_else_part || always ? merged : merged_flow(merged, entry->saved_flags));
    break;
  }
  case ssk_try: set_flow(merged); break;
  case ssk_block: break;
  }
}

// A loop in dead code that no label lets control into.
static void report_unreachable_loop(a_struct_stmt_stack_entry *entry)
{
  if (!entry->was_unreachable) return;
  if (entry->contains_label || entry->contains_case) return;
  report_unreachable(ec_loop_not_reachable, entry->statement->start_position);
  unreachable_reported = true;
}

void pop_stmt_entry(an_expr_node *condition)
{
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  merge_flow_at_end(entry, condition);
  report_unreachable_loop(entry);
  a_label *break_label = entry->break_label;
  bool break_is_live = entry->break_is_live;
  bool contains_label = entry->contains_label, contains_case = entry->contains_case;
  if (entry->kind == ssk_switch) contains_case = false;
  if (entry->kind == ssk_block) close_flow_block(entry);
  --depth_stmt_stack;
  if (depth_stmt_stack >= struct_stmt_stack_base) {
    a_struct_stmt_stack_entry *outer = top_stmt_entry();
    outer->contains_label |= contains_label;
    outer->contains_case |= contains_case;
    outer->has_statements = true;
    outer->has_executable_statement = true;
  }
  if (break_label != nullptr) place_label(break_label, break_is_live, &pos_curr_token);
}

// A jump may leave a statement expression.
int find_enclosing_loop(bool switch_too)
{
  for (int depth = depth_stmt_stack; depth >= struct_stmt_stack_base; --depth) {
    a_struct_stmt_kind kind = struct_stmt_stack[depth].kind;
    if (is_loop_kind(kind) || (switch_too && kind == ssk_switch)) return depth;
  }
  return -1;
}

int find_enclosing_switch()
{
  for (int depth = depth_stmt_stack; depth >= struct_stmt_stack_base; --depth) {
    if (struct_stmt_stack[depth].kind == ssk_switch) return depth;
    if (struct_stmt_stack[depth].in_statement_expression_top) return -1;
  }
  return -1;
}

void new_struct_stmt_stack(a_struct_stmt_stack_state *state)
{
  state->base = struct_stmt_stack_base;
  state->curr_stmt_reachable = curr_stmt_reachable;
  state->end_reachable = end_reachable;
  state->unreachable_reported = unreachable_reported;
  state->flow_block = curr_flow_block();
  state->flow_context = curr_flow_context;
  struct_stmt_stack_base = depth_stmt_stack + 1;
  set_flow(live_flow);
  reset_flow_of_function();
}

void restore_struct_stmt_stack(const a_struct_stmt_stack_state *state)
{
  depth_stmt_stack = struct_stmt_stack_base - 1;
  struct_stmt_stack_base = state->base;
  set_flow({state->curr_stmt_reachable, state->end_reachable, state->unreachable_reported});
  set_curr_flow_block((a_flow_block *)state->flow_block);
  curr_flow_context = state->flow_context;
}

bool in_statement_context()
{
  return depth_innermost_function_scope >= 0 && depth_stmt_stack >= struct_stmt_stack_base;
}

bool inside_statement_expression()
{
  return in_statement_context() && top_stmt_entry()->in_statement_expression;
}

//---------------------------------------------------------------------------------------------
// Adding

void link_statement(a_statement *statement)
{
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  *entry->insertion_pointer = statement;
  entry->insertion_pointer = &statement->next;
  entry->last_statement = statement;
  entry->has_statements = true;
}

// A function that never returns must not (GNU attribute).
static void check_return_of_noreturn(const a_source_position *position)
{
  a_routine *routine = curr_routine();
  if (routine != nullptr && routine->is_noreturn && end_reachable) {
    pos_warning(ec_noreturn_function_does_return, *position);
  }
}

static void follow_flow(a_statement_kind kind, const a_source_position *position)
{
  switch (kind) {
  case stmk_return: check_return_of_noreturn(position); [[fallthrough]];
  case stmk_goto:
  case stmk_computed_goto:
    // One message for a dead region: what ends dead code opens no new one.
    set_flow({false, false, !curr_stmt_reachable && unreachable_reported});
    break;
  case stmk_label:
  case stmk_case: set_flow(live_flow); break;
  default: break;
  }
}

static bool is_executable(a_statement_kind kind)
{
  return kind != stmk_decl_entities && kind != stmk_vla_decl && kind != stmk_type_or_var_decl &&
         kind != stmk_init;
}

a_statement *add_statement_at_stmt_pos(a_statement_kind kind, const a_source_position *position)
{
  a_statement *statement = alloc_statement(kind);
  statement->start_position = *position;
  statement->end_position = *position;
  statement->is_unreachable = !curr_stmt_reachable;
  if (kind == stmk_init) {
    statement->follows_exec_statement = top_stmt_entry()->has_executable_statement;
  }
  link_statement(statement);
  if (is_executable(kind)) top_stmt_entry()->has_executable_statement = true;
  follow_flow(kind, position);
  return statement;
}

void set_vla_size_statement(a_vla_dimension *dimension, const a_source_position *position)
{
  a_statement *statement = add_statement_at_stmt_pos(stmk_vla_decl, position);
  vla_dimension_of(statement) = dimension;
}

// C++: lowering places local entities by this statement; C has them at the start of their block.
void record_entity_in_decl_stmt_if_needed(a_symbol *symbol)
{
  if (C_dialect != 2 || !in_statement_context()) return;
  a_statement *statement = top_stmt_entry()->decl_statement;
  if (statement == nullptr) return;
  an_il_entry_kind kind;
  void *entity = il_entry_for_symbol_null_okay(symbol, &kind);
  if (entity == nullptr) return;
  an_il_entity_list_entry *record = alloc_il_entity_list_entry(kind, entity);
  an_il_entity_list_entry **link = &entities_of(statement);
  while (*link != nullptr)
    link = &(*link)->next;
  *link = record;
}

//---------------------------------------------------------------------------------------------
// Scopes of constructs

bool push_construct_scope()
{
  if (!c99_mode && C_dialect != 2) return false;
  push_scope(sck_block, -1, nullptr, nullptr);
  return true;
}

// The scope becomes a block around the statement where something was declared in it.
void pop_construct_scope(bool pushed, a_statement *statement)
{
  if (!pushed) return;
  a_scope *scope = top_scope()->il_scope;
  pop_scope();
  if (scope == nullptr) return;
  change_statement_into_block(statement);
  block_supplement_of(statement)->scope = scope;
  scope->assoc_block = statement;
}

static void wrap_list_in_block(a_statement **place, a_scope *scope,
                               const a_source_position *position)
{
  a_statement *block = alloc_statement(stmk_block);
  block->start_position = *position;
  block->end_position = curr_construct_end_position;
  first_statement_of(block) = *place;
  block_supplement_of(block)->scope = scope;
  block_supplement_of(block)->end_position = curr_construct_end_position;
  block_supplement_of(block)->is_compiler_generated = true;
  if (scope != nullptr) scope->assoc_block = block;
  *place = block;
}

void scan_dependent_statement(a_statement **place)
{
  a_source_position position = pos_curr_token;
  int depth = depth_stmt_stack;
  top_stmt_entry()->insertion_pointer = place;
  bool pushed = curr_token != tok_lbrace && push_construct_scope();
  if (is_decl_start(0) && curr_token != tok_static_assert) {
    pos_error(ec_dependent_stmt_is_declaration, pos_curr_token);
  }
  scan_statement();
  check(depth_stmt_stack == depth);
  a_scope *scope = nullptr;
  if (pushed) {
    scope = top_scope()->il_scope;
    pop_scope();
  }
  bool is_single = *place != nullptr && (*place)->next == nullptr;
  if (!is_single || scope != nullptr) wrap_list_in_block(place, scope, &position);
}

void scan_dead_dependent_statement(a_statement **place)
{
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  bool had_label = entry->contains_label, had_case = entry->contains_case;
  entry->contains_label = entry->contains_case = false;
  a_source_position position = pos_curr_token;
  bool is_reported = entry->saved_flags.stmt_reachable && misra_wants_reachable_code();
  scan_dependent_statement(place);
  entry = top_stmt_entry();
  if (is_reported && *place != nullptr && !entry->contains_label && !entry->contains_case) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_14_1, position);
  }
  entry->contains_label |= had_label;
  entry->contains_case |= had_case;
}

//---------------------------------------------------------------------------------------------
// Expression statements

static bool is_call_of_noreturn(an_expr_node *expr)
{
  if (!is_operation(expr, eok_call)) return false;
  a_routine *routine = routine_from_function_expr(first_operand_of(expr));
  return routine != nullptr && routine->is_noreturn;
}

static bool is_misra_call_that_ends_the_program(an_expr_node *expr)
{
  if (!is_operation(expr, eok_call) || !misra_wants_reachable_code()) return false;
  a_routine *routine = routine_from_function_expr(first_operand_of(expr));
  const char *name = routine != nullptr ? routine->source_corresp.name : nullptr;
  return name != nullptr &&
         (strcmp(name, "abort") == 0 || strcmp(name, "exit") == 0 || strcmp(name, "_exit") == 0);
}

static void follow_flow_of_expression(an_expr_node *expr)
{
  while (expr->kind == enk_operation && is_cast_operation_node(expr) && is_void_type(expr->type)) {
    expr = first_operand_of(expr);
  }
  if (expr->kind == enk_throw || is_misra_call_that_ends_the_program(expr)) {
    set_flow(dead_flow);
  } else if (is_call_of_noreturn(expr)) {
    end_reachable = false;
    unreachable_reported = true;
    curr_stmt_reachable = false;
  }
}

static void expression_statement(bool after_extension)
{
  a_source_position position = pos_curr_token;
  warn_if_code_is_unreachable(ec_code_is_unreachable, &position);
  add_stop_token(tok_semicolon);
  bool is_value_position = top_stmt_entry()->in_statement_expression_top;
  an_expr_node *expr = scan_void_expression(false, after_extension, is_value_position);
  a_statement *statement = add_statement_at_stmt_pos(stmk_expr, &position);
  statement->expr = expr;
  statement->end_position = curr_construct_end_position;
  follow_flow_of_expression(expr);
  remove_stop_token(tok_semicolon);
  required_token(tok_semicolon, ec_exp_semicolon);
}

//---------------------------------------------------------------------------------------------
// Declarations in a block

static bool reports_declaration_after_statement()
{
  return !c99_mode && C_dialect != 2 && !gcc_mode;
}

static void block_declaration(bool after_extension)
{
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  if (entry->has_executable_statement && entry->kind == ssk_block &&
      reports_declaration_after_statement()) {
    pos_diagnostic(strict_ansi_mode ? strict_ansi_error_severity : es_error,
                   ec_declaration_after_statements, pos_curr_token);
  }
  if (directly_after_label && C_dialect != 2) {
    pos_error(ec_labeled_declaration, pos_curr_token);
  }
  if (C_dialect == 2) {
    a_statement *statement = add_statement_at_stmt_pos(stmk_decl_entities, &pos_curr_token);
    top_stmt_entry()->decl_statement = statement;
  }
  local_declaration(false, after_extension);
  if (in_statement_context()) top_stmt_entry()->decl_statement = nullptr;
}

// In C++ a statement that could be either is a declaration.
static bool at_declaration()
{
  return C_dialect == 2 ? is_decl_not_expr(0) : is_decl_start(0);
}

//---------------------------------------------------------------------------------------------
// Dispatch

// A colon directly behind the identifier?  Most statements are told from the next character alone.
static bool at_label()
{
  if (curr_token != tok_identifier) return false;
  if (!any_initial_get_token_tests_needed) {
    const char *place = curr_char_loc;
    while (*place == ' ' || *place == '\t')
      ++place;
    switch (*place) {
    case '=':
    case '(':
    case '[':
    case '-':
    case '+':
    case '.':
    case ';':
    case '*':
    case ',':
    case '<':
    case '>':
    case '&':
    case '|':
    case '^':
    case '!':
    case ')':
    case '}': return false;
    default: break;
    }
  }
  return next_token() == tok_colon; // a name behind the identifier may be a macro of the colon
}

static void empty_statement()
{
  if (check_misra_c_2004) misra_hooks.check_null_statement(pos_curr_token);
  get_token();
}

static void asm_statement()
{
  warn_if_code_is_unreachable(ec_code_is_unreachable, &pos_curr_token);
  add_stop_token(tok_semicolon);
  asm_declaration(true, true, nullptr);
  remove_stop_token(tok_semicolon);
  required_token(tok_semicolon, ec_exp_semicolon);
}

static void closing_brace_in_place_of_statement(bool after_label)
{
  if (after_label) {
    pos_diagnostic(strict_ansi_mode ? strict_ansi_error_severity : es_warning, ec_exp_statement,
                   pos_curr_token);
  } else {
    syntax_error(ec_exp_statement);
  }
}

static void misplaced_clause()
{
  unsigned sequence_number = curr_token_sequence_number;
  syntax_error(ec_exp_statement);
  if (curr_token_sequence_number == sequence_number && curr_token != tok_end_of_source) get_token();
}

static void try_statement()
{
  if (inside_statement_expression()) {
    pos_error(ec_bad_statement_in_statement_expr, pos_curr_token);
  }
  misplaced_clause();
}

// GNU: `__extension__` opens both forms; what stands behind it tells them apart.
static void declaration_or_expression()
{
  bool after_extension = curr_token == tok_extension;
  while (curr_token == tok_extension)
    get_token();
  if (at_declaration())
    block_declaration(after_extension);
  else
    expression_statement(after_extension);
}

static void dispatch_statement(bool after_label)
{
  switch (curr_token) {
  case tok_lbrace: compound_statement(false, 0, false, false); break;
  case tok_rbrace: closing_brace_in_place_of_statement(after_label); break;
  case tok_semicolon: empty_statement(); break;
  case tok_break: break_statement(); break;
  case tok_case: case_label(); break;
  case tok_default: default_label(); break;
  case tok_continue: continue_statement(); break;
  case tok_do: do_statement(); break;
  case tok_for: for_statement(); break;
  case tok_while: while_statement(); break;
  case tok_if: if_statement(); break;
  case tok_return: return_statement(); break;
  case tok_switch: switch_statement(); break;
  case tok_try: try_statement(); break;
  case tok_goto: goto_statement(); break;
  case tok_asm:
  case tok_gnu_asm: asm_statement(); break;
  case tok_else:
  case tok_catch: misplaced_clause(); break;
  case tok_end_of_source: syntax_error(ec_exp_statement); break;
  default: declaration_or_expression(); break;
  }
}

static bool is_statement_label()
{
  return curr_token == tok_case || curr_token == tok_default || at_label();
}

// Labels in front of a statement are read in a loop: a long row of cases must not nest.
static void labels_in_front()
{
  for (;;) {
    if (curr_token == tok_case)
      case_label();
    else if (curr_token == tok_default)
      default_label();
    else if (at_label())
      label_definition();
    else
      return;
  }
}

void scan_statement()
{
  check_recursion();
  bool pragmas_wait = select_curr_construct_pragmas(false);
  a_statement **place = top_stmt_entry()->insertion_pointer;
  bool after_label = is_statement_label();
  if (after_label) {
    labels_in_front();
    pragmas_wait |= select_curr_construct_pragmas(true);
  }
  bool saved = directly_after_label;
  directly_after_label = after_label;
  dispatch_statement(after_label);
  directly_after_label = saved;
  // Loops and declarations have taken theirs; what is left binds to the statement.
  if (pragmas_wait) process_curr_construct_pragmas(nullptr, *place);
}

//---------------------------------------------------------------------------------------------
// Blocks

// The statements up to the closing brace.
static void statement_list()
{
  add_stop_token(tok_rbrace);
  add_stop_token(tok_semicolon);
  while (token_loop_continues(tok_rbrace)) {
    unsigned sequence_number = curr_token_sequence_number;
    directly_after_label = false;
    scan_statement();
    if (curr_token_sequence_number == sequence_number && token_loop_continues(tok_rbrace)) {
      get_token(); // nothing was taken: leave the token behind
    }
  }
  remove_stop_token(tok_semicolon);
  remove_stop_token(tok_rbrace);
}

static a_statement *open_block(bool is_function_body, bool is_statement_expression)
{
  a_statement *block;
  if (is_function_body || is_statement_expression) {
    block = alloc_statement(stmk_block);
    block->start_position = pos_curr_token;
  } else {
    block = add_statement_at_stmt_pos(stmk_block, &pos_curr_token);
  }
  push_stmt_entry(ssk_block, block);
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  entry->insertion_pointer = &first_statement_of(block);
  entry->is_function_body = is_function_body;
  if (is_statement_expression) {
    entry->in_statement_expression = entry->in_statement_expression_top = true;
    block_supplement_of(block)->is_statement_expr_block = true;
  }
  open_flow_block(entry);
  return block;
}

static void finish_block(a_statement *block, const a_source_position *end_position)
{
  block->end_position = *end_position;
  a_block_supplement *supplement = block_supplement_of(block);
  supplement->end_position = *end_position;
  supplement->end_is_reachable = curr_stmt_reachable;
}

static void bind_scope_to_block(a_statement *block, a_scope *scope)
{
  block_supplement_of(block)->scope = scope;
  if (scope != nullptr) scope->assoc_block = block;
}

a_statement *compound_statement(bool is_function_body, unsigned, bool dont_push_block,
                                bool is_statement_expression)
{
  bool pushes_scope = !is_function_body && !dont_push_block;
  a_statement *block = open_block(is_function_body, is_statement_expression);
  if (pushes_scope) push_scope(sck_block, -1, nullptr, nullptr);
  top_stmt_entry()->scope_depth = depth_scope_stack;
  required_token(tok_lbrace, ec_exp_lbrace);
  if (is_function_body) start_of_function_block();
  if (c99_mode || fixed_point_enabled) check_for_stdc_pragmas();
  if (curr_token == tok_label) local_label_declarations();
  statement_list();
  select_curr_construct_pragmas(true); // what waits for a construct is reported at the scope's end
  a_source_position end_position = pos_curr_token;
  if (is_function_body) implicit_return(&end_position);
  finish_block(block, &end_position);
  if (is_function_body)
    bind_scope_to_block(block, scope_stack[depth_innermost_function_scope].il_scope);
  bool is_kept = is_function_body || is_statement_expression;
  if (is_kept) required_token_no_advance(tok_rbrace, ec_exp_rbrace);
  if (pushes_scope) {
    bind_scope_to_block(block, top_scope()->il_scope);
    pop_scope();
  }
  pop_stmt_entry(nullptr);
  if (!is_kept) required_token(tok_rbrace, ec_exp_rbrace);
  return block;
}

a_statement *open_generated_body()
{
  a_statement *block = open_block(true, false);
  top_stmt_entry()->scope_depth = depth_scope_stack;
  block_supplement_of(block)->is_compiler_generated = true;
  return block;
}

void close_generated_body(a_statement *block)
{
  a_source_position end_position = block->start_position;
  implicit_return(&end_position);
  finish_block(block, &end_position);
  bind_scope_to_block(block, scope_stack[depth_innermost_function_scope].il_scope);
  pop_stmt_entry(nullptr);
}

a_statement *statement_expression_block()
{
  a_statement *block = compound_statement(false, 0, false, true);
  if (curr_token == tok_rbrace) get_token();
  return block;
}

//---------------------------------------------------------------------------------------------
// Initialisation

void statements_one_time_init()
{
}

void statements_init()
{
  depth_stmt_stack = -1;
  struct_stmt_stack_base = 0;
}

void statements_trans_unit_init()
{
  depth_stmt_stack = -1;
  struct_stmt_stack_base = 0;
  directly_after_label = false;
  reset_flow_of_function();
}
