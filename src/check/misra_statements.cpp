// misra_statements.cpp - rules on the form of statements, looked at when the body of a function is complete.
// Rule:    the parser wraps what it has to in blocks marked as generated; only blocks between braces count.
// Entry:   check_statements, check_null_statement.
#include <cstring>

#include "check/misra.h"
#include "check/misra_private.h"
#include "errors/error.h"
#include "il/il_walk.h"
#include "mem/stack_limit.h"

static void check_list(a_statement *list, const a_statement *following);

static void report(an_error_code code, a_source_position position)
{
  pos_diagnostic(misra_required_severity, code, position);
}

//---------------------------------------------------------------------------------------------
// Blocks

bool is_source_block(const a_statement *statement)
{
  return statement != nullptr && statement->kind == stmk_block &&
         !block_supplement_of(statement)->is_compiler_generated;
}

a_statement *skip_generated_blocks(a_statement *statement)
{
  while (statement != nullptr && statement->kind == stmk_block && !is_source_block(statement)) {
    statement = first_statement_of(statement);
  }
  return statement;
}

// The block between braces that is the dependent statement, or null.
static a_statement *braced_block(a_statement *statement)
{
  statement = skip_generated_blocks(statement);
  return is_source_block(statement) ? statement : nullptr;
}

// The generated label behind a loop or switch to which its `break` jumps; null if none does.
static a_label *break_label_behind(const a_statement *following)
{
  if (following == nullptr || following->kind != stmk_label) return nullptr;
  a_label *label = label_of(following);
  return label->is_break_label ? label : nullptr;
}

static bool is_jump_to(const a_statement *statement, const a_label *label)
{
  return label != nullptr && statement->kind == stmk_goto && label_of(statement) == label;
}

//---------------------------------------------------------------------------------------------
// Loops (13.5, 14.6, 14.8)

struct a_jump_count {
  const a_label *label;
  int number;
};

static void count_jump(a_statement *statement, an_expr_or_stmt_traversal_block *block)
{
  a_jump_count *count = (a_jump_count *)block->data;
  if (is_jump_to(statement, count->label)) ++count->number;
}

static int count_loop_breaks(a_statement *loop, const a_statement *following)
{
  a_jump_count count = {break_label_behind(following), 0};
  if (count.label == nullptr) return 0;
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.stmt_callback = count_jump;
  block.data = &count;
  traverse_statement_list(body_of(loop), &block);
  return count.number;
}

// A walk of an expression in search of a variable.
struct a_counter_search {
  const a_variable *variable;
  bool must_change; // is assigned to, stepped, or handed out by its address
  bool found;
};

static bool refers_to(an_expr_node *expr, const a_variable *variable);

static void look_for_counter(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  a_counter_search *search = (a_counter_search *)block->data;
  if (search->must_change) {
    if (expr->kind != enk_operation) return;
    an_expr_operator_kind op = op_of(expr);
    bool changes = (op >= eok_pre_incr && op <= eok_post_decr) ||
                   (op >= eok_assign && op <= eok_struct_assign) || op == eok_address_of;
    search->found |= changes && refers_to(first_operand_of(expr), search->variable);
  } else {
    search->found |= expr->kind == enk_variable && variable_of(expr) == search->variable;
  }
  block->stop = search->found;
}

static bool for_expr_uses_counter(an_expr_node *expr, const a_variable *variable, bool must_change)
{
  a_counter_search search = {variable, must_change, false};
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = look_for_counter;
  block.follow_dynamic_inits = true;
  block.data = &search;
  traverse_expr(expr, &block);
  return search.found;
}

static bool refers_to(an_expr_node *expr, const a_variable *variable)
{
  return for_expr_uses_counter(expr, variable, false);
}

// The first clause sets the variable: by an expression, or as a declaration that initializes it.
static bool init_clause_sets(a_statement *clause, const a_variable *variable)
{
  for (; clause != nullptr; clause = clause->next) {
    if (clause->kind == stmk_init && dynamic_init_of(clause)->variable == variable) return true;
    if (clause->kind == stmk_expr && for_expr_uses_counter(clause->expr, variable, true)) {
      return true;
    }
  }
  return false;
}

