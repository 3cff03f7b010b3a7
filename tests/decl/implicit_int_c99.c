// options: -n --c99
// proves: C99 has no implicit int
static a;                  // expect: warning missing_type_specifier
f(int x) { return x + a; }  // expect: warning missing_type_specifier
