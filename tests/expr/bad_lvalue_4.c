// options: --gcc --gnu_version=40300
// proves: what a cast lvalue is told from version 4 on, and what isn't modifiable
int i; char c, *cp; int *p; short s; struct S { int a; int arr[3]; } x; struct S fs(void); const int k = 1;
const struct S kx; struct CM { const int q; } cm, cm2; unsigned u; float f;
void t(void)
{
  (unsigned)i = 2;  // expect: warning gcc_use_of_cast_as_lvalue
  (char *)p = cp;  // expect: error expr_not_a_modifiable_lvalue
  (char)i = 1;  // expect: error expr_not_a_modifiable_lvalue
  (i ? s : c) = 1;  // expect: error expr_not_a_modifiable_lvalue
  (i ? i : i) = 1;  // expect: error expr_not_a_modifiable_lvalue
  k = 2;  // expect: error expr_not_a_modifiable_lvalue
  kx.a = 1;  // expect: error expr_not_a_modifiable_lvalue
  cm = cm2;  // expect: error expr_not_a_modifiable_lvalue
  fs().a = 1;  // expect: error expr_not_a_modifiable_lvalue
  fs() = x;  // expect: error expr_not_a_modifiable_lvalue
  x.arr = 0;  // expect: error expr_not_a_modifiable_lvalue
  5 = i;  // expect: error expr_not_a_modifiable_lvalue
  i++ = 2;  // expect: error expr_not_a_modifiable_lvalue
  cp = &fs();  // expect: error expr_not_an_lvalue_or_function_designator
  p = &5;  // expect: error expr_not_an_lvalue_or_function_designator
  p = &fs().a;  // expect: error expr_not_an_lvalue_or_function_designator
  (i = 5) = 6;  // expect: error expr_not_a_modifiable_lvalue
  -i = 3;  // expect: error expr_not_a_modifiable_lvalue
  k++;  // expect: error expr_not_a_modifiable_lvalue
  ++x;  // expect: error expr_not_arithmetic
  x++;  // expect: error expr_not_arithmetic
  i = ~f;  // expect: error expr_not_integral
  i = !x;  // expect: error expr_not_scalar
  i = ~p;  // expect: error expr_not_integral
}
