// misra_expr.h - what the checks of expressions share, and nobody else calls.
#pragma once
#include "check/misra.h"
#include "il/il_entities.h"

// ---- Fundamental types (misra_types.cpp) ----

// The type that a value has before promotions.  Where the type is an integer type, `precision` is the number of bits
// that the value takes, without a sign bit.  A constant that is not negative and has no suffix `adapts`: it goes with
// the signedness of what it meets, and so do truth values and a choice of two such constants.
struct a_fundamental_type {
  a_type *type;
  int precision;
  bool adapts;
};

a_fundamental_type fundamental_type_of_expr(an_expr_node *expr);
a_fundamental_type fundamental_type_of_constant(a_constant *constant);
a_fundamental_type fundamental_type_of_operand(an_operand *operand);
// The type in which an operator meets both.
a_fundamental_type balanced_type(const a_fundamental_type &left, const a_fundamental_type &right);
// The number of value bits of an integer type.
int value_bits_of_type(a_type *type);

// ---- Forms of expressions (misra_types.cpp) ----

// Neither a constant, an object, the result of a call nor a cast: its underlying type is that of an operation.
bool is_complex_expr(an_expr_node *expr);
// Below the casts that the compiler added; for a folded constant, the expression that it was folded from.
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

// Pushes 1398 to 1402 for a conversion from or to a pointer.
void push_pointer_conversion_rules(an_operand *operand, a_type *type);

// ---- Effectively Boolean (misra_boolean.cpp) ----

// State of a variable's boolean_use, and what is known of an expression.
enum a_boolean_use : unsigned char { bu_unknown, bu_boolean, bu_not_boolean };

a_boolean_use classify_as_boolean(an_expr_node *expr);

// ---- The walk over a full expression (misra_expr.cpp) ----

// Rules that are reported once in an expression.
enum a_walk_rule : unsigned char {
  wr_10_5, wr_12_1, wr_12_2, wr_12_4, wr_12_5, wr_12_6, wr_12_7, wr_12_9, wr_12_10, wr_12_13, wr_13_1, wr_13_3,
  wr_13_6, wr_17_4, wr_17_6, wr_last
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
