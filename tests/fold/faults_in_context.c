// options: --gcc
// proves: a fault is an error where a constant is required, else a warning, and nothing in a dead arm
int bound[1 / 0];                   // expect: error divide_by_zero
enum { bad = 5 % 0 };               // expect: error mod_by_zero
int f(int x)
{
  int a = 1 / 0;                    // expect: warning divide_by_zero
  int b = x ? 2 : 3;
  int c = 1 ? 4 : 1 / 0;
  int d = 0 && 1 % 0;
  int e = sizeof(1 / 0);
  switch (x) {
  case 2147483647 + 1: return 1;    // expect: warning integer_overflow
  case 3 - 5 % 0: return 2;         // expect: error mod_by_zero
  }
  return a + b + c + d + e;
}
