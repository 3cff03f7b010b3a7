// lower_expr.cpp - rewriting of expressions that C and C++ share: conditions, bool, reusable
// values, the post-pass that makes lowered lvalues printable.
// Entry:   normalize_boolean_controlling_expr_if_needed, lower_bool_cast,
//          rewrite_compound_assignment, lower_question_operator,
//          perform_post_pass_on_lowered_expression.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il_walk.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"
#include "lower/lower_il.h"

bool lowering_normalizes_boolean_controlling_expressions = true;

// --- Controlling expressions ---------------------------------------------------------------------

static void make_int_constant(an_expr_node *expr, long long value)
{
  an_expr_node *constant = node_for_integer_constant(value, ik_int);
  constant->expr_range = expr->expr_range;
  overwrite_node(expr, constant);
}

// A test of the value against zero.  The comparison is C's own test of a condition, so that complex
// values and vectors, which have no printable zero, stay as they are.
static void make_comparison_with_zero(an_expr_node *expr)
{
  a_type *type = skip_typerefs(expr->type);
  if (type->kind == tk_ptr_to_member) {
    overwrite_node(expr, test_of_ptr_to_member(copy_node(expr)));
    return;
  }
  if (!is_scalar_type(type) || type->kind == tk_complex || type->kind == tk_imaginary) return;
  an_expr_node *value = copy_node(expr);
  a_type *zero_type = rvalue_type(value->type);
  if (type->kind == tk_integer) {
    // C promotes the other side by itself; an enum's zero is that of its integer kind.
    a_type *promoted = skip_typerefs(type_after_integral_promotion(type));
    zero_type = integer_type(as_integer(promoted).int_kind);
  }
  an_expr_node *zero = node_for_zero_of_type(zero_type);
  an_expr_node *comparison = make_binary_node(eok_ne, integer_type(ik_int), value, zero);
  comparison->expr_range = expr->expr_range;
  comparison->operator_position = expr->operator_position;
  entry_flags_of(comparison).lowered = true;
  overwrite_node(expr, comparison);
}

// Casts to bool of a scalar don't matter where only truth is asked.
static void strip_bool_cast(an_expr_node *expr)
{
  while (is_operation(expr, eok_cast_to_bool)) {
    an_expr_node *operand = first_operand_of(expr);
    if (!is_scalar_type(skip_typerefs(operand->type))) return;
    overwrite_node(expr, operand);
  }
}

static bool is_truth_value(const an_expr_node *expr)
{
  if (expr->kind != enk_operation || !is_operator_returning_bool(op_of(expr))) return false;
  return op_of(expr) != eok_cast_to_bool;
}

// The value of a comma is that of its last operand.
static an_expr_node *bottom_of_commas(an_expr_node *expr)
{
  while (is_operation(expr, eok_comma))
    expr = second_operand_of(expr);
  return expr;
}

void normalize_boolean_controlling_expr_if_needed(an_expr_node *expr)
{
  while (expr->kind == enk_lifetime_wrapper)
    expr = lifetime_wrapper_of(expr).expr;
  strip_bool_cast(expr);
  if (expr->kind == enk_constant && constant_bool_value_known_at_compile_time(constant_of(expr))) {
    make_int_constant(expr, is_false_constant(constant_of(expr)) ? 0 : 1);
    return;
  }
  if (!lowering_normalizes_boolean_controlling_expressions) {
    expr->tested_as_bool = true;
    return;
  }
  an_expr_node *bottom = bottom_of_commas(expr);
  if (is_truth_value(bottom)) return;
  make_comparison_with_zero(bottom);
  for (an_expr_node *comma = expr; comma != bottom; comma = second_operand_of(comma)) {
    comma->type = bottom->type;
    comma->is_lvalue = false;
  }
}

an_expr_node *boolean_controlling_expr(an_expr_node *expr)
{
  an_expr_node *copy = copy_node(expr);
  normalize_boolean_controlling_expr_if_needed(copy);
  return copy;
}

