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
// The initialization of an object of class `type` by the constructor that the arguments choose, with its
// default arguments; without a constructor, by a copy of the one argument.  Null after an error.  The
// destructor is noted.  Argument operands are used up.
a_dynamic_init *make_constructor_init(a_type *type, an_arg_operand *args,
                                      a_source_position position);
// What initializes an object of `type` with the value of the node; a temporary of the class is the object.
a_dynamic_init *dynamic_init_from_expr(an_expr_node *node, a_type *type);
// The temporaries of which one is the class value of the node aren't destroyed: what takes it is.
void release_class_value(an_expr_node *node);
// The result of a call, of a class with a destructor, becomes a temporary.
void make_temporary_of_class_result(an_operand *result);
// The destructor of a class or an array of one, or null; reports one that may not be used.
a_routine *expr_select_destructor(a_type *type, const a_source_position *position);
void add_dtor_to_dynamic_init(a_dynamic_init *init, a_type *type,
                              const a_source_position *position);
// A temporary is destroyed at the end of the current lifetime.
void set_temp_dynamic_init_lifetime(a_dynamic_init *init, a_type *type,
                                    const a_source_position *position);
// 324
void check_for_abstract_object(a_type *type, const a_source_position *position);
// Whether a value in a list initializes an element of a class as a whole.
bool converts_to_class_element(an_operand *operand, a_type *type);
// The class that the type is, or that its elements are, however deep the array; else null.
a_type *class_of_elements(a_type *type);
// The initialization of an object without initializer: null where nothing is to be done, or after an
// error (*failed).  Arrays repeat that of one element.
a_dynamic_init *make_default_init(a_type *type, a_source_position position, bool *failed);
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
