// stmt_struct.cpp - if, while, do, for, switch with its cases.
// Entry:   if_statement, while_statement, do_statement, for_statement, switch_statement, case_label.
// See:     C99 6.8.4, 6.8.5; case ranges are GNU.
#include "consts/const_ints.h"
#include "consts/folding.h"
#include "driver/flags.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "mem/mem_manage.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/exprutil.h"
#include "parse/scope_stk.h"
#include "parse/statements_parts.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Parts

// The value that a variable begins with, as an expression that gives it to the variable.
static an_expr_node *setting_of_variable(a_variable *variable, a_dynamic_init *init)
{
  an_expr_node *value = init->kind == dik_constant
                            ? alloc_node_for_allocated_constant(constant_of(init))
                            : expr_of(init);
  an_expr_node *target = var_lvalue_expr(variable);
  target->type = make_unqualified_type(target->type);
  return make_binary_node(assignment_operator_for_type(target->type), rvalue_type(target->type),
                          target, value);
}

// C++: `T x = value` as a condition.  The variable gets its value each time the condition is evaluated.
static an_expr_node *declared_condition(bool is_switch)
{
  a_statement *made = nullptr;
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  a_statement **place = entry->insertion_pointer;
  a_source_position position = pos_curr_token;
  entry->insertion_pointer = &made;
  a_symbol *symbol = condition_declaration();
  top_stmt_entry()->insertion_pointer = place;
  if (symbol == nullptr || symbol->kind != sk_variable) return error_node();
  a_variable *variable = variable_of_symbol(symbol);
  if (is_error_type(variable->type)) return error_node();
  a_dynamic_init *init =
      variable->init_kind == initk_dynamic ? dynamic_initializer_of(variable) : nullptr;
  if (init == nullptr || !is_scalar_type(variable->type) ||
      (init->kind != dik_expression && init->kind != dik_constant)) {
    if (init != nullptr)
      pos_st_error(ec_not_supported, position, "an object of this type as a condition");
    return error_node();
  }
  variable->init_kind = initk_none;
  an_expr_node *setting = setting_of_variable(variable, init);
  an_expr_node *value = condition_value_expression(symbol, is_switch);
  if (value->kind == enk_error) return value;
  set_expr_result_not_used(setting);
  return make_comma_node(setting, value);
}

static bool at_declared_condition()
{
  return C_dialect == 2 && is_decl_not_expr(0);
}

static an_expr_node *condition_or_declaration()
{
  return at_declared_condition() ? declared_condition(false)
                                 : scan_boolean_controlling_expression();
}

static an_expr_node *parenthesized_condition()
{
  required_token(tok_lparen, ec_exp_lparen);
  add_stop_token(tok_rparen);
  an_expr_node *condition = condition_or_declaration();
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  return condition;
}

// A loop between declaration and use lets a value come round: see curr_flow_context.
static void open_loop(a_struct_stmt_kind kind, a_statement *statement)
{
  push_stmt_entry(kind, statement);
  if (!curr_stmt_reachable && !unreachable_reported) {
    top_stmt_entry()->was_unreachable = true;
    unreachable_reported = true;
  }
  ++curr_flow_context;
}

static void close_loop(an_expr_node *condition)
{
  --curr_flow_context;
  pop_stmt_entry(condition);
}

static bool declares_variable_length_array(a_statement *block)
{
  a_statement *statement = first_statement_of(block);
  while (statement != nullptr && statement->kind != stmk_vla_decl)
    statement = statement->next;
  return statement != nullptr;
}

// C++: objects die at the end of the block.
static bool has_object_lifetime(a_statement *block)
{
  a_scope *scope = block_supplement_of(block)->scope;
  return scope != nullptr && scope->object_lifetime != nullptr;
}