unsigned expr_boolean_controlling_expr_mask(const an_expr_node *expr)
{
  if (expr->kind != enk_operation) return 0;
  switch (op_of(expr)) {
  case eok_question:
  case eok_not: return 1;
  case eok_land:
  case eok_lor: return 3;
  default: return 0;
  }
}

// --- Bool ----------------------------------------------------------------------------------------

// Assigning to a bool is more than a truncation: any non-zero value becomes 1.
void lower_bool_cast(an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  a_type *source = skip_typerefs(operand->type);
  a_type *bool_result = expr->type;
  if (source->kind == tk_complex || source->kind == tk_imaginary) {
    operation_of(expr).op = eok_cast; // C's own conversion of a complex value
    return;
  }
  if (operand->kind == enk_constant &&
      constant_bool_value_known_at_compile_time(constant_of(operand))) {
    a_constant value;
    set_integer_constant(&value, is_false_constant(constant_of(operand)) ? 0 : 1, ik_int);
    value.type = rvalue_type(bool_result);
    an_expr_node *constant = alloc_node_for_constant(&value);
    constant->expr_range = expr->expr_range;
    overwrite_node(expr, constant);
    return;
  }
  normalize_boolean_controlling_expr_if_needed(operand);
  operation_of(expr).op = eok_cast;
  operation_of(expr).is_implicit_cast = true;
}

static an_expr_node *value_of_object(an_expr_node *object)
{
  return rvalue_expr_for_lvalue(copy_expr_tree(object, true));
}

static void add_to_setup(an_expr_node **setup, an_expr_node *expr)
{
  *setup = *setup == nullptr ? expr : make_comma_node(*setup, expr);
}

// A pointer that may be read more than once; what makes it so is added to *setup, which has to run
// first.
static an_expr_node *make_pointer_repeatable(an_expr_node *pointer, an_expr_node **setup)
{
  if (is_invariant_expr(pointer)) return pointer;
  a_type *type = rvalue_type(pointer->type);
  a_variable *variable = make_lowered_temporary(type);
  pointer->next = nullptr;
  add_to_setup(setup, make_binary_node(eok_assign, type, var_lvalue_expr(variable), pointer));
  return lowered_temporary_value(variable, type);
}

// The same for an object.  A bit-field has no address, so that members keep their selection.
static an_expr_node *make_object_repeatable(an_expr_node *object, an_expr_node **setup)
{
  if (object->kind == enk_variable) return object;
  if (is_operation(object, eok_dot_field)) {
    an_expr_node *field = second_operand_of(object);
    an_expr_node *base = make_object_repeatable(first_operand_of(object), setup);
    base->next = field;
    first_operand_of(object) = base;
    return object;
  }
  if (is_operation(object, eok_arrow_field)) {
    an_expr_node *field = second_operand_of(object);
    an_expr_node *pointer = make_pointer_repeatable(first_operand_of(object), setup);
    pointer->next = field;
    first_operand_of(object) = pointer;
    return object;
  }
  if (is_operation(object, eok_indirection)) {
    first_operand_of(object) = make_pointer_repeatable(first_operand_of(object), setup);
    return object;
  }
  return add_indirection_to_node(make_pointer_repeatable(add_address_of_to_node(object), setup));
}

static void put_behind_setup(an_expr_node *expr, an_expr_node *setup, an_expr_node *result)
{
  bool not_used = expr->result_not_used;
  if (setup != nullptr) result = make_comma_node(setup, result);
  result->expr_range = expr->expr_range;
  overwrite_node(expr, result);
  expr->result_not_used = not_used;
}

static an_expr_node *bool_not(an_expr_node *value, a_type *bool_result)
{
  normalize_boolean_controlling_expr_if_needed(value);
  an_expr_node *negation = make_operator_node(eok_not, integer_type(ik_int), value);
  return add_implicit_cast(negation, bool_result);
}

