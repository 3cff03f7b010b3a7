// options: --check_misra=12.3,12.4,12.10,12.13
// proves: side effects where they are lost or easily missed
extern int f(int n);
extern volatile int v;
extern int *p, row[4];
extern unsigned size;

int g(int i, int n)
{
  size = sizeof(i++);                           // expect: warning misra_c_2004_12_3
  size = sizeof(f(i));                          // expect: warning misra_c_2004_12_3
  size = sizeof(i);
  size = sizeof(v);
  size = sizeof(int);
  size = sizeof row[i];
  if ((i == 0) && (n++ == 0)) { f(1); }         // expect: warning misra_c_2004_12_4 expect: warning misra_c_2004_12_13
  if ((n++ == 0) && (i == 0)) { f(1); }         // expect: warning misra_c_2004_12_13
  if ((i == 0) || (f(1) == 0)) { f(2); }        // expect: warning misra_c_2004_12_4
  if ((i == 0) || (v == 0)) { f(1); }           // expect: warning misra_c_2004_12_4
  if ((i == 0) || (row[n] == 0)) { f(1); }
  i = 1, n = 2;                                 // expect: warning misra_c_2004_12_10
  for (i = 0, n = 1; i < n; i++, n--) { f(1); } // expect: warning misra_c_2004_12_10 expect: warning misra_c_2004_12_10
  f((i = 1, n));                                // expect: warning misra_c_2004_12_10
  i++;
  --i;
  (void)i++;
  (i)++;
  i = n++;                                      // expect: warning misra_c_2004_12_13
  i = n + --i;                                  // expect: warning misra_c_2004_12_13
  f(i++);                                       // expect: warning misra_c_2004_12_13
  row[i++] = 1;                                 // expect: warning misra_c_2004_12_13
  *p++ = 1;                                     // expect: warning misra_c_2004_12_13
  while (i--) { f(1); }
  do { f(1); } while (i-- > 0);                 // expect: warning misra_c_2004_12_13
  for (i = 0; i < n; ++i) { f(1); }
  return i++;                                   // expect: warning misra_c_2004_12_13
}