// `continue` comes here: the end of the body, and out of the scope of arrays of variable length, which nothing
// may jump into (C99 6.8.6.1p1), and of objects that die.
static void place_continue_label(a_statement **body)
{
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  if (entry->continue_label == nullptr) return;
  if ((*body)->kind != stmk_block || declares_variable_length_array(*body) ||
      has_object_lifetime(*body)) {
    a_statement *block = alloc_statement(stmk_block);
    block->start_position = (*body)->start_position;
    block->end_position = (*body)->end_position;
    block_supplement_of(block)->is_compiler_generated = true;
    first_statement_of(block) = *body;
    *body = block;
  }
  a_statement *last = last_statement_in_block(*body);
  entry->insertion_pointer = last != nullptr ? &last->next : &first_statement_of(*body);
  place_label(entry->continue_label, entry->continue_is_live, &pos_curr_token);
}

static void branch_of(bool is_dead, a_statement **place)
{
  if (is_dead)
    scan_dead_dependent_statement(place);
  else
    scan_dependent_statement(place);
}

static void loop_body(a_statement **body, an_expr_node *condition)
{
  branch_of(is_constant_false(condition), body);
  place_continue_label(body);
}

// Adds the statement inside the scope that it has of its own, and gives it what stood in front of it.
static a_statement *begin_construct(a_statement_kind kind, const a_source_position *position,
                                    bool *pushed)
{
  a_pending_pragma *pragmas = extract_curr_construct_pragmas(); // they wait in the scope around
  *pushed = push_construct_scope();
  a_statement *statement = add_statement_at_stmt_pos(kind, position);
  if (pragmas != nullptr) {
    reactivate_curr_construct_pragmas(pragmas);
    process_curr_construct_pragmas(nullptr, statement);
  }
  return statement;
}

//---------------------------------------------------------------------------------------------
// if

static bool is_empty_dependent_statement()
{
  return curr_token == tok_semicolon;
}

void if_statement()
{
  a_source_position position = pos_curr_token;
  warn_if_code_is_unreachable(ec_code_is_unreachable, &position);
  bool pushed;
  a_statement *statement = begin_construct(stmk_if, &position, &pushed);
  push_stmt_entry(ssk_if, statement);
  get_token();
  statement->expr = parenthesized_condition();
  bool is_empty = is_empty_dependent_statement();
  a_source_position empty_position = pos_curr_token;
  add_stop_token(tok_else);
  branch_of(is_constant_false(statement->expr), &then_statement_of(statement));
  remove_stop_token(tok_else);
  if (is_empty && curr_token != tok_else) pos_remark(ec_empty_then_statement, empty_position);
  if (curr_token == tok_else) {
    a_struct_stmt_stack_entry *entry = top_stmt_entry();
    entry->in_else_part = true;
    entry->merged_flags = merged_flow(entry->merged_flags, curr_flow());
    set_flow(entry->saved_flags);
    statement->else_position = pos_curr_token;
    get_token();
    if (is_empty_dependent_statement()) pos_remark(ec_empty_else_statement, pos_curr_token);
    branch_of(is_constant_true(statement->expr), &else_statement_of(statement));
  }
  statement->end_position = curr_construct_end_position;
  pop_stmt_entry(statement->expr);
  pop_construct_scope(pushed, statement);
}

//---------------------------------------------------------------------------------------------
// Loops

void while_statement()
{
  a_source_position position = pos_curr_token;
  bool pushed;
  a_statement *statement = begin_construct(stmk_while, &position, &pushed);
  open_loop(ssk_while, statement);
  get_token();
  statement->expr = parenthesized_condition();
  loop_body(&body_of(statement), statement->expr);
  close_loop(statement->expr);
  pop_construct_scope(pushed, statement);
}