// ++x is x = 1; --x is x = !x; the postfix forms yield the value that x had.
void lower_bool_incr_decr(an_expr_node *expr)
{
  an_expr_operator_kind op = op_of(expr);
  an_expr_node *setup = nullptr;
  an_expr_node *object = make_object_repeatable(first_operand_of(expr), &setup);
  object->next = nullptr;
  a_type *type = rvalue_type(object->type);
  bool is_postfix = op == eok_post_incr || op == eok_post_decr;
  an_expr_node *old_value = nullptr;
  if (is_postfix && !expr->result_not_used) {
    a_variable *variable = make_lowered_temporary(type);
    add_to_setup(&setup, make_binary_node(eok_assign, type, var_lvalue_expr(variable),
                                          value_of_object(object)));
    old_value = var_rvalue_expr(variable);
  }
  an_expr_node *new_value;
  if (op == eok_pre_decr || op == eok_post_decr) {
    new_value = bool_not(value_of_object(object), type);
  } else {
    new_value = add_implicit_cast(node_for_integer_constant(1, ik_int), type);
    // The old value doesn't matter, but reading it does.
    bool is_read = old_value != nullptr || !is_volatile_qualified(object->type);
    if (!is_read) new_value = make_comma_node(value_of_object(object), new_value);
  }
  an_expr_node *result = make_binary_node(eok_assign, type, object, new_value);
  if (old_value != nullptr) result = make_comma_node(result, old_value);
  put_behind_setup(expr, setup, result);
}

static an_expr_operator_kind plain_operator_of(an_expr_operator_kind op)
{
  switch (op) {
  case eok_add_assign: return eok_add;
  case eok_subtract_assign: return eok_subtract;
  case eok_multiply_assign: return eok_multiply;
  case eok_divide_assign: return eok_divide;
  case eok_remainder_assign: return eok_remainder;
  case eok_shift_left_assign: return eok_shift_left;
  case eok_shift_right_assign: return eok_shift_right;
  case eok_bit_and_assign: return eok_bit_and;
  case eok_bit_or_assign: return eok_bit_or;
  case eok_bit_xor_assign: return eok_bit_xor;
  case eok_pointer_add_assign: return eok_pointer_add;
  case eok_pointer_subtract_assign: return eok_pointer_subtract;
  default: unexpected_kind("compound assignment");
  }
}

static bool is_shift_assignment(an_expr_operator_kind op)
{
  return op == eok_shift_left_assign || op == eok_shift_right_assign;
}

// x op= y on a bool is x = (bool)(x op y); with other types that the operation leaves, alike.
void rewrite_compound_assignment(an_expr_node *expr)
{
  an_expr_operator_kind op = op_of(expr);
  an_expr_node *operand = second_operand_of(expr);
  an_expr_node *setup = nullptr;
  an_expr_node *object = make_object_repeatable(first_operand_of(expr), &setup);
  object->next = nullptr;
  operand->next = nullptr;
  a_type *type = rvalue_type(object->type);
  an_expr_node *value = value_of_object(object);
  a_type *operation_type;
  if (is_shift_assignment(op)) {
    operation_type = type_after_integral_promotion(type);
  } else {
    operation_type = usual_arithmetic_conversions(type, operand->type);
    operand = add_cast_if_necessary(operand, operation_type);
  }
  value = add_cast_if_necessary(value, operation_type);
  an_expr_operator_kind plain_op = plain_operator_of(op);
  a_type *result_type = operation_type;
  if (is_imaginary_type(operation_type) && (plain_op == eok_multiply || plain_op == eok_divide)) {
    result_type = float_type(float_kind_of_type(operation_type));
  }
  an_expr_node *result = make_binary_node(plain_op, result_type, value, operand);
  an_expr_node *conversion = make_operator_node(eok_cast, type, result);
  if (is_bool_type(type)) {
    operation_of(conversion).op = eok_cast_to_bool;
    lower_bool_cast(conversion);
  }
  put_behind_setup(expr, setup, make_binary_node(eok_assign, type, object, conversion));
}

// --- GNU minimum and maximum ---------------------------------------------------------------------

