// options: -n --c99 --no_gcc
// proves: conversions between real and imaginary types are warned of
_Imaginary double x;
double d;
void f(void)
{
  d = x;  // expect: warning real_imaginary_conversion
  x = d;  // expect: warning real_imaginary_conversion
}
