// lower_gnu.cpp - GNU statement expressions become statements in front of the one that holds them.
// Rule:    what must be evaluated before a statement expression, or only under a condition, is
//          moved out with it.  What a loop's condition or increment moves out becomes part of the
//          loop's body, once in the text: it may hold labels.
// Entry:   lower_sequence_point_expr, lower_gnu_statement_expr, settle_loop_serialization.
#include "driver/flags.h"
#include "errors/error.h"
#include "lower/lower_c99.h"

// --- Placing -------------------------------------------------------------------------------------

// Puts the statement directly in front of the one that is being lowered.
static void place_in_front(a_statement *statement)
{
  a_statement *block = curr_gnu_statement;
  a_statement *moved = turn_statement_into_block(block);
  an_insert_location location;
  set_block_start_insert_location(block, &location);
  insert_statement_full(statement, &location, true);
  curr_gnu_statement = moved;
}

static void set_positions(a_statement *statement)
{
  statement->start_position = curr_gnu_statement->start_position;
  statement->end_position = curr_gnu_statement->end_position;
  statement->is_compiler_generated = true;
}

static void lower_placed_statement(a_statement *statement)
{
  a_saved_context saved;
  save_and_push_context(&saved, nullptr, nullptr);
  lower_c99_statement(statement);
  restore_saved_context(&saved);
}

static a_statement *make_assignment_to(a_variable *variable, an_expr_node *value)
{
  a_statement *statement = make_assignment_statement(var_lvalue_expr(variable), value);
  set_positions(statement);
  return statement;
}

// The operand's value moves to a temporary; the statement that fills it is returned, not yet
// lowered.
static a_statement *hoist_operand_to_temp(an_expr_node *operand, a_variable **variable)
{
  a_type *type = rvalue_type(operand->type);
  *variable = make_lowered_temporary(type);
  a_statement *statement = make_assignment_to(*variable, copy_node(operand));
  place_in_front(statement);
  overwrite_node(operand, lowered_temporary_value(*variable, type));
  return statement;
}

static a_statement *place_if(an_expr_node *condition, a_statement *then_part,
                             a_statement *else_part)
{
  a_statement *statement = alloc_statement(stmk_if);
  set_positions(statement);
  statement->expr = condition;
  then_statement_of(statement) = then_part;
  else_statement_of(statement) = else_part;
  place_in_front(statement);
  return statement;
}

// Set for the full expression that is being lowered: its operators need not be searched when it has
// none.
bool full_expr_has_statement_expression;

// --- Sequence points -----------------------------------------------------------------------------

static void move_out_logical_operator(an_expr_node *expr)
{
  an_expr_node *first = first_operand_of(expr);
  an_expr_node *second = first->next;
  a_variable *first_value;
  a_statement *evaluation = hoist_operand_to_temp(first, &first_value);
  lower_placed_statement(evaluation);
  a_variable *second_value = make_lowered_temporary(rvalue_type(second->type));
  an_expr_node *condition = var_rvalue_expr(first_value);
  if (op_of(expr) == eok_lor) {
    condition = make_operator_node(eok_not, integer_type(ik_int), condition);
  }
  a_statement *assignment = make_assignment_to(second_value, copy_node(second));
  overwrite_node(second, var_rvalue_expr(second_value));
  lower_placed_statement(place_if(condition, assignment, nullptr));
}

static void move_out_comma(an_expr_node *expr)
{
  an_expr_node *first = first_operand_of(expr);
  a_statement *statement = alloc_expr_statement(copy_node(first));
  set_positions(statement);
  place_in_front(statement);
  lower_placed_statement(statement);
  overwrite_node(first, node_for_integer_constant(0, ik_int));
  set_expr_result_not_used(first);
}

static a_statement *branch_statement(an_expr_node *branch, a_variable *result)
{
  an_expr_node *value = copy_node(branch);
  if (result != nullptr) return make_assignment_to(result, value);
  a_statement *statement = alloc_expr_statement(value);
  set_positions(statement);
  return statement;
}

