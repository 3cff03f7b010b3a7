// il_expr_tests.cpp - questions about expressions: equality, side effects, invariance, errors.
// All of them are asked through the light traversal, so that no node kind is forgotten in one of
// them.
#include "il/il.h"
#include "driver/flags.h"
#include "il/il_walk.h"

// --- Equality ------------------------------------------------------------------------------------

static bool same_expr_lists(an_expr_node *a, an_expr_node *b, unsigned options)
{
  while (a != nullptr && b != nullptr) {
    if (!compare_expressions(a, b, options)) return false;
    a = a->next;
    b = b->next;
  }
  return a == b;
}

static bool same_types(a_type *a, a_type *b)
{
  return a == b || (a != nullptr && b != nullptr && f_identical_types(a, b, ido_none));
}

static bool same_optional(an_expr_node *a, an_expr_node *b, unsigned options)
{
  if (a == nullptr || b == nullptr) return a == b;
  return compare_expressions(a, b, options);
}

static bool same_sizeof(const an_expr_sizeof &a, const an_expr_sizeof &b, unsigned options)
{
  if (a.is_type != b.is_type || a.is_template != b.is_template) return false;
  if (a.is_template) return a.pack_template == b.pack_template;
  return a.is_type ? same_types(a.type, b.type) : same_optional(a.expr, b.expr, options);
}

bool compare_expressions(an_expr_node *a, an_expr_node *b, unsigned options)
{
  if (a == b) return true;
  if (a->kind != b->kind || a->is_lvalue != b->is_lvalue) return false;
  if (!same_types(a->type, b->type)) return false;
  switch (a->kind) {
  case enk_error:
  case enk_address_of_ellipsis: return true;
  case enk_operation:
    return op_of(a) == op_of(b) &&
           same_expr_lists(first_operand_of(a), first_operand_of(b), options);
  case enk_constant: return compare_constants(constant_of(a), constant_of(b), options);
  case enk_variable:
  case enk_variable_marker: return variable_of(a) == variable_of(b);
  case enk_field: return field_of(a) == field_of(b);
  case enk_routine: return routine_of(a) == routine_of(b);
  case enk_type_operand: return same_types(type_operand_of(a), type_operand_of(b));
  case enk_sizeof:
  case enk_sizeof_pack: return same_sizeof(sizeof_of(a), sizeof_of(b), options);
  case enk_typeid:
    return same_types(typeid_of(a).type, typeid_of(b).type) &&
           same_optional(typeid_of(a).expr, typeid_of(b).expr, options);
  case enk_builtin_operation:
    return builtin_operation_of(a).op == builtin_operation_of(b).op &&
           same_expr_lists(builtin_operation_of(a).first_argument,
                           builtin_operation_of(b).first_argument, options);
  case enk_param_ref:
    return param_ref_of(a).position == param_ref_of(b).position &&
           param_ref_of(a).levels_up == param_ref_of(b).levels_up;
  case enk_temp_ref: return dynamic_init_of(a) == dynamic_init_of(b);
  default: return false; // anything that makes an object or runs statements differs
  }
}

// --- Questions by traversal ----------------------------------------------------------------------

typedef void an_expr_question(an_expr_node *expr, an_expr_or_stmt_traversal_block *block);

static bool ask(an_expr_node *expr, an_expr_question *question)
{
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.expr_callback = question;
  block.follow_dynamic_inits = true;
  traverse_expr(expr, &block);
  return block.result;
}

static void answer_yes(an_expr_or_stmt_traversal_block *block)
{
  block->result = true;
  block->stop = true;
}

static void look_for_error(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  bool is_error = expr->kind == enk_error ||
                  (expr->kind == enk_constant && constant_contains_error(constant_of(expr)));
  if (is_error) answer_yes(block);
}

bool expr_contains_error(an_expr_node *expr)
{
  return ask(expr, look_for_error);
}

static void look_for_dependence(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  bool is_dependent =
      is_operation(expr, eok_generic) || expr->kind == enk_param_ref ||
      (expr->kind == enk_constant && constant_is_instantiation_dependent(constant_of(expr))) ||
      (expr->type != nullptr && is_instantiation_dependent_type(expr->type));
  if (is_dependent) answer_yes(block);
}

bool expr_is_instantiation_dependent(an_expr_node *expr)
{
  return ask(expr, look_for_dependence);
}

static void look_for_throw(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  if (expr->kind == enk_throw || expr->kind == enk_new_delete) {
    answer_yes(block);
  } else if (expr->kind == enk_operation) {
    an_expr_operator_kind op = op_of(expr);
    if (op == eok_dynamic_cast_lvalue) answer_yes(block);
    if (op != eok_call && op != eok_virtual_call && op != eok_ptr_to_member_call) return;
    a_routine *routine = routine_from_function_expr(first_operand_of(expr));
    if (routine == nullptr || !routine->is_nothrow) answer_yes(block);
  }
}

bool expr_might_throw(an_expr_node *expr)
{
  return ask(expr, look_for_throw);
}

static void look_for_statement_expression(an_expr_node *expr,
                                          an_expr_or_stmt_traversal_block *block)
{
  if (expr->kind == enk_statement_expr) answer_yes(block);
}