struct a_for_header {
  a_statement *init;
  an_expr_node *condition;
  an_expr_node *increment;
  bool is_sound;
};

// A variable that the condition tests: is it a counter that the other two expressions deal with?
static void try_as_counter(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  a_for_header *header = (a_for_header *)block->data;
  if (expr->kind != enk_variable) return;
  const a_variable *variable = variable_of(expr);
  header->is_sound = for_expr_uses_counter(header->increment, variable, true) &&
                     (header->init == nullptr || init_clause_sets(header->init, variable));
  block->stop = header->is_sound;
}

// 13.5: either nothing stands in the header, or a test and a step, with or without an initialization.
static void check_for_header(a_statement *statement)
{
  a_for_supplement *supplement = for_supplement_of(statement);
  a_for_header header = {supplement->init_statement, statement->expr, supplement->increment_expr,
                         false};
  if (header.condition == nullptr || header.increment == nullptr) {
    header.is_sound = header.init == nullptr && header.condition == header.increment;
  } else {
    an_expr_or_stmt_traversal_block block;
    clear_expr_or_stmt_traversal_block(&block);
    block.expr_callback = try_as_counter;
    block.follow_dynamic_inits = true;
    block.data = &header;
    traverse_expr(header.condition, &block);
  }
  if (!header.is_sound) report(ec_misra_c_2004_13_5, statement->start_position);
}

static void check_loop(a_statement *loop, const a_statement *following)
{
  if (braced_block(body_of(loop)) == nullptr) report(ec_misra_c_2004_14_8, loop->start_position);
  if (loop->kind == stmk_for) check_for_header(loop);
  if (count_loop_breaks(loop, following) > 1) report(ec_misra_c_2004_14_6, loop->start_position);
  check_list(body_of(loop), nullptr);
}

//---------------------------------------------------------------------------------------------
// switch (14.8, 15.2, 15.3)

// The last of a list is a break, or a block between braces whose last is.
static bool ends_in_break(const a_statement *last, const a_label *label)
{
  while (last != nullptr && last->kind == stmk_block) {
    const a_statement *inner = first_statement_of(last);
    while (inner != nullptr && inner->next != nullptr)
      inner = inner->next;
    last = inner;
  }
  return last != nullptr && is_jump_to(last, label);
}

static void check_switch_clauses(a_statement *body, const a_label *label)
{
  const a_statement *clause = nullptr; // the label of the clause at hand
  const a_statement *last = nullptr;   // its last statement
  for (a_statement *statement = first_statement_of(body);; statement = statement->next) {
    bool clause_ends = statement == nullptr || statement->kind == stmk_case;
    if (clause_ends && clause != nullptr && last != nullptr && !ends_in_break(last, label)) {
      report(ec_misra_c_2004_15_2, clause->start_position);
    }
    if (statement == nullptr) return;
    if (clause_ends) clause = statement;
    last = clause_ends ? nullptr : statement;
  }
}

static void check_switch(a_statement *statement, const a_statement *following)
{
  a_statement *body = braced_block(body_of(statement));
  if (body == nullptr) report(ec_misra_c_2004_14_8, statement->start_position);
  a_switch_supplement *supplement = switch_supplement_of(statement);
  a_switch_case_entry *last_clause = supplement->default_case;
  if (last_clause == nullptr) {
    report(ec_misra_c_2004_15_3, statement->start_position);
  } else if (last_clause != supplement->last_case) {
    report(ec_misra_c_2004_15_3, last_clause->position);
  }
  if (body != nullptr) check_switch_clauses(body, break_label_behind(following));
  check_list(body_of(statement), nullptr);
}

//---------------------------------------------------------------------------------------------
// if (14.9, 14.10)

