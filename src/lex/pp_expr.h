// pp_expr.h - the controlling expression of #if and #elif.
#pragma once
#include "il/il_fwd.h"

// Computes the expression that begins at the current token; the rest of the line is the caller's.  *result
// gets the value as an integer constant, or the error constant after a fault.  Issues 40, 59, 62, 181, 195.
void scan_pp_expression(a_constant *result);
