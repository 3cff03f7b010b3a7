// options: -E
// status: 4
// proves: a file that includes itself without end is a catastrophe
#include "recursion.c"
