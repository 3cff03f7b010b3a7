// options: --no_iterate_pragmas
// proves: counts of iterations can be ignored alone; they are checked all the same
void f(int n)
{
#pragma MUST_ITERATE(1)
#pragma UNROLL(2)
  while (n) n--;
#pragma PROB_ITERATE(5, 3)  // expect: warning pragma_arg_min_no_gt_max
  while (n) n--;
}
