// options: --gcc --c99 --remarks
// proves: the target's own operators: which operands they take and what they say
struct S { int a; double d; } s; int v, arr[4]; float f; double d; long double ld; _Complex float cf; extern int pick(int, double, ...);
int i1 = __INTADDR__(5);
int i2 = __INTADDR__(&((struct S *)0)->d);
unsigned i3 = __INTADDR__(&v);
int i4 = __INTADDR__(v);  // expect: error expr_not_constant
int i5 = __INTADDR__(1.5);  // expect: error expr_not_integral_constant
int a1[__INTADDR__(&((struct S *)0)->d)];
int i6 = __va_argcsu(s);
int i7 = __va_argcsu(struct S);
int i8 = __va_argcsu(v);
int i9 = __va_argref(s);
int t(int p, struct S ps)
{
  int *q = (int *)__va_parmadr(p);
  int loc;
  q = (int *)__va_parmadr(loc);  // expect: error bad_va_parmadr
  q = (int *)__va_parmadr(5);  // expect: error bad_va_parmadr
  v = __va_argcsu(ps) + __va_argcsu(p) + __va_argref(ps);
  d = __generic(f, , , 1, 2, 3, 4, 5, 6);
  d = __generic(v, , , 1, 2, 3, 4, 5, 6);
  d = __generic(ld, , , 1, 2, 3, 4, 5, 6);
  d = __generic(cf, , , 1, 2, 3, 4, 5, 6);
  d = __generic(f, , , 1, , 3, 4, 5, 6);  // expect: error type_generic_function_mismatch
  d = __generic(&f, , , 1, 2, 3, 4, 5, 6);
  d = __generic(f, d, , 1, 2, 3, 4, 5, 6);
  d = __generic(f);  // expect: error exp_comma expect: error type_generic_function_mismatch
  return q != 0;
}
int i12 = __NAN__ != __NAN__;
float i13 = __INFINITY__;
int a2[__INFINITY__ > 1];
