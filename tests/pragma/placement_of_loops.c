// options: -n
// proves: a pragma of loops in front of a declaration, inside an expression and at a block's end
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_statement
int a;
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_statement
;
int f(int n)
{
#pragma MUST_ITERATE(2)              // expect: warning pragma_must_precede_statement
  int k = 1;
  n = k +
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_statement
    a;
  while (n)
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_statement
  ;
  for (n = 0;
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_statement
       n < 3; n++) {
    a++;
#pragma UNROLL(2)                    // expect: warning pragma_may_not_be_used_here
  }
  return n;
#pragma UNROLL(2)                    // expect: warning pragma_may_not_be_used_here
}
#pragma UNROLL(2)                    // expect: warning pragma_must_precede_statement
