// options: --remarks
// proves: which mixtures of pointers, integers and classes are doubtful and which are wrong
struct S { int a; } s; struct U { int a; } u; enum E { A } e; enum F { B } ff;
int i, *ip; char c, *cp; const int *cip; void *vp; void (*fp)(void); int (*ifp)(int); float f;
int (*ap)[3]; int (*ap4)[4]; volatile int *vip; const void *cvp; signed char *scp;
void takes_int(int), takes_ptr(int *);
int *returns_int(void) { return 1; }  // expect: warning bad_return_value_type
int returns_ptr(void) { return ip; }  // expect: warning bad_return_value_type
struct S returns_other(void) { return u; }  // expect: error bad_return_value_type
void assign(void)
{
  ip = cp;  // expect: warning incompatible_assignment_operands
  ip = cip;  // expect: warning incompatible_assignment_operands
  ip = vp;
  ip = i;  // expect: warning incompatible_assignment_operands
  i = ip;  // expect: warning incompatible_assignment_operands
  ip = 0;
  ip = 'a';  // expect: warning incompatible_assignment_operands
  ip = (void *)0;
  c = ip;  // expect: warning incompatible_assignment_operands
  f = ip;  // expect: error incompatible_assignment_operands
  ip = f;  // expect: error incompatible_assignment_operands
  s = u;  // expect: error incompatible_assignment_operands
  s = i;  // expect: error incompatible_assignment_operands
  i = s;  // expect: error incompatible_assignment_operands
  ifp = fp;  // expect: warning incompatible_assignment_operands
  ap = ap4;  // expect: warning incompatible_assignment_operands
  ip = vip;  // expect: warning incompatible_assignment_operands
  vp = cvp;  // expect: warning incompatible_assignment_operands
  vp = fp;  // expect: warning incompatible_assignment_operands
  cp = scp;  // expect: warning incompatible_assignment_operands
  e = 1;
  e = ff;  // expect: warning mixed_enum_type
  i = takes_int;  // expect: warning incompatible_assignment_operands
  takes_int = 0;  // expect: error expr_not_a_modifiable_lvalue
  takes_ptr(cp);  // expect: warning incompatible_param
  takes_ptr(i);  // expect: warning incompatible_param
  takes_ptr(cip);  // expect: warning incompatible_param
  takes_int(ip);  // expect: warning incompatible_param
  takes_int(s);  // expect: error incompatible_param
}
void initialize(void)
{
  int *i1 = cp; int i2 = ip;  // expect: warning bad_initializer_type expect: warning bad_initializer_type
  int *i3 = 0; int *i4 = 5;  // expect: warning bad_initializer_type
  struct S i5 = u;  // expect: error bad_initializer_type
  takes_ptr(i1), takes_int(i2), takes_ptr(i3), takes_ptr(i4), takes_int(i5.a);
}
void compare(void)
{
  i = ip == cp;  // expect: warning incompatible_operands
  i = ip == i;  // expect: warning incompatible_operands
  i = ip == 0;
  i = ip == vp;
  i = ip < 0;
  i = ip == f;  // expect: error incompatible_operands
  i = ip < fp;  // expect: warning incompatible_operands
  i = ip == cip;
  i = s == s;  // expect: error expr_not_arithmetic expect: error expr_not_arithmetic
  vp = i ? ip : cp;  // expect: warning incompatible_operands
  vp = i ? ip : i;  // expect: warning incompatible_operands
  vp = i ? ip : 0;
  i = ip - cp;  // expect: error incompatible_operands
  i = ip - (unsigned *)ip;  // expect: warning nonstandard_ptr_minus_ptr
  i = *i;  // expect: error bad_indirection_operand
  i = ip->a;  // expect: error expr_not_ptr_to_class
  i = i.a;  // expect: error expr_not_class
  i = s.b;  // expect: error not_a_field
  i();  // expect: error expr_not_ptr_to_function
  (struct S)i;  // expect: error cast_to_bad_type
  (int)s;  // expect: error bad_cast
  (float)ip;  // expect: error bad_cast
  (void (void))i;  // expect: error cast_to_bad_type
  (void)s;
  i = (const int)i;  // expect: remark cast_to_qualified_type
  c = (char)ip;  // expect: warning integer_truncated
}
