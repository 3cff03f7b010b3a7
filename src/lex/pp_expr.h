// pp_expr.h - the controlling expression of #if and #elif.
#pragma once
#include "il/il_fwd.h"

// The stack of running expressions, which the expression scanner installs: a directive may stand in the
// middle of an expression and must not see it.
extern an_expr_stack_entry **pp_expr_stack_to_cut;

// Computes the expression that begins at the current token; the rest of the line is the caller's.  *result
// gets the value as an integer constant, or the error constant after a fault.
// Issues 18, 29, 31, 40, 54, 59, 62 to 64, 181, 195; catastrophe 144 for nesting without end.
void scan_pp_expression(a_constant *result);
