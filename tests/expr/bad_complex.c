// options: --no_gcc --c99 --remarks
// proves: complex and imaginary operands
double d; float f; int i; _Complex double z, w; _Imaginary double im; _Imaginary float imf; _Complex float zf; _Bool b;
void t(void)
{
  z = im;
  im = d;  // expect: warning real_imaginary_conversion
  im = z;
  d = z;
  d = im;  // expect: warning real_imaginary_conversion
  i = im;  // expect: warning real_imaginary_conversion
  b = im;  // expect: warning real_imaginary_conversion
  z = z < w;  // expect: error complex_type_not_allowed
  i = z == w;
  i = im == im;
  i = im < im;  // expect: error complex_type_not_allowed
  i = z % w;  // expect: error expr_not_integral expect: error expr_not_integral
  z = ~z;  // expect: error expr_not_integral
  im *= im;  // expect: warning imaginary_times_assign
  im += d;
  d += im;
  d *= im;
  im *= d;
  z = im * im;
  d = im / im;
  z = d + im;
  z = d / im;
  z = z * im;
  i = z;
  z++;
  im++;
  i = !z;
  if (z) i = 1;
  i = (int)z;
  z = (double _Complex)d;
  z = __I__;
  i = z && 1;
  z = i ? z : d;
  z = i ? im : d;
  im = -im;
  i = (int *)z;  // expect: error bad_cast
  i = z << 1;  // expect: error expr_not_integral
  switch (z) { }  // expect: error expr_not_integral
  d = *z;  // expect: error bad_indirection_operand
  z = (_Complex double *)0 == 0;
}
int s1 = sizeof(_Complex float) + sizeof(_Imaginary double) * 100;
double _Complex c1 = 1.0 + 2.0 * __I__;
double c2 = __I__ * __I__;
double _Imaginary c3 = 3.0 * __I__;
int c4 = (__I__ * 2.0) == (__I__ * 2.0f);
double _Complex c5 = (1.0 + __I__) / (1.0 - __I__);
double _Complex c6 = 1.0 / (0.0 * __I__);
_Complex int c7;  // expect: error only_applies_to_float_types
float _Complex c8 = 1e300 * __I__;  // expect: error float_to_float_conversion
