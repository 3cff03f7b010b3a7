// options: --no_gcc --svr4 --remarks
// proves: System V C takes the address of a register variable and casts as lvalues, with warnings
int i; unsigned u; char c, *cp; int *ip;
void t(void)
{
  register int r = 1;
  ip = &r;  // expect: warning address_of_register_variable
  (unsigned)i = 2;  // expect: warning expr_not_a_modifiable_lvalue
  (char *)ip = cp;  // expect: warning expr_not_a_modifiable_lvalue
  (char)i = 1;  // expect: error expr_not_a_modifiable_lvalue
  ((char *)ip)++;  // expect: warning expr_not_a_modifiable_lvalue
  u = *ip;
}
