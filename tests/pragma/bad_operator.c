// options: -n
// proves: pragmas that act at their directive have no operator form, but for once
_Pragma("once")
_Pragma("hdrstop")  // expect: error invalid_pragma_operator
_Pragma("no_pch")  // expect: error invalid_pragma_operator
int n;
