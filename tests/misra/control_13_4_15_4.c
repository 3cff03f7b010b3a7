// options: --check_misra=13.4,15.4
// proves: no floating object controls a for statement, and no truth value a switch
extern int f(int n);
extern struct { float x; } s;
int g(int i, int n, float limit)
{
  int found = 0;
  for (i = 0; i < n; i++) { f(i); }
  for (i = 0; i < limit; i++) { f(i); }                    // expect: warning misra_c_2004_13_4
  for (i = 0; f(i) && (s.x > 0.5F); i++) { f(i); }         // expect: warning misra_c_2004_13_4
  for (limit = 0.0F; i < n; i++) { f(i); }
  switch (i) { case 1: f(1); break; default: break; }
  switch (i == n) { case 1: f(1); break; default: break; } // expect: warning misra_c_2004_15_4
  switch (!i) { case 1: f(1); break; default: break; }     // expect: warning misra_c_2004_15_4
  found = i == n;
  switch (found) { case 1: f(1); break; default: break; }  // expect: warning misra_c_2004_15_4
  switch (f(i)) { case 1: f(1); break; default: break; }
  return found;
}