static a_statement *else_if_of(a_statement *statement)
{
  a_statement *branch = skip_generated_blocks(else_statement_of(statement));
  return branch != nullptr && branch->kind == stmk_if ? branch : nullptr;
}

// The whole chain of `else if`.
static void check_if(a_statement *statement)
{
  bool is_chain = false;
  for (;;) {
    if (braced_block(then_statement_of(statement)) == nullptr) {
      report(ec_misra_c_2004_14_9, statement->start_position);
    }
    check_list(then_statement_of(statement), nullptr);
    a_statement *next = else_if_of(statement);
    if (next == nullptr) break;
    is_chain = true;
    statement = next;
  }
  bool has_else = !is_null_position(statement->else_position);
  if (has_else && braced_block(else_statement_of(statement)) == nullptr) {
    report(ec_misra_c_2004_14_9, statement->else_position);
  }
  if (is_chain && !has_else) report(ec_misra_c_2004_14_10, statement->start_position);
  check_list(else_statement_of(statement), nullptr);
}

//---------------------------------------------------------------------------------------------
// The walk

static void check_statement(a_statement *statement, const a_statement *following)
{
  check_recursion();
  switch (statement->kind) {
  case stmk_if: check_if(statement); break;
  case stmk_while:
  case stmk_do:
  case stmk_for: check_loop(statement, following); break;
  case stmk_switch: check_switch(statement, following); break;
  case stmk_block:
    // The label behind a loop that was wrapped stands behind the block.
    check_list(first_statement_of(statement), is_source_block(statement) ? nullptr : following);
    break;
  default: break;
  }
}

static void check_list(a_statement *list, const a_statement *following)
{
  for (; list != nullptr; list = list->next)
    check_statement(list, list->next != nullptr ? list->next : following);
}

static void check_statement_expression(an_expr_node *expr, an_expr_or_stmt_traversal_block *)
{
  if (expr->kind == enk_statement_expr) check_list(statement_of(expr), nullptr);
}

void check_statements(a_statement *body)
{
  check_list(first_statement_of(body), nullptr);
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = check_statement_expression;
  block.follow_dynamic_inits = true;
  traverse_statement(body, &block);
}

//---------------------------------------------------------------------------------------------
// Null statements (14.3)

// What stands from `text` to `end` is white space and comments.  A comment that began in an earlier line, or goes on
// in the next, counts as one.
static bool is_blank_text(const char *text, const char *end)
{
  while (text < end) {
    if (*text == ' ' || *text == '\t' || *text == '\f' || *text == '\v') {
      ++text;
    } else if (end - text >= 2 && text[0] == '/' && text[1] == '*') {
      const char *close = text + 2;
      while (end - close >= 2 && !(close[0] == '*' && close[1] == '/'))
        ++close;
      text = end - close >= 2 ? close + 2 : end;
    } else {
      return end - text >= 2 && text[0] == '/' && text[1] == '/';
    }
  }
  return true;
}

// Behind the end of a comment that the line begins in.
static const char *behind_open_comment(const char *text, const char *end)
{
  for (const char *place = text; end - place >= 2; ++place) {
    if (place[0] == '/' && place[1] == '*') return text;
    if (place[0] == '*' && place[1] == '/') return place + 2;
  }
  return text;
}

void check_null_statement(a_source_position position)
{
  if (!misra_c_2004_generate_diagnostic(ec_misra_c_2004_14_3, misra_required_severity)) return;
  const char *line;
  size_t length;
  bool is_alone = false;
  if (source_line_of_position(position, false, &line, &length) && position.column >= 1 &&
      position.column <= length && line[position.column - 1] == ';') {
    const char *place = line + position.column - 1, *end = line + length;
    bool blank_behind = place + 1 == end || place[1] == ' ' || place[1] == '\t';
    is_alone = blank_behind && is_blank_text(behind_open_comment(line, place), place) &&
               is_blank_text(place + 1, end);
  }
  if (!is_alone) report(ec_misra_c_2004_14_3, position);
}
