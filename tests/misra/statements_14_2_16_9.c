// options: --check_misra=14.2,16.9
// proves: statements without effect, and names of functions that aren't called
extern int f(int n), g(void);
extern int (*pointer)(int n), *p;

int h(int i, int j)
{
  i;                     // expect: warning misra_c_2004_14_2
  i + 1;                 // expect: warning misra_c_2004_14_2
  i == j;                // expect: warning misra_c_2004_14_2
  *p;                    // expect: warning misra_c_2004_14_2
  f(1) + 1;              // expect: warning misra_c_2004_14_2
  i ? j : 1;             // expect: warning misra_c_2004_14_2
  f(1);
  (void)i;
  i++;
  i ? f(1) : 0;
  ;
  pointer = f;           // expect: warning misra_c_2004_16_9
  pointer = &f;
  pointer = &(f);
  i = f(1);
  i = pointer(1);
  i = (*f)(1);           // expect: warning misra_c_2004_16_9
  if (g == 0) { i = 2; } // expect: warning misra_c_2004_16_9
  i = sizeof(g());
  return i;
}
