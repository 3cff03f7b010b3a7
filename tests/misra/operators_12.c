// options: --check_misra=12.1,12.5
// proves: where parentheses are wanted: once for an expression
extern int f(int n);
extern double d;
extern unsigned u;
static int constant = 1 + 2 * 3;                         // expect: warning misra_c_2004_12_1
enum { shifted = 1 << 2 | 1, bracketed = (1 << 2) | 1 }; // expect: warning misra_c_2004_12_1
int row[2 * 3 + 1];                                      // expect: warning misra_c_2004_12_1

int g(int a, int b, int c, int *p)
{
  c = a + b * 2;                                         // expect: warning misra_c_2004_12_1
  c = a + (b * 2);
  c = a + b + c + 1;
  c = a - b - c;
  c = a + b - c;                                         // expect: warning misra_c_2004_12_1
  d = a + b + d;                                         // expect: warning misra_c_2004_12_1
  c = (a + b) * (b + c);
  c = a | b | c;                                         // expect: warning misra_c_2004_12_1
  c = -a + ~b;
  c = f(a + b) * row[a + b];
  c = a << 1 + b;                                        // expect: warning misra_c_2004_12_1
  c = a < b == c;                                        // expect: warning misra_c_2004_12_1
  c = a + b * 2 + c * 3;                                 // expect: warning misra_c_2004_12_1
  c = 1 + 2 * 3;                                         // expect: warning misra_c_2004_12_1
  c = 1 + (2 * 3);
  u = u + 2 * 3;                                         // expect: warning misra_c_2004_12_1
  u = u + (2 * 3);
  switch (a) {
  case 1 + 2 * 3: c = constant + shifted; break;         // expect: warning misra_c_2004_12_1
  default: c = bracketed; break;
  }
  if (a && b && c) { f(1); }
  if (a && b || c) { f(1); }                             // expect: warning misra_c_2004_12_5
  if ((a && b) || c) { f(1); }
  if (a == 0 && b) { f(1); }                             // expect: warning misra_c_2004_12_5
  if ((a == 0) && b) { f(1); }
  if (a && !b) { f(1); }                                 // expect: warning misra_c_2004_12_5
  if (a && (!b)) { f(1); }
  if (a && 1) { f(1); }
  if (p && row) { f(1); }
  if (row[0] && a) { f(1); }                             // expect: warning misra_c_2004_12_5
  if (f(1) && a) { f(1); }                               // expect: warning misra_c_2004_12_5
  return a == b || b == c || a == c;                     // expect: warning misra_c_2004_12_5
}
