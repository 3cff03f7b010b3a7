// options: --c99 --check_misra=13.6
// proves: the body of a for statement leaves its counter alone
extern int f(int n);
void g(int n)
{
  int i, j, done, row[4], *p;
  for (i = 0; i < 3; i++) { i = 2; }             // expect: warning misra_c_2004_13_6
  for (i = 0; i < 3; i++) {
    i++;                                         // expect: warning misra_c_2004_13_6
    i += f(1);                                   // expect: warning misra_c_2004_13_6
    j = i;
    f(i);
  }
  for (i = 0, done = 0; (i < n) && (done == 0); i++) { done = f(i); }
  for (i = 0; i < n; i++) { n = 3; }
  for (i = 0; i < 3;) { i++; }                   // expect: warning misra_c_2004_13_6
  for (int k = 0; k < 3; k++) { k = 2; }         // expect: warning misra_c_2004_13_6
  for (i = 0, j = 9; i < j; i++, j--) { j = 2; } // expect: warning misra_c_2004_13_6
  for (i = 0; i < 3; i++) {
    for (j = 0; j < i; j++) { i = j; }           // expect: warning misra_c_2004_13_6
    j = 2;
  }
  for (i = 0; i < 3; i++) {
    for (i = 0; i < 2; f(i)) { f(1); }           // expect: warning misra_c_2004_13_6
  }
  for (p = row; p != &row[3]; p = &row[1]) { p = row; }
  for (; i < 3;) { i = f(1); }
  while (i < 3) { i++; }
  i = 5;
}
