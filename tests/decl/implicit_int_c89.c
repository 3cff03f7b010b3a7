// options: -n --c89 --remarks
// proves: C89 takes int for a missing type, with a remark
static a;                  // expect: remark missing_type_specifier
f(x) { return x + a; }     // expect: remark missing_type_specifier
// the parameter and the function
// expect+1: remark missing_type_specifier
g(register x) { return x; }  // expect: remark missing_type_specifier
