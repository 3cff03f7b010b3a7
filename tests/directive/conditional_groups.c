// options: --c99
// proves: one group of a conditional is taken; skipped groups hold whatever they like
#if 0
don't stop at quotes, nor at "these
#error not here
#unknown
#include "nowhere.h"
#if nested
#else here
#elif ((
#endif
words /* a comment over lines
#endif
#else
*/ #endif in the middle of a line is no directive
"/*" '/*' // /*
#elif 1
taken
#elif 1/0
not this
#else
nor this
#endif
#ifdef __FILE__
builtin
#endif
#ifndef defined
defined is no macro
#endif
#if defined __LINE__ && !defined(nothing)
both forms
#endif
