// options: -n --gcc --gnu_version=30300 --report_gnu_extensions
// proves: an early GNU C lets words modify a typedef's type and a local name hide a parameter
typedef int number;
unsigned number n;  // expect: warning typedef_modification_is_nonstandard
int f(int n) { int n = 1; return n; }  // expect: warning decl_hides_function_parameter