void do_statement()
{
  a_source_position position = pos_curr_token;
  bool pushed;
  a_statement *statement = begin_construct(stmk_do, &position, &pushed);
  open_loop(ssk_do, statement);
  get_token();
  add_stop_token(tok_while);
  loop_body(&body_of(statement), nullptr);
  remove_stop_token(tok_while);
  top_stmt_entry()->do_body_ended = true;
  add_stop_token(tok_semicolon);
  bool has_condition = required_token(tok_while, ec_exp_while);
  statement->expr = has_condition ? parenthesized_condition() : error_node();
  statement->end_position = pos_curr_token;
  remove_stop_token(tok_semicolon);
  required_token(tok_semicolon, ec_exp_semicolon);
  close_loop(statement->expr);
  pop_construct_scope(pushed, statement);
}

// The first clause; statements that it makes go in front of the loop.
static void for_init_clause(a_statement *statement)
{
  top_stmt_entry()->insertion_pointer = &for_supplement_of(statement)->init_statement;
  bool declarations_allowed = c99_mode || C_dialect == 2;
  if (declarations_allowed && curr_token != tok_semicolon && is_decl_start(0)) {
    local_declaration(true);
    return;
  }
  if (curr_token != tok_semicolon) {
    a_source_position position = pos_curr_token;
    an_expr_node *expr = scan_void_expression(false, false, false);
    a_statement *init = add_statement_at_stmt_pos(stmk_expr, &position);
    init->expr = expr;
    init->end_position = curr_construct_end_position;
  }
  required_token(tok_semicolon, ec_exp_semicolon);
}

static void for_condition(a_statement *statement)
{
  a_source_position position = pos_curr_token;
  statement->expr = condition_or_declaration();
  if (check_misra_c_2004 && misra_hooks.expr_refers_to_floating_type(statement->expr)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_13_4, position);
  }
}

static void for_header(a_statement *statement)
{
  required_token(tok_lparen, ec_exp_lparen);
  add_stop_token(tok_rparen);
  add_stop_token(tok_semicolon);
  for_init_clause(statement);
  if (curr_token != tok_semicolon) for_condition(statement);
  required_token(tok_semicolon, ec_exp_semicolon);
  remove_stop_token(tok_semicolon);
  if (curr_token != tok_rparen) {
    for_supplement_of(statement)->increment_expr = scan_void_expression(true, false, false);
  }
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
}

void for_statement()
{
  a_source_position position = pos_curr_token;
  bool has_scope = c99_mode || C_dialect == 2;
  a_statement *statement = add_statement_at_stmt_pos(stmk_for, &position);
  process_curr_construct_pragmas(nullptr, statement);
  if (has_scope) push_for_init_scope();
  open_loop(ssk_for, statement);
  get_token();
  for_header(statement);
  a_misra_loop_counters counters;
  if (check_misra_c_2004) misra_hooks.misra_open_for_body(statement, &counters);
  loop_body(&body_of(statement), statement->expr);
  if (check_misra_c_2004) misra_hooks.misra_close_for_body(&counters);
  if (has_scope) {
    a_scope *scope = top_scope()->il_scope;
    for_supplement_of(statement)->scope = scope;
    if (scope != nullptr) scope->assoc_block = statement;
    pop_scope();
  }
  close_loop(statement->expr);
}

//---------------------------------------------------------------------------------------------
// switch

static bool is_constant_selector(an_expr_node *expr)
{
  return expr->kind == enk_constant && constant_of(expr)->kind != ck_error;
}

static bool has_case_clause(a_statement *statement)
{
  a_switch_case_entry *entry = switch_supplement_of(statement)->first_case;
  while (entry != nullptr && entry->low_value == nullptr)
    entry = entry->next;
  return entry != nullptr;
}

