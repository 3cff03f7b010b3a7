// options: --gcc --check_misra=15
// proves: the form of switch statements
extern int next(void);
int f(int a, int b)
{
  switch (a) {
  case 1:
  case 2: b++; break;
  case 3: { b++; break; }
  case 4: { b++; } break;
  default: b--; break;
  }
  switch (a) {           // expect: warning misra_c_2004_15_3
  case 1: b++;           // expect: warning misra_c_2004_15_2
  case 2: b--; break;
  case 3: return b;      // expect: warning misra_c_2004_15_2
  case 4:
    while (next()) break;
  }                      // expect-2: warning misra_c_2004_15_2
  switch (a) {
  default: b++; break;   // expect: warning misra_c_2004_15_3
  case 1: b--; break;
  }
  switch (a) {
  case 1:
    if (b == 1) {
    case 2: b++;         // expect: warning misra_c_2004_15_1
    }
    break;
  default: break;
  }
  switch (a) {
  case 1:
    switch (b) {
    case 1: break;
    default: break;
    }
    break;
  default:
    b++;
  }                      // expect-2: warning misra_c_2004_15_2
  switch (a) case 1: b++; // expect: warning misra_c_2004_15_1 expect: warning misra_c_2004_15_3
  switch (a) {           // expect: warning misra_c_2004_15_5
  default: b++; break;
  }
  switch (b) { }         // expect: warning misra_c_2004_15_3 expect: warning misra_c_2004_15_5
  return b;
}
