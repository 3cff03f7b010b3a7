// options: --no_loop_pragmas
// proves: all pragmas of loops can be ignored
void f(int n)
{
#pragma MUST_ITERATE(1)
#pragma UNROLL(2)
#pragma LOOP_NO_ALIAS
  while (n) n--;
}
