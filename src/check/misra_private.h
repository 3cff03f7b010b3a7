// misra_private.h - what the files of the checker share among themselves.
#pragma once
#include "il/il.h"

// --- Bodies of functions (misra_statements.cpp) ---

// 1467 to 1471, 1501, 1505, 1416: the statements of a function's body.
void check_statements(a_statement *body);
// A block that stands between braces in the source.
bool is_source_block(const a_statement *statement);
// The statement behind what the parser put around it.
a_statement *skip_generated_blocks(a_statement *statement);

// --- Parameters (misra_params.cpp) ---

// 1460 for each parameter of pointer type of the function scope through which the body doesn't store.
void check_pointer_parameters(a_scope *function_scope, a_statement *body);