bool has_statement_expression(an_expr_node *expr)
{
  if (!statement_expressions_exist || (!gcc_mode && !gpp_mode)) return false;
  return ask(expr, look_for_statement_expression);
}

static bool operator_has_side_effects(const an_expr_node *expr)
{
  switch (op_of(expr)) {
  case eok_pre_incr:
  case eok_pre_decr:
  case eok_post_incr:
  case eok_post_decr:
  case eok_call:
  case eok_virtual_call:
  case eok_ptr_to_member_call:
  case eok_va_start:
  case eok_va_arg:
  case eok_va_end:
  case eok_va_copy:
  case eok_varargs_start:
  case eok_generic: return true;
  default:
    return (op_of(expr) >= eok_assign && op_of(expr) <= eok_struct_assign) ||
           (op_of(expr) >= eok_cl_pre_incr && op_of(expr) <= eok_cl_assign_last);
  }
}

static bool call_is_without_side_effects(const an_expr_node *expr)
{
  if (!is_operation(expr, eok_call)) return false;
  a_routine *routine = routine_from_function_expr(first_operand_of(expr));
  return routine != nullptr && routine->is_const_attr;
}

// The declared type of the object that an rvalue node reads; the node's own type has lost its
// qualifiers.
static a_type *type_of_object_read(const an_expr_node *expr)
{
  if (expr->kind == enk_variable) return variable_of(expr)->type;
  if (expr->kind != enk_operation) return expr->type;
  switch (op_of(expr)) {
  case eok_indirection:
  case eok_subscript: {
    a_type *pointer = first_operand_of(expr)->type;
    return is_pointer_type(pointer) ? type_pointed_to(pointer) : expr->type;
  }
  case eok_dot_field:
  case eok_arrow_field: return field_of(second_operand_of(expr))->type;
  default: return expr->type;
  }
}

static bool object_is_volatile(const an_expr_node *expr)
{
  for (;;) {
    a_type *type = type_of_object_read(expr);
    if (type != nullptr && is_volatile_qualified(type)) return true;
    if (is_operation(expr, eok_arrow_field)) {
      return is_volatile_qualified(type_pointed_to(first_operand_of(expr)->type));
    }
    if (!is_operation(expr, eok_dot_field)) return false;
    expr = first_operand_of(expr);
  }
}

// A read of a volatile object is a side effect.
bool node_reads_volatile(const an_expr_node *expr)
{
  if (expr->type == nullptr || expr->is_lvalue) return false;
  bool is_object = expr->kind == enk_variable || expr->kind == enk_operation;
  return is_object && is_rvalueable_node(expr) && object_is_volatile(expr);
}

static void look_for_side_effects(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  switch (expr->kind) {
  case enk_operation:
    if (operator_has_side_effects(expr) && !call_is_without_side_effects(expr)) answer_yes(block);
    if (node_reads_volatile(expr)) answer_yes(block);
    break;
  case enk_variable:
    if (node_reads_volatile(expr)) answer_yes(block);
    break;
  case enk_sizeof:
    // Its operand isn't evaluated, but for a variable-length array.
    if (sizeof_of(expr).is_type || !is_variably_modified_type(sizeof_of(expr).expr->type)) {
      block->skip_subtree = true;
    }
    break;
  case enk_new_delete:
  case enk_throw:
  case enk_statement_expr:
  case enk_lowered_eh_construct:
  case enk_wrapper_call: answer_yes(block); break;
  default: break;
  }
}

bool node_has_side_effects(an_expr_node *expr)
{
  return ask(expr, look_for_side_effects);
}

bool dynamic_init_has_side_effects(a_dynamic_init *init)
{
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  if (init->kind == dik_constructor && constructor_of(init).routine != nullptr) return true;
  block.expr_callback = look_for_side_effects;
  block.follow_dynamic_inits = true;
  traverse_dynamic_init(init, &block);
  return block.result;
}

bool expr_list_has_side_effects(an_expr_node *list)
{
  for (; list != nullptr; list = list->next) {
    if (node_has_side_effects(list)) return true;
  }
  return false;
}

// Whether a second evaluation, later in the same full expression, gives the same value: constants,
// addresses, and parameters or temporaries that nothing can change in between.
static void look_for_variance(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  switch (expr->kind) {
  case enk_error:
  case enk_constant:
  case enk_field:
  case enk_routine:
  case enk_type_operand:
  case enk_address_of_ellipsis: return;
  case enk_sizeof: block->skip_subtree = true; return;
  case enk_variable: {
    a_variable *variable = variable_of(expr);
    bool is_fixed = expr->is_lvalue || variable->is_this_parameter || variable->is_temporary;
    if (!is_fixed) answer_yes(block);
    return;
  }
  case enk_operation:
    switch (op_of(expr)) {
    case eok_address_of:
    case eok_cast:
    case eok_lvalue_cast:
    case eok_array_to_pointer:
    case eok_negate:
    case eok_plus:
    case eok_complement:
    case eok_not:
    case eok_add:
    case eok_subtract:
    case eok_multiply:
    case eok_pointer_add:
    case eok_pointer_subtract: return;
    case eok_dot_field:
      if (expr->is_lvalue) return;
      break;
    default: break;
    }
    break;
  default: break;
  }
  answer_yes(block);
}

bool is_invariant_expr(an_expr_node *expr)
{
  return !ask(expr, look_for_variance);
}