void lower_min_max(an_expr_node *expr)
{
  an_expr_node *left = first_operand_of(expr);
  an_expr_node *right = left->next;
  an_expr_operator_kind op = op_of(expr) == eok_min ? eok_lt : eok_gt;
  left->next = nullptr;
  an_expr_node *left_again = make_reusable_copy(left, true);
  an_expr_node *right_again = make_reusable_copy(right, true);
  // Both are saved before they are compared, so that neither side is evaluated under a condition.
  an_expr_node *first = left;
  left = copy_expr_tree(left_again, true);
  an_expr_node *second = right;
  right = copy_expr_tree(right_again, true);
  an_expr_node *condition = make_binary_node(op, integer_type(ik_int), left, right);
  left_again->next = right_again;
  right_again->next = nullptr;
  condition->next = left_again;
  an_expr_node *question = make_operator_node(eok_question, expr->type, condition);
  if (node_has_side_effects(second)) question = make_comma_node(second, question);
  if (node_has_side_effects(first)) question = make_comma_node(first, question);
  question->expr_range = expr->expr_range;
  overwrite_node(expr, question);
}

// --- Conditions ----------------------------------------------------------------------------------

static void lower_operand(an_expr_node *expr)
{
  if (C_dialect == 2) {
    lower_expr_full(expr, false);
  } else {
    lower_c99_expr(expr);
  }
}

static void lower_condition_operand(an_expr_node *expr)
{
  if (C_dialect != 2) {
    lower_c99_boolean_controlling_expr(expr, false);
    return;
  }
  strip_bool_cast(expr);
  lower_expr_full(expr, false);
  normalize_boolean_controlling_expr_if_needed(expr);
}

static void look_for_temporary_with_destruction(an_expr_node *expr,
                                                an_expr_or_stmt_traversal_block *block)
{
  bool has_destruction =
      expr->kind == enk_temp_init && dynamic_init_of(expr)->destructor != nullptr;
  if (!has_destruction) return;
  block->result = true;
  block->stop = true;
}

static void look_for_label(a_statement *statement, an_expr_or_stmt_traversal_block *block)
{
  if (statement->kind != stmk_label && statement->kind != stmk_case) return;
  block->result = true;
  block->stop = true;
}

// Code that can be left out: no statement expression whose labels others may know, no destruction.
static bool may_be_dropped(an_expr_node *expr)
{
  if (has_statement_expression(expr)) return false;
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.stmt_callback = look_for_label;
  if (C_dialect == 2) block.expr_callback = look_for_temporary_with_destruction;
  traverse_expr(expr, &block);
  return !block.result;
}

// 1 or 0 when the (lowered) condition is known, else -1.
static int known_value_of_condition(const an_expr_node *condition)
{
  if (condition->kind != enk_constant) return -1;
  const a_constant *constant = constant_of(condition);
  if (!constant_bool_value_known_at_compile_time(constant)) return -1;
  return is_false_constant(constant) ? 0 : 1;
}

// A throw has no value: it gets one behind a comma.
static void give_throw_a_value(an_expr_node *branch, a_type *type)
{
  if (branch->kind != enk_throw || is_void_type(type)) return;
  an_expr_node *value;
  if (is_scalar_type(type)) {
    value = node_for_zero_of_type(rvalue_type(type));
  } else {
    value = add_indirection_to_node(node_for_zero_of_type(make_pointer_type(type)));
  }
  overwrite_node(branch, make_comma_node(copy_node(branch), value));
}

// The live branch alone, with the type of the whole.
static void reduce_to_branch(an_expr_node *expr, an_expr_node *branch)
{
  branch->next = nullptr;
  lower_operand(branch);
  an_expr_node *value = branch;
  bool has_value = !is_void_type(expr->type);
  if (has_value && !expr->is_lvalue && !is_function_type(branch->type) &&
      skip_typerefs(branch->type)->kind != tk_array) {
    value = add_cast_if_necessary(branch, expr->type);
  }
  bool not_used = expr->result_not_used;
  overwrite_node(expr, value);
  expr->result_not_used = not_used;
}

