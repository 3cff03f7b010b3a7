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
  return 0;
}
