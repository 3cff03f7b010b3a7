// options: --c99 --gcc --no_warnings
// proves: a real object that is combined with a complex value takes the real part of the result
int printf(const char *, ...);
int main(void)
{
  volatile double _Complex z = 1.0 + 2.0i;
  int i = 10;
  double d = 10;
  long long l = 100;
  i /= z, d /= z, l /= z;
  printf("%d %g %lld\n", i, d, l);
  i *= z, d -= z;
  printf("%d %g\n", i, d);
  z = 2.0i;
  _Bool b = 0, c = 1;
  b += z, c *= z;
  printf("%d %d\n", b, c);
  float _Complex w = 3.0f + 1.0fi;
  w *= z, w /= 2, __imag w += 3;
  printf("%g %g\n", __real w, __imag ~w);
  // A real operand has no imaginary part: zeros keep their signs.
  volatile double zero = 0, two = 2;
  double _Complex u;
  __real u = -zero, __imag u = 1;
  u = u * two, u += zero, u = u - zero;
  printf("%g %g\n", __real u, __imag u);
  __real u = 3, __imag u = -zero;
  u = two + u, u = u / two, u -= 1;
  printf("%g %g\n", __real u, __imag u);
  return 0;
}
