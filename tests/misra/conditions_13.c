// options: --check_misra=13.1,13.3
// proves: assignments in truth values, and tests of floating values for equality
extern int f(int n);
extern float x, y;
static int same = 1.5 == 2.5;        // expect: warning misra_c_2004_13_3

int g(int i, int j)
{
  if (i = j) { f(1); }               // expect: warning misra_c_2004_13_1
  if ((i = j)) { f(1); }             // expect: warning misra_c_2004_13_1
  if ((i = j) != 0) { f(1); }        // expect: warning misra_c_2004_13_1
  if (i == j) { i = j; }
  while ((i = f(1)) > 0) { f(1); }   // expect: warning misra_c_2004_13_1
  for (i = 0; i += j; i++) { f(1); } // expect: warning misra_c_2004_13_1
  do { i = j; } while (i -= 1);      // expect: warning misra_c_2004_13_1
  switch (i = j) { case 1: break; default: break; }
  if (f(i = 3)) { f(1); }
  i = j = same;
  i = (j = 2) != 0;                  // expect: warning misra_c_2004_13_1
  i = !(j = 2);                      // expect: warning misra_c_2004_13_1
  i = (j = 2) && i;                  // expect: warning misra_c_2004_13_1
  i = (j = 2) ? 1 : 3;               // expect: warning misra_c_2004_13_1
  i = j ? (i = 2) : 3;
  if (x == 0.0F) { f(1); }           // expect: warning misra_c_2004_13_3
  if (x != y) { f(1); }              // expect: warning misra_c_2004_13_3
  if (x == 0) { f(1); }              // expect: warning misra_c_2004_13_3
  if (x < y) { f(1); }
  if (i == 0) { f(1); }
  return !(x <= y);
}