void lower_question_operator(an_expr_node *expr, bool)
{
  an_expr_node *condition = first_operand_of(expr);
  an_expr_node *second = condition->next;
  an_expr_node *third = second->next;
  lower_condition_operand(condition);
  int known = known_value_of_condition(condition);
  if (known >= 0) {
    an_expr_node *live = known == 1 ? second : third;
    an_expr_node *dead = known == 1 ? third : second;
    if (may_be_dropped(dead)) {
      reduce_to_branch(expr, live);
      return;
    }
  }
  lower_operand(second);
  lower_operand(third);
  give_throw_a_value(second, expr->type);
  give_throw_a_value(third, expr->type);
}

void lower_logical_operator(an_expr_node *expr)
{
  an_expr_node *first = first_operand_of(expr);
  an_expr_node *second = first->next;
  lower_condition_operand(first);
  int known = known_value_of_condition(first);
  bool decides = known >= 0 && (op_of(expr) == eok_land ? known == 0 : known == 1);
  if (decides && may_be_dropped(second)) {
    first->next = nullptr;
    a_type *type = expr->type;
    overwrite_node(expr, add_cast_if_necessary(first, type));
    return;
  }
  lower_condition_operand(second);
}

// --- Small nodes ---------------------------------------------------------------------------------

void lower_reuse_value_expr(an_expr_node *expr)
{
  a_variable *variable = dynamic_init_of(expr)->variable;
  check(variable != nullptr);
  an_expr_node *value = var_lvalue_expr(variable);
  value->type = expr->type;
  value->is_lvalue = expr->is_lvalue;
  value->expr_range = expr->expr_range;
  overwrite_node(expr, value);
}

// An offset that isn't constant is the address of the member of an object at address zero.
void lower_builtin_operation(an_expr_node *expr)
{
  if (builtin_operation_of(expr).op != bok_offsetof) return;
  an_expr_node *argument = builtin_operation_of(expr).first_argument;
  if (argument->next != nullptr) argument = argument->next;
  lower_operand(argument);
  argument->next = nullptr;
  an_expr_node *address =
      make_operator_node(eok_address_of, make_pointer_type(argument->type), argument);
  an_expr_node *offset = add_cast(address, expr->type);
  offset->expr_range = expr->expr_range;
  overwrite_node(expr, offset);
}

// --- Post-pass -----------------------------------------------------------------------------------

static bool replace_by_operand(an_expr_node *expr, an_expr_node *operand)
{
  bool not_used = expr->result_not_used;
  a_type *type = expr->type;
  bool is_lvalue = expr->is_lvalue;
  overwrite_node(expr, operand);
  expr->result_not_used = not_used;
  expr->type = type;
  expr->is_lvalue = is_lvalue;
  return true;
}

static bool fold_address_of(an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  if (!is_operation(operand, eok_indirection)) return false;
  an_expr_node *pointer = first_operand_of(operand);
  if (!identical_types(rvalue_type(pointer->type), rvalue_type(expr->type))) return false;
  return replace_by_operand(expr, pointer);
}

static bool fold_indirection(an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  if (!is_operation(operand, eok_address_of)) return false;
  an_expr_node *object = first_operand_of(operand);
  bool same_type = f_identical_types(object->type, expr->type, ido_ignore_top_qualifiers);
  if (!same_type) return false;
  return replace_by_operand(expr, object);
}

static bool fold_dot_field(an_expr_node *expr)
{
  an_expr_node *object = first_operand_of(expr);
  if (!is_operation(object, eok_indirection)) return false;
  an_expr_node *pointer = first_operand_of(object);
  pointer->next = object->next;
  first_operand_of(expr) = pointer;
  operation_of(expr).op = eok_arrow_field;
  return true;
}

static bool fold_arrow_field(an_expr_node *expr)
{
  an_expr_node *pointer = first_operand_of(expr);
  if (!is_operation(pointer, eok_address_of)) return false;
  an_expr_node *object = first_operand_of(pointer);
  a_type *pointed = type_pointed_to(pointer->type);
  if (!f_identical_types(object->type, pointed, ido_ignore_top_qualifiers)) return false;
  object->next = pointer->next;
  first_operand_of(expr) = object;
  operation_of(expr).op = eok_dot_field;
  return true;
}

