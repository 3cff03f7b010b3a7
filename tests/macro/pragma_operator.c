// proves: _Pragma acts as the directive would, out of a macro too
#define P(x) _Pragma(#x)
P(diag_suppress 1181)
#warning silent
_Pragma("diag_default 1181")
#warning heard  // expect: warning warning_directive
