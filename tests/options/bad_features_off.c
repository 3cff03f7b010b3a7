// options: --no_vla --nonstd_gnu_keywords
// proves: --no_vla leaves arrays of constant size only
typeof(int) f(int n)
{
  int v[n]; // expect: error expr_not_constant
  return 0;
}
