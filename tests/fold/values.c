// options: --gcc
// proves: what is folded equals what the machine computes
int printf(const char *, ...);
#define SHOW(type, format, expression) do { static const type folded = expression; printf(format " ", folded); } while (0)
volatile int zero;
int main(void)
{
  SHOW(int, "%d", -7 / 2); SHOW(int, "%d", -7 % 3); SHOW(int, "%d", -8 >> 1); SHOW(unsigned, "%u", -8u >> 1);
  SHOW(int, "%d", (signed char)200); SHOW(int, "%d", (unsigned short)-1); SHOW(int, "%d", (int)-2.9);
  SHOW(unsigned, "%u", (unsigned)3e9); SHOW(long long, "%lld", (long long)-1e18); SHOW(int, "%d", 3 > 2u);
  SHOW(int, "%d", -1 < 0u); SHOW(int, "%d", (unsigned char)255 + 1); SHOW(int, "%d", ~0 ^ 5 | 8 & 12);
  printf("\n");
  SHOW(float, "%.9g", 16777217); SHOW(float, "%.9g", 0.1f + 0.2f); SHOW(double, "%.17g", 0.1 + 0.2);
  SHOW(float, "%.9g", (float)0.1 * 3); SHOW(double, "%.17g", 1 / 3.0);
  SHOW(float, "%.9g", 1e-40f); SHOW(double, "%.17g", (float)1e10 / 3); SHOW(int, "%d", 0.0 == -0.0);
  SHOW(double, "%g", -0.0); SHOW(int, "%d", __builtin_nan("") != __builtin_nan(""));
  printf("\n");
  printf("%d %d %d %d %d\n", __builtin_clz(1), __builtin_ctz(8), __builtin_ffs(0), __builtin_popcount(255), __builtin_parity(7));
  printf("%g %d %d\n", __builtin_pow(2.0, 10.0), __builtin_isnan(0.0 / 0.0), __builtin_isinf(1 / 0.0));
  return zero;
}