void switch_statement()
{
  a_source_position position = pos_curr_token;
  warn_if_code_is_unreachable(ec_code_is_unreachable, &position);
  bool pushed;
  a_statement *statement = begin_construct(stmk_switch, &position, &pushed);
  push_stmt_entry(ssk_switch, statement);
  get_token();
  required_token(tok_lparen, ec_exp_lparen);
  add_stop_token(tok_rparen);
  a_source_position selector_position = pos_curr_token;
  statement->expr = at_declared_condition() ? declared_condition(true) : scan_integer_expression(0);
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  if (is_constant_selector(statement->expr)) {
    pos_remark(ec_switch_selector_expr_is_constant, selector_position);
  }
  if (check_misra_c_2004 && misra_hooks.is_expr_effectively_boolean(statement->expr, true)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_15_4, selector_position);
  }
  a_struct_stmt_stack_entry *entry = top_stmt_entry();
  entry->case_type = statement->expr->kind == enk_error ? nullptr : statement->expr->type;
  entry->switch_sequence = next_flow_sequence();
  entry->flow_block = curr_flow_block();
  set_flow(dead_flow);
  scan_dependent_statement(&body_of(statement));
  if (check_misra_c_2004 && !has_case_clause(statement)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_15_5, position);
  }
  pop_stmt_entry(nullptr);
  pop_construct_scope(pushed, statement);
}

//---------------------------------------------------------------------------------------------
// Cases

// The values of a switch as a tree of disjoint ranges (a treap, so that order of entry does not matter).
struct a_case_tree {
  a_case_tree *left;
  a_case_tree *right;
  a_switch_case_entry *entry;
  unsigned priority;
};

static bool case_is_signed(a_struct_stmt_stack_entry *switch_entry)
{
  return is_signed_integral_type(switch_entry->case_type);
}

static a_constant *high_value_of(a_switch_case_entry *entry)
{
  return entry->high_value != nullptr ? entry->high_value : entry->low_value;
}

static int compare_values(a_constant *a, a_constant *b, bool is_signed)
{
  return cmp_integer_values(&integer_of(a), is_signed, &integer_of(b), is_signed);
}

static void rotate_up(a_case_tree **link, a_case_tree *child)
{
  a_case_tree *parent = *link;
  if (parent->left == child) {
    parent->left = child->right;
    child->right = parent;
  } else {
    parent->right = child->left;
    child->left = parent;
  }
  *link = child;
}

// Enters the case; returns one that it overlaps, or null.
static a_switch_case_entry *insert_case(a_case_tree **link, a_switch_case_entry *entry,
                                        bool is_signed)
{
  a_case_tree *node = *link;
  if (node == nullptr) {
    static unsigned priority_state = 0x2545F491u;
    node = (a_case_tree *)alloc_in_current_region(sizeof(a_case_tree));
    priority_state ^= priority_state << 13;
    priority_state ^= priority_state >> 17;
    priority_state ^= priority_state << 5;
    node->entry = entry;
    node->priority = priority_state;
    *link = node;
    return nullptr;
  }
  a_switch_case_entry *conflict;
  a_case_tree **branch;
  if (compare_values(high_value_of(entry), node->entry->low_value, is_signed) < 0)
    branch = &node->left;
  else if (compare_values(entry->low_value, high_value_of(node->entry), is_signed) > 0)
    branch = &node->right;
  else
    return node->entry;
  conflict = insert_case(branch, entry, is_signed);
  if (*branch != nullptr && (*branch)->priority > node->priority) rotate_up(link, *branch);
  return conflict;
}

static void add_case_to_struct_stmt_stack_entry(a_switch_case_entry *entry,
                                                a_struct_stmt_stack_entry *switch_entry)
{
  a_switch_supplement *supplement = switch_supplement_of(switch_entry->statement);
  if (supplement->last_case != nullptr)
    supplement->last_case->next = entry;
  else
    supplement->first_case = entry;
  supplement->last_case = entry;
  if (entry->low_value == nullptr) {
    supplement->default_case = entry;
    return;
  }
  if (entry->low_value->kind != ck_integer || high_value_of(entry)->kind != ck_integer) {
    switch_entry->has_case_range_error = true;
  }
  if (switch_entry->has_case_range_error || switch_entry->case_type == nullptr) return;
  a_switch_case_entry *conflict =
      insert_case(&switch_entry->case_tree, entry, case_is_signed(switch_entry));
  if (conflict != nullptr) {
    pos2_diagnostic(es_error, ec_case_label_conflict, entry->position, conflict->position);
  }
}

