// expr_internal.h - what the files of the expression scanner share and nobody else calls.
#pragma once
#include "parse/expr.h"
#include "parse/exprutil.h"
#include "lex/tokens.h"

// Handlers of operators behind an operand; see operators.def.  The operator is the current token,
// `left` is
// consumed, `result` may not be `left`.
#define OPERATOR_HANDLER(name)                                                                     \
  void name(an_operand *left, a_rescan_control_block *control_block, an_operand *result)
OPERATOR_HANDLER(scan_subscript);
OPERATOR_HANDLER(scan_function_call);
OPERATOR_HANDLER(scan_field_selection);
OPERATOR_HANDLER(scan_ptr_to_member_selection);
OPERATOR_HANDLER(scan_postfix_incr_decr);
OPERATOR_HANDLER(scan_multiplicative_operator);
OPERATOR_HANDLER(scan_additive_operator);
OPERATOR_HANDLER(scan_shift_operator);
OPERATOR_HANDLER(scan_relational_operator);
OPERATOR_HANDLER(scan_equality_operator);
OPERATOR_HANDLER(scan_min_max_operator);
OPERATOR_HANDLER(scan_bit_operator);
OPERATOR_HANDLER(scan_logical_operator);
OPERATOR_HANDLER(scan_conditional_operator);
OPERATOR_HANDLER(scan_assignment_operator);
OPERATOR_HANDLER(scan_compound_assignment_operator);
OPERATOR_HANDLER(scan_comma_operator);

// The type of comparisons and logical operators: int, or bool where C++ has the keyword.
a_type *boolean_result_type();

// C++: the arms of a conditional before the conversions of C.  True: *result is set; else they may have been
// converted, and the ordinary code goes on.
bool do_cplusplus_conditional(an_operand *condition, an_operand *second, an_operand *third,
                              a_source_position *pos, an_operand *result);
// An lvalue of a class becomes a temporary that its copy constructor makes; of one without, its value.
void copy_class_lvalue(an_operand *operand);

// Prefix operators; the current token is the operator.
void scan_prefix_incr_decr(an_operand *result);
void scan_prefix_operator(an_operand *result);
void scan_address_of_operator(an_operand *result);
void scan_indirection_operator(an_operand *result);
void scan_real_or_imag_operator(an_operand *result);

// One entry of the scanner: the stack is cut and the context taken over; closing restores it.
struct a_scan_entry {
  an_expr_stack_entry *enclosing;
  an_expr_stack_entry entry;
};
void open_entry(a_scan_entry *scan, an_expression_kind kind, bool force_own_lifetime,
                bool no_lifetime);
void close_entry(a_scan_entry *scan, const an_operand *operand);

// First operands.
void scan_primary(an_operand *result, an_operand *selector, int min_precedence, unsigned flags);
void scan_identifier_expression(an_operand *result, unsigned flags);
void scan_parenthesized_form(an_operand *result, unsigned flags);
void scan_sizeof_operator(an_operand *result);
void scan_alignof_operator(an_operand *result);
void scan_offsetof_operator(an_operand *result);
void scan_intaddr_operator(an_operand *result);
void scan_generic_operator(an_operand *result);
void scan_types_compatible_operator(an_operand *result);
void scan_va_operator(an_operand *result);
// The same with the name consumed: the current token is "(".  tok_error stands for the old varargs
// form.
void scan_va_builtin(a_token_kind token, a_source_position pos, an_operand *result);
void scan_target_operator(an_operand *result); // __va_argref and its kin, segment operators
void scan_function_name_token(an_operand *result);
void scan_string_literal(an_operand *result);
bool token_is_function_name(a_token_kind token);
// Makes the current function-name token a string constant token; false when it is no such token.
bool token_is_function_name_string_literal();

// Calls.
void scan_builtin_with_special_arguments(an_operand *function, a_routine *routine,
                                         an_operand *result);
bool has_special_arguments(a_routine *routine);
bool is_foldable_gnu_builtin_function(a_routine *routine);
void fold_builtin_call_if_possible(a_routine *routine, an_expr_node *arguments, an_operand *result);

