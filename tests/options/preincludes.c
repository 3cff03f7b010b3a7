// options: --preinclude=Inputs/pre.h --preinclude_macros=Inputs/macros_only.h -P
// proves: one file is read whole before the source, of the other one only the macros
ONLY_THE_MACRO
