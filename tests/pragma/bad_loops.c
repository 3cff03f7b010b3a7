// options: -n
// proves: pragmas of loops with too few or too many operands, out of range, and in front of no loop
int f(int n)
{
#pragma MUST_ITERATE(5, 3)           // expect: warning pragma_arg_min_no_gt_max
  while (n) n--;
#pragma MUST_ITERATE()               // expect: warning pragma_requires_1or2or3_parms
  while (n) n--;
#pragma MUST_ITERATE(1, 2, 3, 4)     // expect: warning pragma_requires_1or2or3_parms
  while (n) n--;
#pragma PROB_ITERATE(1, 2, 3)        // expect: warning pragma_requires_1or2_parms
  while (n) n--;
#pragma UNROLL(0)                    // expect: warning pragma_parm_gt_zero
  while (n) n--;
#pragma UNROLL(-1)                   // expect: warning pragma_parm_gt_zero
  while (n) n--;
#pragma UNROLL                       // expect: warning pragma_requires_1_parm
  while (n) n--;
#pragma UNROLL(1, 2)                 // expect: warning pragma_requires_1_parm
  while (n) n--;
#pragma LOOP_NO_ALIAS(n)             // expect: warning pragma_requires_1_parm
  while (n) n--;
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_loop
  n = 4;
#pragma MUST_ITERATE(2)              // expect: warning pragma_must_precede_loop
  if (n) n = 4;
#pragma PROB_ITERATE(2)              // expect: warning pragma_must_precede_loop
  { n = 4; }
#pragma NO_ALIAS_CLONE               // expect: warning pragma_must_precede_loop
  switch (n) { case 4: break; }
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_loop
  return n;
}
