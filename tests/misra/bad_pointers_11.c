// options: --check_misra=11
// proves: a conversion that is refused breaks no rule; one that is let pass with a warning does
extern int *ip;
extern long *lp;
extern struct s { int a; } s;
extern float f;
void g(void)
{
  lp = ip;         // expect: warning incompatible_assignment_operands expect: warning misra_c_2004_11_4
  ip = 4;          // expect: warning incompatible_assignment_operands expect: warning misra_c_2004_11_3
  ip = (int *)f;   // expect: error bad_cast
  ip = (int *)s;   // expect: error bad_cast
  f = ip;          // expect: error incompatible_assignment_operands
  lp = (long *)ip; // expect: warning misra_c_2004_11_4
}
