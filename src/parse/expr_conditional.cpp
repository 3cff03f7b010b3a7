// expr_conditional.cpp - the conditional operator on what only C++ has: lvalues, classes, throw.
// Entry:   do_cplusplus_conditional.
// See:     C++98 5.16.
#include "driver/flags.h"
#include "il/il.h"
#include "il/types.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"

static bool is_bit_field_lvalue(const an_operand *operand)
{
  if (operand->kind != ok_expression) return false;
  an_expr_node *node = operand->value.expr;
  if (!is_operation(node, eok_dot_field) && !is_operation(node, eok_arrow_field)) return false;
  an_expr_node *field = second_operand_of(node);
  return field->kind == enk_field && field_of(field)->is_bit_field;
}

// An object that a reference could bind to.  Arrays decay as they do in C.
static bool is_plain_lvalue(const an_operand *operand)
{
  return is_lvalue_operand(operand) && operand->kind == ok_expression &&
         !is_array_type(operand->type) && !is_bit_field_lvalue(operand);
}

static void join_references(an_operand *second, an_operand *third, an_operand *result)
{
  result->ref_entries = second->ref_entries != nullptr ? second->ref_entries : third->ref_entries;
  result->last_ref_entry =
      third->last_ref_entry != nullptr ? third->last_ref_entry : second->last_ref_entry;
  if (second->last_ref_entry != nullptr)
    second->last_ref_entry->next_in_operand = third->ref_entries;
}

// Takes one arm to the other's type as conditional_operator_conversion_possible found.
static void convert_arm(an_operand *arm, const an_operand *other, a_conv_descr *conv)
{
  if (conv->routine == nullptr && conv->std_conv.base_class != nullptr && is_lvalue_operand(arm)) {
    step_object_to_class(arm, false, skip_typerefs(other->type));
    return;
  }
  user_convert_operand(arm, is_lvalue_operand(other) ? other->type : rvalue_type(other->type), conv,
                       true);
}

// One arm takes the class of the other.  True when that is all there is to do: an error, or an operator
// function's call.
static bool convert_class_arms(an_operand *second, an_operand *third, a_source_position *pos,
                               an_operand *result)
{
  a_conv_descr to_third, to_second;
  bool third_ambiguous, second_ambiguous;
  bool second_converts =
      conditional_operator_conversion_possible(second, third, &to_third, &third_ambiguous);
  bool third_converts =
      conditional_operator_conversion_possible(third, second, &to_second, &second_ambiguous);
  if (second_converts && third_converts) {
    expr_pos_ty2_diagnostic(es_error, ec_ambiguous_question_operator, *pos, second->type,
                            third->type);
    operand_will_not_be_used_because_of_error(second);
    operand_will_not_be_used_because_of_error(third);
    make_error_operand(result);
    return true;
  }
  if (second_converts)
    convert_arm(second, third, &to_third);
  else if (third_converts)
    convert_arm(third, second, &to_second);
  else
    return do_overloaded_operator(tok_quest_mark, pos, second, third, result);
  return false;
}

bool do_cplusplus_conditional(an_operand *condition, an_operand *second, an_operand *third,
                              a_source_position *pos, an_operand *result)
{
  if (condition->kind == ok_error || second->kind == ok_error || third->kind == ok_error)
    return false;
  if (in_constant_context() || is_void_type(second->type) || is_void_type(third->type))
    return false;
  bool any_class =
      is_class_struct_union_type(second->type) || is_class_struct_union_type(third->type);
  bool both_lvalues = is_plain_lvalue(second) && is_plain_lvalue(third);
  bool same = f_identical_types(second->type, third->type,
                                both_lvalues ? 0u : unsigned{ido_ignore_top_qualifiers});
  if (any_class && !same) {
    if (convert_class_arms(second, third, pos, result)) return true;
    if (second->kind == ok_error || third->kind == ok_error) return false;
    both_lvalues = is_plain_lvalue(second) && is_plain_lvalue(third);
    same = f_identical_types(second->type, third->type, 0);
  }
  if (both_lvalues && same && condition->kind != ok_constant) {
    an_operand left = *second, right = *third;
    do_question_operation(condition, second, third, left.type, false, true, result, pos);
    join_references(&left, &right, result);
    return true;
  }
  // An object that the condition selects among rvalues is a new one.
  if (any_class && is_lvalue_operand(second) != is_lvalue_operand(third))
    copy_class_lvalue(is_lvalue_operand(second) ? second : third);
  return false;
}
