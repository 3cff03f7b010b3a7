// misra_expr.h - what the checks of expressions share, and nobody else calls.
#pragma once
#include "check/misra.h"
#include "il/il_entities.h"

// ---- Fundamental types (misra_types.cpp) ----

// The type that a value has before promotions.  Where the type is an integer type, `precision` is
// the number of bits that the value takes, without a sign bit.  A constant that is not negative and
// has no suffix `adapts`: it goes with the signedness of what it meets, and so do truth values and
// a choice of two such constants.
struct a_fundamental_type {
  a_type *type;
  int precision;
  bool adapts;
};

a_fundamental_type fundamental_expr_type(an_expr_node *expr);
a_fundamental_type fundamental_constant_type(a_constant *constant);
a_fundamental_type fundamental_operand_type(an_operand *operand);
bool is_expr_of_signed_integral_type(an_expr_node *expr);
// The type in which an operator meets both.
a_fundamental_type balanced_type(const a_fundamental_type &left, const a_fundamental_type &right);
// The number of value bits of an integer type.
int value_bits_of_type(a_type *type);

// ---- Forms of expressions (misra_types.cpp) ----

// Neither a constant, an object, the result of a call nor a cast: its underlying type is that of an
// operation.
bool is_complex_expr(an_expr_node *expr);
// Below the casts that the compiler added; for a folded constant, the expression that it was folded
// from.
an_expr_node *written_expr(an_expr_node *expr);
an_expr_node *below_all_casts(an_expr_node *expr);
bool is_explicit_cast(const an_expr_node *expr);
bool is_comparison_operator(an_expr_operator_kind op);
bool is_incr_decr_operator(an_expr_operator_kind op);
bool is_assignment_operator(an_expr_operator_kind op);
// The variable at the bottom of an lvalue that no pointer leads to, or null.
a_variable *variable_of_object(an_expr_node *lvalue);
// The place of the operator, or where there is none the start of the expression.
a_source_position place_of_expr(const an_expr_node *expr);

// ---- Conversions (misra_conv.cpp, misra_pointers.cpp) ----

// A conversion of a number: between fundamental types, for an operand of `precision` value bits.
struct a_misra_conversion {
  a_constant *constant;        // null if the operand is none
  a_type *source_type;
  a_type *target_type;
  int precision;
  a_source_position position;  // of the message
  bool adapts;                 // the values are known not to be negative
  bool is_complex;             // the expression is
  bool is_argument;
  bool is_return;
  bool is_implicit;
  bool is_compound;            // part of an operation: the other operand is converted as well
};

// 1393 to 1396, 1464.
void misra_check_is_conv_valid(const a_misra_conversion *conversion);
// 1393, 1394 and 1464 for an operand that is converted implicitly.
void misra_check_is_oper_conv_valid(an_operand *operand, a_misra_conversion_use use,
                                    a_type *target_type);
// 1484 if the first type is plain char and the second the char type of numbers, 1485 if it is the
// other way round.
void ensure_types_both_plain_or_unplain_char(a_source_position pos, a_type *type1, a_type *type2);
// Pushes 1398 to 1402 for a conversion from or to a pointer.
void push_pointer_conversion_rules(an_operand *operand, a_type *type);
// The address of an object with automatic storage; *variable is that object, or null if it has no
// name.
bool is_expr_ptr_to_nonstatic(an_expr_node *expr, a_variable **variable);

// ---- Effectively Boolean (misra_boolean.cpp) ----

// State of a variable's boolean_use, and what is known of an expression.
enum a_boolean_use : unsigned char { bu_unknown, bu_boolean, bu_not_boolean };

a_boolean_use classify_as_boolean(an_expr_node *expr);

// ---- The walk over a full expression (misra_expr.cpp) ----

// Rules that are reported once in an expression, with their class.
#define WALK_RULES(ROW)                                                                            \
  ROW(10_5, required)                                                                              \
  ROW(12_1, advisory)                                                                              \
  ROW(12_2, required)                                                                              \
  ROW(12_4, required)                                                                              \
  ROW(12_5, required)                                                                              \
  ROW(12_6, advisory)                                                                              \
  ROW(12_7, required)                                                                              \
  ROW(12_9, required)                                                                              \
  ROW(12_10, required)                                                                             \
  ROW(12_13, advisory)                                                                             \
  ROW(13_1, required)                                                                              \
  ROW(13_3, required)                                                                              \
  ROW(13_6, required)                                                                              \
  ROW(17_4, required)                                                                              \
  ROW(17_6, required)

enum a_walk_rule : unsigned char {
#define ROW(rule, rule_class) wr_##rule,
  WALK_RULES(ROW)
#undef ROW
  wr_last
};

struct a_misra_walk {
  bool is_reported[wr_last];
};

void report_rule(a_misra_walk *walk, a_walk_rule rule, const an_expr_node *expr);
// 1483, with the text of the part of the rule.
void report_boolean_rule(a_misra_walk *walk, const char *text, const an_expr_node *expr);
// 12.6 at one node (misra_boolean.cpp).
void check_boolean_use(an_expr_node *expr, a_misra_walk *walk);
// 12.2 and 13.6 in a full expression (misra_order.cpp).
void check_order_of_evaluation(an_expr_node *expr, a_misra_walk *walk);
// Whether both nodes stand for the same object.
bool oper_nodes_are_same_arg(an_expr_node *a, an_expr_node *b);
// An operand of the operator `op` needs no parentheses: a constant, a name, something in
// parentheses, or `op` again.
bool is_operand_misra_primary_expr(an_expr_node *operand, an_expr_operator_kind op);
// The variable that the controlling expression of a loop tests, or null (misra_loops.cpp).
a_variable *find_loop_condition_variable(an_expr_node *expr);
