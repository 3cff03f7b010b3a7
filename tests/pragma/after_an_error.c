// options: -n
// proves: pragmas that wait for a construct when a declaration fails are dropped in silence
void f(int n)
{
  n = (1;                            // expect: error exp_rparen
#pragma UNROLL(2)
}
