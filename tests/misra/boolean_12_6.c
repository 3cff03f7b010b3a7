// options: --check_misra=12.6
// proves: truth values and numbers are kept apart; a variable is what its first telling use makes of it
extern int f(int n);
extern int unknown, found, count, *p, bits;
extern struct { int flag; } s;

int logical(int i)
{
  if (!(i + 1)) { f(1); }              // expect: warning misra_c_2004_12_6
  if (!(i == 1)) { f(1); }
  if ((bits & 4) && unknown) { f(1); } // expect: warning misra_c_2004_12_6
  if (((bits & 4) != 0) && unknown) { f(1); }
  if (p && unknown) { f(1); }          // expect: warning misra_c_2004_12_6
  if ((p != 0) && s.flag && f(1)) { f(1); }
  if (!1 || !0) { f(1); }
  if (!2) { f(1); }                    // expect: warning misra_c_2004_12_6
  if (!i) { f(1); }                    // expect: warning misra_c_2004_12_6
  return (bits & 1) ? 2 : 3;           // expect: warning misra_c_2004_12_6
}

void mixtures(int a, int b)
{
  found = a == b;
  found = 1;
  if (!found) { f(1); }
  found = 5;                           // expect: warning misra_c_2004_12_6
  count = 5;
  count = a < b;                       // expect: warning misra_c_2004_12_6
  if ((a == 1) == (b == 1)) { f(1); }
  if ((a == 1) == 1) { f(1); }
  if ((a == 1) != 5) { f(1); }         // expect: warning misra_c_2004_12_6
  if (found == (a > b)) { f(1); }
  if (found != count) { f(1); }        // expect: warning misra_c_2004_12_6
}

int operators(int a, int b)
{
  int is_less = a < b, n;
  n = (a < b) + 1;                     // expect: warning misra_c_2004_12_6
  n = -(a < b);                        // expect: warning misra_c_2004_12_6
  n = (a < b) & (b < 3);               // expect: warning misra_c_2004_12_6
  n = (a < b) < 3;                     // expect: warning misra_c_2004_12_6
  n = a + b;
  found++;                             // expect: warning misra_c_2004_12_6
  is_less = is_less && found;
  is_less += 2;                        // expect: warning misra_c_2004_12_6
  n = (a < b) ? 4 : 5;
  return n;
}
