// options: --c99 --gcc
// proves: complex constants keep infinities and signed zeros
#include <stdio.h>
static _Complex double z = 1.5 + 2.5i, w = -0.0 + 0.0i;
static _Complex float f = 3.0f;
int main(void)
{
  _Complex double s = z * z, q = z / (1.0 - 1.0i), c = ~z;
  __real__ w += 0;
  printf("%g %g %g %g %g %g\n", __real__ s, __imag__ s, __real__ q, __imag__ q, __real__ c, __imag__ c);
  printf("%g %g %g\n", 1 / __real__ (2.0 + 4.0i), __imag__ (f + 2.0if), __real__ f);
  printf("%d %d\n", z == 1.5 + 2.5i, z != s);
  return 0;
}
