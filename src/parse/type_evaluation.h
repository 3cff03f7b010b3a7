// type_evaluation.h - what the names of variably modified types evaluate (C99 6.7.5.2p5).
// A bound with side effects, or one that is looked at again later, is collected while the name is
// scanned inside an expression and put in front of the operator that the name belongs to.
#pragma once

#include "parse/exprutil.h"

// `expr`, in the current region, is evaluated with the type name at hand, behind what is collected
// already: in the innermost expression entry or, in a declaration, by a statement.
void add_type_evaluation(an_expr_node *expr, a_source_position position);
// The size goes to a temporary, which the evaluation of the type name sets.
void evaluate_dimension_with_type(a_vla_dimension *dimension);
// Starts a type name of its own inside an expression; returns what the outer one has collected.
an_expr_node *begin_type_evaluation();
// Ends it: returns what is to be evaluated, or null, and restores the outer one's.
an_expr_node *end_type_evaluation(an_expr_node *outer);
// The operand is evaluated behind `evaluation`, which may be null; an lvalue stays one.
void put_type_evaluation_before(an_expr_node *evaluation, an_operand *operand);
