// fp_constraints.h - floating-point operations that the target doesn't have (option float_operations_allowed).
#pragma once
#include "il/il_fwd.h"
#include "lex/source_position.h"

// Each reports 1558 at the place of an operation, call, definition or initialization of a type that
// legal_float_precision rules out.  Nothing is done when everything is allowed.
void check_float_operations_in_expr(an_expr_node *node);
void check_float_types_of_routine(a_routine *routine, const a_source_position *position);
void check_float_initialization(a_type *type, const a_source_position *position);