static void move_out_question(an_expr_node *expr)
{
  an_expr_node *condition = first_operand_of(expr);
  an_expr_node *second = condition->next;
  an_expr_node *third = second->next;
  a_variable *condition_value;
  lower_placed_statement(hoist_operand_to_temp(condition, &condition_value));
  bool has_value = !is_void_type(expr->type);
  a_variable *result = has_value ? make_lowered_temporary(rvalue_type(expr->type)) : nullptr;
  a_statement *then_part = branch_statement(second, result);
  a_statement *else_part = branch_statement(third, result);
  bool not_used = expr->result_not_used;
  overwrite_node(expr,
                 has_value ? lowered_temporary_value(result, expr->type) : zero_cast_to_void());
  expr->result_not_used = not_used;
  lower_placed_statement(place_if(var_rvalue_expr(condition_value), then_part, else_part));
}

void lower_sequence_point_expr(an_expr_node *expr)
{
  if (!full_expr_has_statement_expression) return;
  switch (op_of(expr)) {
  case eok_land:
  case eok_lor:
    if (has_statement_expression(second_operand_of(expr))) move_out_logical_operator(expr);
    break;
  case eok_comma:
    if (has_statement_expression(second_operand_of(expr))) move_out_comma(expr);
    break;
  case eok_question:
    if (has_statement_expression(second_operand_of(expr)) ||
        has_statement_expression(third_operand_of(expr))) {
      move_out_question(expr);
    }
    break;
  default: break;
  }
}

// --- Statement expressions -----------------------------------------------------------------------

// The statement that gives the value; null after a message.
static a_statement *find_value_statement(a_statement *block)
{
  check(block != nullptr);
  a_statement *statement = block;
  while (statement != nullptr && statement->kind == stmk_block) {
    statement = last_statement_in_block(statement);
  }
  if (statement == nullptr) {
    pos_error(ec_empty_gnu_statement_expression, block->start_position);
  } else if (statement->kind == stmk_asm) {
    pos_error(ec_asm_statement_as_last_statement_in_gnu_statement_expression,
              statement->start_position);
    statement = nullptr;
  } else if (statement->kind != stmk_expr) {
    pos_error(ec_wrong_last_statement_in_gnu_statement_expression, statement->start_position);
    statement = nullptr;
  }
  return statement;
}

void lower_gnu_statement_expr(an_expr_node *expr)
{
  a_statement *block = statement_of(expr);
  an_expr_node *value;
  if (is_void_type(expr->type)) {
    value = zero_cast_to_void();
  } else {
    a_statement *last = find_value_statement(block);
    if (last == nullptr) return;
    a_variable *variable = make_lowered_temporary(rvalue_type(expr->type));
    an_expr_node *result = last->expr;
    result->result_not_used = false;
    result->next = nullptr;
    an_expr_operator_kind op = assignment_operator_for_type(variable->type);
    last->expr = make_binary_node(op, variable->type, var_lvalue_expr(variable), result);
    set_expr_result_not_used(last->expr);
    value = var_rvalue_expr(variable);
  }
  bool not_used = expr->result_not_used;
  place_in_front(block);
  overwrite_node(expr, value);
  expr->result_not_used = not_used;
}

// --- Loops ---------------------------------------------------------------------------------------

static a_statement *&serialization_block_of(a_statement *loop, bool is_condition)
{
  if (loop->kind != stmk_for) return loop->pre_statement;
  a_for_supplement *supplement = for_supplement_of(loop);
  return is_condition ? supplement->pre_test_statement : supplement->pre_increment_statement;
}

a_statement *loop_serialization_init(a_statement *loop, bool is_condition)
{
  a_statement *&block = serialization_block_of(loop, is_condition);
  if (block == nullptr) {
    block = alloc_statement(stmk_expr);
    turn_statement_into_noop(block);
    block->start_position = loop->start_position;
    block->end_position = loop->end_position;
  }
  curr_gnu_statement = block;
  return block;
}

void loop_serialization_end(a_statement *loop, bool is_condition)
{
  a_statement *&block = serialization_block_of(loop, is_condition);
  if (first_statement_of(block) == nullptr) block = nullptr;
  curr_gnu_statement = loop;
}

static void append_to_block(a_statement *block, a_statement *statement)
{
  an_insert_location location;
  a_statement *last = last_statement_in_block(block);
  if (last == nullptr) {
    set_block_start_insert_location(block, &location);
  } else {
    set_insert_location(last, &location);
  }
  insert_statement_full(statement, &location, false);
}

