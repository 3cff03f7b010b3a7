// misra_order.cpp - rules 12.2 and 13.6: side effects in a full expression.
// Owns:    the accesses of the expression at hand, in the order of the source.
// Rule:    the accesses of an operand stand together in the list.  Operands whose order is open are
//          compared with each other: a side effect on an object in one, and any access to the same
//          object in another.
// Entry:   check_order_of_evaluation, oper_nodes_are_same_arg.
#include "check/misra_expr.h"
#include "il/il.h"
#include "il/types.h"
#include "mem/mem_manage.h"
#include "mem/stack_limit.h"

struct an_access {
  an_expr_node *lvalue;
  a_variable *variable;        // whose name leads to the object
  unsigned pointer_depth_mask; // bit 0: the variable itself, bit 1: what it points to, ...
  bool is_write;
  bool is_volatile;   // reading it is a side effect as well
  size_t last_effect; // one more than the place of the last side effect up to this one; 0: none
};

static an_access *accesses;
static size_t num_accesses;
static size_t room_for_accesses;

//---------------------------------------------------------------------------------------------
// Which object an expression stands for.

// What a pointer points to is named by the pointer: p and p + 1 lead to the same array.
static an_expr_node *pointer_without_offset(an_expr_node *pointer)
{
  for (;;) {
    pointer = below_all_casts(pointer);
    if (!is_operation(pointer, eok_pointer_add) && !is_operation(pointer, eok_pointer_subtract)) {
      return pointer;
    }
    pointer = first_operand_of(pointer);
  }
}

// The variable whose name leads to an object, and by the bit in the mask how many pointers lie in
// between.
static a_variable *variable_behind(an_expr_node *expr, unsigned *pointer_depth_mask)
{
  *pointer_depth_mask = 1;
  for (;;) {
    if (expr->kind == enk_variable) return variable_of(expr);
    if (expr->kind != enk_operation) return nullptr;
    switch (op_of(expr)) {
    case eok_dot_field:
    case eok_real:
    case eok_imag:
    case eok_lvalue_cast: expr = first_operand_of(expr); break;
    case eok_arrow_field:
    case eok_subscript:
    case eok_indirection:
      expr = pointer_without_offset(first_operand_of(expr));
      if (is_operation(expr, eok_array_to_pointer) || is_operation(expr, eok_address_of)) {
        expr = first_operand_of(expr);
      } else {
        *pointer_depth_mask <<= 1;
      }
      break;
    default:
      if (!is_incr_decr_operator(op_of(expr)) && !is_assignment_operator(op_of(expr)))
        return nullptr;
      expr = first_operand_of(expr);
      break;
    }
  }
}

static bool is_selection(const an_expr_node *expr)
{
  return is_operation(expr, eok_dot_field) || is_operation(expr, eok_arrow_field);
}

// Members of a union share their place.
static bool select_same_place(an_expr_node *a, an_expr_node *b)
{
  an_expr_node *field_of_a = second_operand_of(a), *field_of_b = second_operand_of(b);
  if (field_of_a->kind != enk_field || field_of_b->kind != enk_field) return false;
  if (field_of(field_of_a) == field_of(field_of_b)) return true;
  a_type *object = first_operand_of(a)->type;
  if (is_pointer_type(object)) object = type_pointed_to(object);
  return is_union_type(object);
}

static bool have_same_value(an_expr_node *a, an_expr_node *b)
{
  a = below_all_casts(a);
  b = below_all_casts(b);
  return compare_expressions(a, b, 0) || oper_nodes_are_same_arg(a, b);
}

// Left operands of . and ->, in either form: (*p).m is p->m.
static bool are_same_objects(an_expr_node *a, an_expr_node *b)
{
  if (is_pointer_type(a->type) == is_pointer_type(b->type)) return have_same_value(a, b);
  an_expr_node *object = is_pointer_type(a->type) ? b : a;
  an_expr_node *pointer = object == a ? b : a;
  return is_operation(object, eok_indirection) &&
         have_same_value(first_operand_of(object), pointer);
}

