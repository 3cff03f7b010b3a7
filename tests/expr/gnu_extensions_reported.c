// options: -n --gcc --report_gnu_extensions
// proves: what GNU C adds to expressions and initializers is told on demand
int h(void) { return ({ 1; }) + sizeof(__typeof__(int)); }  // expect: warning statement_expression_is_gnu_extension, expect: warning typeof_is_gnu_extension
struct s { int a, b; } t = { .b = 4 };  // expect: warning designator_is_nonstandard
