// options: -n
int f(int n) { int a[n]; return sizeof(({ &a; })); }  // expect: error statement_expr_with_vla_type
