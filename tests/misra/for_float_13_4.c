// options: --check_misra=13.4,15.4
// proves: a for loop is not controlled by floating objects, and switch not by a truth value
extern int next(void);
void f(int n, float limit)
{
  float x;
  int i;
  for (x = 0.0f; x < limit; x += 1.0f) { }       // expect: warning misra_c_2004_13_4
  for (i = 0; i < n && limit > 1; i++) { }       // expect: warning misra_c_2004_13_4
  for (i = 0; i < n; limit += 1.0f) { i++; }
  switch (n == 0) { case 0: break; default: break; } // expect: warning misra_c_2004_15_4
  switch (n && i) { case 0: break; default: break; } // expect: warning misra_c_2004_15_4
  switch (n + i) { case 0: break; default: break; }
  switch (next()) { case 0: break; default: break; }
}
