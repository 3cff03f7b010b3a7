// options: -n --gcc --c99
// proves: only lvalues and functions have an address; members of values have none, arrays among them
struct s { int n; char c[2]; int bits : 3; } make(void), a, b;
int f(int d)
{
  register int r = 1;
  int *p = &make().n;  // expect: error expr_not_an_lvalue_or_function_designator
  char (*q)[2] = &make().c;  // expect: error expr_not_an_lvalue_or_function_designator
  q = &(a = b).c;  // expect: error expr_not_an_lvalue_or_function_designator
  q = &(d ? a : b).c;  // expect: error expr_not_an_lvalue_or_function_designator
  q = &(a, b).c;  // expect: warning expr_has_no_effect, expect: error expr_not_an_lvalue_or_function_designator
  q = &a.c;
  p = &a.bits;  // expect: error address_of_bit_field
  p = &r;  // expect: error address_of_register_variable
  p = &(d + 1);  // expect: error expr_not_an_lvalue_or_function_designator
  p = &5;  // expect: error expr_not_an_lvalue_or_function_designator
  p = &d++;  // expect: error expr_not_an_lvalue_or_function_designator
  p = &(int){3};
  p = &*p;
  p = &p[2];
  return *p + (*q)[0] + (*&f)(0) + *&"ab"[0];
}