static a_statement *make_empty_block(const a_statement *like)
{
  a_statement *block = alloc_statement(stmk_expr);
  turn_statement_into_noop(block);
  block->start_position = like->start_position;
  block->end_position = like->end_position;
  return block;
}

// The body, with what is appended to it, becomes a block of its own.
static void append_to_body(a_statement *loop, a_statement *statement)
{
  if (body_of(loop) == nullptr) body_of(loop) = make_empty_block(loop);
  a_statement *inner = body_of(loop);
  a_statement *block = make_empty_block(loop);
  body_of(loop) = block;
  append_to_block(block, inner);
  append_to_block(block, statement);
}

// { hoisted statements; if (!condition) goto end; body }: the loop itself has no condition any
// more.
static void move_condition_into_body(a_statement *loop, a_statement *hoisted)
{
  a_statement *body = body_of(loop);
  a_statement *block = make_empty_block(loop);
  append_to_block(block, hoisted);
  an_insert_location location;
  a_statement *outer = loop;
  a_statement *moved = turn_statement_into_block(outer);
  set_insert_location(moved, &location);
  a_statement *end_label = insert_temp_label(&location);
  a_statement *leave = alloc_statement(stmk_goto);
  set_positions(leave);
  label_of(leave) = label_of(end_label);
  a_statement *test = alloc_statement(stmk_if);
  set_positions(test);
  test->expr = make_operator_node(eok_not, integer_type(ik_int), moved->expr);
  then_statement_of(test) = leave;
  append_to_block(block, test);
  if (body != nullptr) append_to_block(block, body);
  body_of(moved) = block;
  moved->expr = moved->kind == stmk_for ? nullptr : node_for_integer_constant(1, ik_int);
}

static void settle_for(a_statement *loop)
{
  a_for_supplement *supplement = for_supplement_of(loop);
  a_statement *before_increment = supplement->pre_increment_statement;
  a_statement *before_test = supplement->pre_test_statement;
  supplement->pre_increment_statement = nullptr;
  supplement->pre_test_statement = nullptr;
  if (before_increment != nullptr) append_to_body(loop, before_increment);
  if (before_test == nullptr) return;
  // The increment has to run before the test's statements do.
  if (supplement->increment_expr != nullptr) {
    a_statement *increment = alloc_expr_statement(supplement->increment_expr);
    set_positions(increment);
    supplement->increment_expr = nullptr;
    append_to_body(loop, increment);
  }
  move_condition_into_body(loop, before_test);
}

void settle_loop_serialization(a_statement *loop)
{
  if (loop->kind == stmk_for) {
    settle_for(loop);
    return;
  }
  a_statement *hoisted = loop->pre_statement;
  loop->pre_statement = nullptr;
  if (hoisted == nullptr) return;
  if (loop->kind == stmk_do) {
    append_to_body(loop, hoisted);
  } else {
    move_condition_into_body(loop, hoisted);
  }
}

// --- Members of values ---------------------------------------------------------------------------

static bool is_member_of_value(const an_expr_node *expr)
{
  return is_operation(expr, eok_dot_field) && !expr->is_lvalue &&
         !first_operand_of(expr)->is_lvalue;
}

// f().a where its elements are asked for: the array gets an address through a temporary that holds the
// whole value.  The operator's first operand becomes a comma.
void convert_struct_rvalue_to_comma_expr_if_needed(an_expr_node *expr)
{
  an_expr_node *array = first_operand_of(expr);
  an_expr_node *member = array;
  while (member->kind == enk_operation && op_of(member) != eok_dot_field) {
    member = first_operand_of(member);
  }
  if (!is_member_of_value(member)) return;
  an_expr_node *value = first_operand_of(member);
  // A variable or a dereference that is merely typed as a value has an address already.
  if (is_rvalueable_node(value)) return;
  an_expr_node *field = value->next;
  value->next = nullptr;
  a_variable *variable = make_lowered_temporary(rvalue_type(value->type));
  an_expr_node *object = var_lvalue_expr(variable);
  object->next = field;
  first_operand_of(member) = object;
  member->is_lvalue = true;
  an_expr_node *rest = array->next;
  an_expr_node *save =
      make_binary_node(eok_assign, rvalue_type(value->type), var_lvalue_expr(variable), value);
  an_expr_node *comma = make_comma_node(save, array);
  comma->next = rest;
  first_operand_of(expr) = comma;
}
