// fp_constraints.h - the restriction of floating-point operations (option
// float_operations_allowed).
#pragma once

// Adds the observer that reports operations which legal_float_precision does not allow: 0 none, 1
// all, 2 of 32 bits, 3 of 64 bits.  Nothing is added where all are allowed.  The observer issues
// 1558.
void FP_OPERATION_CONSTRAINTS_FACTORY();
