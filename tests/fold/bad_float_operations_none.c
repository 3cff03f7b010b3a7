// options: --gcc --float_operations_allowed=none
// proves: without floating point every operation is reported, integers are not
int f(int a) { return a * 2; }
int g(int a)
{
  return a > 1.5;                   // expect: error float_support_disabled, expect: error float_support_disabled
}