// The value, converted to the promoted type of the controlling expression.
static a_constant *case_value(a_struct_stmt_stack_entry *switch_entry)
{
  a_constant constant;
  a_source_position position = pos_curr_token;
  scan_integral_constant_expression(&constant);
  if (constant.kind == ck_integer && switch_entry != nullptr &&
      switch_entry->case_type != nullptr) {
    bool not_folded = false;
    type_change_constant(&constant, switch_entry->case_type, true, &not_folded, &position);
  }
  return alloc_shareable_constant(&constant);
}

static bool range_is_empty(a_constant *low, a_constant *high,
                           a_struct_stmt_stack_entry *switch_entry)
{
  if (low->kind != ck_integer || high->kind != ck_integer || switch_entry == nullptr ||
      switch_entry->case_type == nullptr) {
    return false;
  }
  return compare_values(high, low, case_is_signed(switch_entry)) < 0;
}

// MISRA 15.1: the label stands directly in the block that is the body of the switch.
static void check_place_of_case(int switch_depth, const a_source_position *position)
{
  bool in_outer_block = depth_stmt_stack == switch_depth + 1 && top_stmt_entry()->kind == ssk_block;
  if (in_outer_block) return;
  pos_diagnostic(misra_required_severity, ec_misra_c_2004_15_1, *position);
}

static void add_case_statement(a_switch_case_entry *entry, int switch_depth)
{
  if (check_misra_c_2004) check_place_of_case(switch_depth, &entry->position);
  a_statement *statement = add_statement_at_stmt_pos(stmk_case, &entry->position);
  case_entry_of(statement) = entry;
  entry->statement = statement;
  top_stmt_entry()->contains_case = true;
  a_struct_stmt_stack_entry *switch_entry = &struct_stmt_stack[switch_depth];
  check_case_jump(switch_entry, &entry->position);
  add_case_to_struct_stmt_stack_entry(entry, switch_entry);
}

void case_label()
{
  a_source_position position = pos_curr_token;
  int depth = find_enclosing_switch();
  if (depth < 0) pos_error(ec_case_label_must_be_in_switch, position);
  a_struct_stmt_stack_entry *switch_entry = depth >= 0 ? &struct_stmt_stack[depth] : nullptr;
  get_token();
  add_stop_token(tok_colon);
  a_switch_case_entry *entry = alloc_switch_case_entry();
  entry->position = position;
  entry->is_reachable = true;
  entry->low_value = case_value(switch_entry);
  if (curr_token == tok_ellipsis && (gcc_mode || gpp_mode)) {
    entry->range_position = pos_curr_token;
    get_token();
    a_source_position high_position = pos_curr_token;
    entry->high_value = case_value(switch_entry);
    if (range_is_empty(entry->low_value, entry->high_value, switch_entry)) {
      pos_warning(ec_invalid_case_range, high_position);
      depth = -1; // an empty range matches nothing
    }
  }
  remove_stop_token(tok_colon);
  required_token(tok_colon, ec_exp_colon);
  if (depth >= 0)
    add_case_statement(entry, depth);
  else
    set_flow(live_flow); // no second message about what follows
}

void default_label()
{
  a_source_position position = pos_curr_token;
  int depth = find_enclosing_switch();
  bool is_new = false;
  if (depth < 0) {
    pos_error(ec_default_label_must_be_in_switch, position);
  } else if (switch_supplement_of(struct_stmt_stack[depth].statement)->default_case != nullptr) {
    pos_error(ec_default_label_appears_more_than_once, position);
  } else {
    is_new = true;
  }
  get_token();
  required_token(tok_colon, ec_exp_colon);
  if (!is_new) {
    set_flow(live_flow);
    return;
  }
  a_switch_case_entry *entry = alloc_switch_case_entry();
  entry->position = position;
  entry->is_reachable = true;
  add_case_statement(entry, depth);
}