struct an_arg_check_block;
// The type of a call's value, complete or void; reports and gives the error type otherwise.
a_type *return_type_of_call(a_type *routine_type, a_source_position *pos);
// Builds the call of a converted function operand with the block's arguments.
void finish_call(an_operand *function, a_routine *routine, an_arg_check_block *block,
                 a_type *return_type, a_source_position *open_pos, a_source_position *end,
                 an_operand *result);
// The cast that (type)operand asks for.
void cast_to_type(a_type *type, an_operand *operand, a_source_position pos);
// C++: the part of it that C doesn't know (references, classes, overload sets); true when done.
bool cast_cplusplus_operand(a_type *type, an_operand *operand, a_source_position pos);
// static_cast and its kin; the keyword is the current token.
void scan_keyword_cast(an_operand *result);
// T(x), T(); the current token is "(".
void scan_functional_cast(a_type *type, a_source_position pos, an_operand *result);
// The type of a simple type specifier that stands before "(", or null; the token stays.
a_type *type_of_functional_cast_keyword();
struct an_arg_operand;
// The arguments up to the `)`, unconverted; their references stay pending.
an_arg_operand *scan_argument_operands();
// C++: a call whose function is chosen by its arguments; the current token is "(".
void scan_call_by_name(an_operand *function, an_operand *result);
// The format string of a printf or scanf call against its arguments.
void check_format_arguments(const an_arg_check_block *block);

// At `new`, `delete`, or the `::` in front of one.
void scan_new_operator(an_operand *result);
void scan_delete_operator(an_operand *result);
void scan_throw_operator(an_operand *result);
// The deallocation function of an object of `type`, of its class or global, with one parameter or with
// the size behind; *set: what was found by its name.  Both may be null.
a_symbol *find_usual_operator_delete(a_type *type, bool is_array, bool is_global, a_symbol **set);

// Members (expr_member.cpp).
void scan_this(an_operand *result);
// The current identifier names a field or a member function: of `this`, or a pointer to member.
void make_operand_of_member(a_symbol *symbol, const a_symbol_locator *locator, unsigned flags,
                            an_operand *result);
// object.f or object->f: a static member function as it stands, any other bound to the object.
void select_function(a_symbol *symbol, an_operand *object, bool is_arrow, a_source_position *pos,
                     an_operand *result);
// (f)(x): a member function named alone that is called after all.
void bind_member_to_this(an_operand *function);
// The object pointer of the bound function that is called next.
void take_bound_selector(an_operand *selector);
// The object, or pointer to one (is_arrow), becomes one of class_type, its class or a base class of
// that; false, reported, when the base class is ambiguous.
bool step_object_to_class(an_operand *object, bool is_arrow, a_type *class_type);
// The object of a static member only says where the name is looked up; what it does stays.
void keep_side_effects_of_object(an_operand *object, an_operand *result);
// An ok_sym_for_member operand becomes the constant; 140, 560.
void make_ptr_to_member_constant_operand(an_operand *operand);
void scan_class_field_selection(an_operand *left, an_operand *result);
// Selection of the (possibly anonymous) member of an object; see make_field_operand.
void select_member(a_symbol *symbol, an_operand *object, bool is_arrow, a_source_position *pos,
                   an_operand *result);

// Assigns: both operands were scanned.
void process_simple_assignment(an_operand *left, an_operand *right, a_source_position *pos,
                               unsigned token, an_operand *result);

// Would the operator be applied to an operand that was scanned with this minimum?
bool token_binds_tighter(unsigned token, int min_precedence);
// A shift whose value operand isn't constant: warns about a constant count that is out of range.
void check_count_of_unfolded_shift(an_operand *left, an_operand *right);

// A fold to the constant 0 or 1 of type int, and to a size_t.
void make_size_constant_operand(unsigned long long value, an_operand *operand);
// The value of an expression is dropped: reports 176 where nothing happens in it, for a statement in place of that
// 1413 where the rule is checked.
void check_for_no_effect(an_operand *operand, bool is_statement);
void check_for_unused_result(an_operand *operand);
// Tokens are skipped as one operand of an expression would be; nothing is reported twice.
void scan_operand_of_list(an_operand *result); // up to a comma
