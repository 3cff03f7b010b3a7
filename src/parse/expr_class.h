// expr_class.h - expressions on objects of classes: calls of special members.
#pragma once
#include "il/il_fwd.h"
#include "parse/exprutil.h"

// The operand becomes a temporary of class `type` that `constructor` makes from it; conversions of
// the one argument and default arguments are done.
void make_constructor_call_operand(a_routine *constructor, a_type *type, an_operand *operand);
// *result becomes a temporary of class `type` made from the arguments, whose operands are used up.
struct an_arg_operand;
void construct_temporary(a_type *type, an_arg_operand *args, a_source_position position,
                         an_operand *result);
// The operand, an object, becomes the result of its conversion function.
void call_conversion_function(a_routine *function, an_operand *operand);
struct an_operator_request;
struct a_candidate_function;
// The call of the operator function that was chosen; both operands are converted by its summaries.
void call_operator_function(const an_operator_request *request, a_candidate_function *winner,
                            an_operand *left, an_operand *right, an_operand *result);
// An object of a derived class becomes the lvalue of the base class that the member belongs to.
void adjust_object_to_member_class(an_operand *object, a_routine *function);
// A function that an expression calls without naming it.
void record_use_of_function(a_symbol *symbol, a_source_position position);
