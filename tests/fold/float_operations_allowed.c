// options: --gcc --float_operations_allowed=32
// proves: operations of a width that isn't allowed are reported, those of the other are not
float f(float a, float b) { return a * b + 1.0f; }
double g(float a)                   // expect: error float_support_disabled
{
  int i = a > 2.0f;
  double d = a;                     // expect: error float_support_disabled, expect: error float_support_disabled
  return d
         + i;                       // expect: error float_support_disabled, expect: error float_support_disabled
}