bool fold_address_pair(an_expr_node *expr)
{
  if (expr->kind != enk_operation) return false;
  switch (op_of(expr)) {
  case eok_address_of: return fold_address_of(expr);
  case eok_indirection: return fold_indirection(expr);
  case eok_dot_field: return fold_dot_field(expr);
  case eok_arrow_field: return fold_arrow_field(expr);
  default: return false;
  }
}

// Operators that C applies to an object, which a comma or a condition is not.
static bool needs_object_as_operand(const an_expr_node *expr)
{
  switch (op_of(expr)) {
  case eok_address_of:
  case eok_array_to_pointer:
  case eok_dot_field:
  case eok_lvalue_cast:
  case eok_cast_to_lvalue:
  case eok_real:
  case eok_imag: return true;
  default: return operator_takes_lvalue_operand(op_of(expr));
  }
}

// (a, x).f becomes a, x.f.
static void push_into_comma(an_expr_node *expr, an_expr_node *comma)
{
  an_expr_node *before = first_operand_of(comma);
  an_expr_node *object = before->next;
  object->next = comma->next;
  an_expr_node *inner = copy_node(expr);
  first_operand_of(inner) = object;
  bool not_used = expr->result_not_used;
  an_expr_node *outer = make_comma_node(before, inner);
  outer->expr_range = expr->expr_range;
  overwrite_node(expr, outer);
  expr->is_lvalue = inner->is_lvalue;
  expr->result_not_used = not_used;
}

// (c ? x : y).f becomes c ? x.f : y.f.  Further operands must not be evaluated twice in the text,
// so that only operators without side effects in them come here.
static void push_into_question(an_expr_node *expr, an_expr_node *question)
{
  an_expr_node *condition = first_operand_of(question);
  an_expr_node *left = condition->next;
  an_expr_node *right = left->next;
  an_expr_node *others = question->next;
  an_expr_node *left_result = copy_node(expr);
  an_expr_node *right_result = copy_node(expr);
  left->next = others;
  right->next = others == nullptr ? nullptr : copy_list_of_expr_trees(others, true);
  first_operand_of(left_result) = left;
  first_operand_of(right_result) = right;
  condition->next = left_result;
  left_result->next = right_result;
  bool not_used = expr->result_not_used;
  an_expr_node *outer = make_operator_node(eok_question, expr->type, condition);
  outer->expr_range = expr->expr_range;
  outer->is_lvalue = expr->is_lvalue;
  overwrite_node(expr, outer);
  expr->result_not_used = not_used;
}

static void push_operator_inward(an_expr_node *expr)
{
  if (expr->kind != enk_operation || first_operand_of(expr) == nullptr) return;
  if (!needs_object_as_operand(expr)) return;
  an_expr_node *operand = first_operand_of(expr);
  if (is_operation(operand, eok_comma)) {
    push_into_comma(expr, operand);
    an_expr_node *inner = second_operand_of(expr);
    push_operator_inward(inner);
    fold_address_pair(inner);
  } else if (is_operation(operand, eok_question) && operand->is_lvalue) {
    push_into_question(expr, operand);
    push_operator_inward(second_operand_of(expr));
    push_operator_inward(third_operand_of(expr));
  }
}

static void fold_on_the_way_down(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  while (fold_address_pair(expr)) {
  }
  // Statements inside were passed over when they were lowered themselves.
  if (expr->kind == enk_statement_expr || expr->kind == enk_sizeof) block->skip_subtree = true;
}

static void push_on_the_way_up(an_expr_node *expr, an_expr_or_stmt_traversal_block *)
{
  push_operator_inward(expr);
  fold_address_pair(expr);
}

void perform_post_pass_on_lowered_expression(an_expr_node *expr)
{
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = fold_on_the_way_down;
  block.expr_end_callback = push_on_the_way_up;
  traverse_expr(expr, &block);
}
