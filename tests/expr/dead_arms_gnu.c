// options: --gcc --remarks
// proves: in an arm that a known condition drops GNU constant contexts take anything
int f(void); int v; double d; struct S { int a; } s; extern void vf(void); char *str;
int a1[1 ? 2 : f()];
int a2[0 ? f() : 3];
int a3[1 ? 2 : v];
int a4[1 || f() ? 2 : 1];
int a5[0 && v++ ? 1 : 2];
int a6[1 ? 2 : (v = 1)];
int a7[1 ? 2 : (f(), 1)];
int a8[1 ? 2 : 1 / 0];
int a9[1 ? 2 : (int)(1.5 * d)];
int a10[1 ? 2 : s.a];
int a11[1 ? 2 : sizeof(struct undefd)];  // expect: error incomplete_type_not_allowed
int a12[1 ? 2 : undeclared];  // expect: error undefined_identifier
int a13[0 ? 1.5 : 3];  // expect: error expr_not_integral_constant
int a14[__builtin_constant_p(v) ? v : 4];
int a15[__builtin_choose_expr(0, v, 4)];
int a16[1 ? 2 : ({ 1; })];  // expect: error statement_expression_in_function_only
int a17[1 ? 4 : 1 << 40];
int i1 = 1 ? 2 : f();
int i2 = 0 ? v : 2;
int i3 = 1 || f();
int i4 = 0 && f();
int i5 = 1 ? 2 : (v = 1);
int *i6 = 1 ? &v : (int *)f();
int i7 = v || 1;  // expect: error expr_not_constant
int i8 = 1 ? s : 2;  // expect: error expr_not_constant
double i9 = 0 ? d : 1.5;
int i10 = 1 ?: f();
int i11 = 0 ?: 7;
int i12 = f ? 1 : 2;  // expect: warning boolean_controlling_expr_is_constant
int i13 = &v ? 1 : 2;  // expect: warning boolean_controlling_expr_is_constant
int i14 = "a" ? 1 : 2;
enum E { E1 = 1 ? 5 : f(), E2 = 0 && f() };
void t(int n)
{
  switch (n) { case 1 ? 2 : f(): ; }
  n = 0 ? 1 / 0 : 2;
  n = 1 ? 2 : 5 % 0;
  n = 0 && 1 / 0;
  n = 0 ? 1 << 40 : 2;
  n = 1 || (n = 1 << 40);
  n = n ? 1 / 0 : 2;  // expect: warning divide_by_zero
  if (0) n = 1 / 0;  // expect: warning divide_by_zero
  n = sizeof(1 / 0);
  static int st = 1 ? 2 : f();  // expect: warning declared_but_not_referenced
}