bool oper_nodes_are_same_arg(an_expr_node *a, an_expr_node *b)
{
  check_recursion();
  if (a->kind == enk_variable && b->kind == enk_variable) return variable_of(a) == variable_of(b);
  if (a->kind != enk_operation || b->kind != enk_operation) return false;
  if (is_selection(a) && is_selection(b)) {
    return select_same_place(a, b) && are_same_objects(first_operand_of(a), first_operand_of(b));
  }
  if (op_of(a) != op_of(b)) return false;
  switch (op_of(a)) {
  case eok_subscript:
    return have_same_value(first_operand_of(a), first_operand_of(b)) &&
           have_same_value(second_operand_of(a), second_operand_of(b));
  case eok_indirection:
  case eok_array_to_pointer:
  case eok_address_of:
  case eok_real:
  case eok_imag: return have_same_value(first_operand_of(a), first_operand_of(b));
  default: return false;
  }
}

// A step from a part to the object that holds it; null where there is none, or a pointer leads to
// the object.
static an_expr_node *whole_of_part(an_expr_node *lvalue)
{
  if (is_operation(lvalue, eok_dot_field)) {
    an_expr_node *object = first_operand_of(lvalue);
    return is_operation(object, eok_indirection) ? nullptr : object;
  }
  if (!is_operation(lvalue, eok_subscript)) return nullptr;
  an_expr_node *array = first_operand_of(lvalue);
  return is_operation(array, eok_array_to_pointer) ? first_operand_of(array) : nullptr;
}

static int num_steps(an_expr_node *lvalue)
{
  int steps = 0;
  while ((lvalue = whole_of_part(lvalue)) != nullptr)
    ++steps;
  return steps;
}

// The objects are the same, or one is a part of the other.
static bool objects_overlap(an_expr_node *a, an_expr_node *b)
{
  int steps_of_a = num_steps(a), steps_of_b = num_steps(b);
  for (; steps_of_a > steps_of_b; --steps_of_a)
    a = whole_of_part(a);
  for (; steps_of_b > steps_of_a; --steps_of_b)
    b = whole_of_part(b);
  return oper_nodes_are_same_arg(a, b);
}

//---------------------------------------------------------------------------------------------
// Accesses.

static void add_access(an_expr_node *lvalue, bool is_write, bool is_volatile)
{
  unsigned pointer_depth_mask;
  a_variable *variable = variable_behind(lvalue, &pointer_depth_mask);
  if (variable == nullptr) return;
  if (num_accesses == room_for_accesses) {
    size_t room = room_for_accesses * 2 + 64;
    accesses = (an_access *)realloc_buffer((char *)accesses, room_for_accesses * sizeof *accesses,
                                           room * sizeof *accesses);
    room_for_accesses = room;
  }
  size_t last_effect = num_accesses == 0 ? 0 : accesses[num_accesses - 1].last_effect;
  if (is_write || is_volatile) last_effect = num_accesses + 1;
  accesses[num_accesses++] = {lvalue,   variable,    pointer_depth_mask,
                              is_write, is_volatile, last_effect};
}

static bool clash(const an_access *a, const an_access *b)
{
  bool has_effect = a->is_write || b->is_write || (a->is_volatile && b->is_volatile);
  return has_effect && a->variable == b->variable &&
         a->pointer_depth_mask == b->pointer_depth_mask && objects_overlap(a->lvalue, b->lvalue);
}

// One more than the place of the last side effect in front of `end`, or 0 if there is none from
// `start` on.
static size_t effect_before(size_t start, size_t end)
{
  if (end == start) return 0;
  size_t effect = accesses[end - 1].last_effect;
  return effect > start ? effect : 0;
}

// A side effect of one range meets an access of the other.
static bool effects_clash(size_t start, size_t end, size_t other_start, size_t other_end)
{
  for (size_t i = effect_before(start, end); i != 0; i = effect_before(start, i - 1)) {
    for (size_t j = other_start; j < other_end; ++j) {
      if (clash(&accesses[i - 1], &accesses[j])) return true;
    }
  }
  return false;
}

static bool ranges_clash(size_t start, size_t middle, size_t end)
{
  return effects_clash(middle, end, start, middle) || effects_clash(start, middle, middle, end);
}

