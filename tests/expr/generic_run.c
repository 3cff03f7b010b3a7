// options: --c99
// proves: the type-generic selector takes the function of the combined argument type
#include <stdio.h>
static double fd(double x) { return x + 1; }
static float ff(float x) { return x + 2; }
static long double fl(long double x) { return x + 3; }
static double fcd(double _Complex x) { return __real__ x + 4; }
static float fcf(float _Complex x) { return __real__ x + 5; }
long double fcl(long double _Complex x) { return __real__ x + 6; }
#if __GNUC__ > 4  /* a direct build */
#define g(x) _Generic(x, int: fd, double: fd, float: ff, long double: fl, \
                      double _Complex: fcd, float _Complex: fcf)(x)
#else
#define g(x) __generic(x, , , fd, ff, fl, fcd, fcf, fcl)(x)
#endif
int main(void) {
  int i = 1; float f = 1; double d = 1; long double l = 1; double _Complex z = 1; float _Complex w = 1;
  printf("%g %g %g %g %g %g\n", (double)g(i), (double)g(f), (double)g(d), (double)g(l), (double)g(z), (double)g(w));
  return 0;
}
