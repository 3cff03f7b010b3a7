// options: --c99 --check_misra=14.8,14.9
// proves: what loops, switch, if and else control is between braces
extern int next(void);
int f(int a)
{
  while (next()) a++;                 // expect: warning misra_c_2004_14_8
  while (next()) { a++; }
  while (next()) ;                    // expect: warning misra_c_2004_14_8
  while (next()) continue;            // expect: warning misra_c_2004_14_8
  do a++; while (next());             // expect: warning misra_c_2004_14_8
  do { a++; } while (next());
  for (;;) if (next()) { break; }     // expect: warning misra_c_2004_14_8
  for (int i = 0; i < a; i++) { int j = i; a = j; }
  switch (a) case 1: a++;             // expect: warning misra_c_2004_14_8
  switch (a) { default: a++; }
  if (a == 1) a++;                    // expect: warning misra_c_2004_14_9
  if (a == 1) { a++; }
  if (a == 1) ;                       // expect: warning misra_c_2004_14_9
  if (a == 1) { a++; } else a--;      // expect: warning misra_c_2004_14_9
  if (a == 1) { a++; } else if (a == 2) a--; // expect: warning misra_c_2004_14_9
  if (a == 1) { a++; } else if (a == 2) { a--; } else { a = 0; }
  if (a == 1) { a++; } else inner: if (a == 2) { a--; } // expect: warning misra_c_2004_14_9
  if (a == 1) { a++; } else { if (a == 2) { goto inner; } }
  while (next()) { while (next()) a--; } // expect: warning misra_c_2004_14_8
  return a;
}