//---------------------------------------------------------------------------------------------
// The walk.

static void collect_value(an_expr_node *expr, a_misra_walk *walk);

static void collect_in_order(an_expr_node *list, a_misra_walk *walk)
{
  for (; list != nullptr; list = list->next)
    collect_value(list, walk);
}

// Operands of `expr` whose order is open, from `list` on; `start` is where those before them begin.
static void collect_unsequenced(an_expr_node *expr, an_expr_node *list, size_t start,
                                a_misra_walk *walk)
{
  for (; list != nullptr; list = list->next) {
    size_t middle = num_accesses;
    collect_value(list, walk);
    if (!walk->is_reported[wr_12_2] && ranges_clash(start, middle, num_accesses)) {
      report_rule(walk, wr_12_2, expr);
    }
  }
}

// What finding the object takes, without the access to the object itself.
static void collect_place(an_expr_node *lvalue, a_misra_walk *walk)
{
  if (lvalue->kind != enk_operation) return;
  switch (op_of(lvalue)) {
  case eok_dot_field:
  case eok_real:
  case eok_imag:
  case eok_lvalue_cast:
  case eok_array_to_pointer: collect_place(first_operand_of(lvalue), walk); break;
  case eok_arrow_field:
  case eok_indirection: collect_value(first_operand_of(lvalue), walk); break;
  case eok_subscript:
    collect_unsequenced(lvalue, first_operand_of(lvalue), num_accesses, walk);
    break;
  default: collect_value(lvalue, walk); break;
  }
}

static void note_write(an_expr_node *expr, a_misra_walk *walk)
{
  an_expr_node *lvalue = first_operand_of(expr);
  a_variable *variable = lvalue->kind == enk_variable ? variable_of(lvalue) : nullptr;
  if (variable != nullptr && variable->is_loop_counter) report_rule(walk, wr_13_6, expr);
  add_access(lvalue, true, false);
}

// The operator's own write comes behind the values of its operands, but not behind their effects.
static void collect_assignment(an_expr_node *expr, a_misra_walk *walk)
{
  size_t start = num_accesses;
  an_expr_node *target = first_operand_of(expr);
  collect_place(target, walk);
  if (!is_incr_decr_operator(op_of(expr))) collect_unsequenced(expr, target->next, start, walk);
  size_t end = num_accesses;
  note_write(expr, walk);
  if (num_accesses == end) return;
  for (size_t i = effect_before(start, end); i != 0; i = effect_before(start, i - 1)) {
    const an_access *effect = &accesses[i - 1];
    if (effect->is_write && clash(effect, &accesses[end])) report_rule(walk, wr_12_2, expr);
  }
}

static void collect_operation(an_expr_node *expr, a_misra_walk *walk)
{
  an_expr_operator_kind op = op_of(expr);
  if (is_assignment_operator(op) || is_incr_decr_operator(op)) {
    collect_assignment(expr, walk);
    return;
  }
  switch (op) {
  case eok_address_of:
  case eok_array_to_pointer: collect_place(first_operand_of(expr), walk); break;
  case eok_indirection:
  case eok_subscript:
  case eok_dot_field:
  case eok_arrow_field:
    collect_place(expr, walk);
    add_access(expr, false, node_reads_volatile(expr));
    break;
  case eok_land:
  case eok_lor:
  case eok_comma:
  case eok_question: collect_in_order(first_operand_of(expr), walk); break;
  default: collect_unsequenced(expr, first_operand_of(expr), num_accesses, walk); break;
  }
}

static void collect_value(an_expr_node *expr, a_misra_walk *walk)
{
  check_recursion();
  switch (expr->kind) {
  case enk_variable: add_access(expr, false, node_reads_volatile(expr)); break;
  case enk_operation: collect_operation(expr, walk); break;
  case enk_builtin_operation:
    collect_in_order(builtin_operation_of(expr).first_argument, walk);
    break;
  default: break;
  }
}

void check_order_of_evaluation(an_expr_node *expr, a_misra_walk *walk)
{
  num_accesses = 0;
  collect_value(expr, walk);
}
