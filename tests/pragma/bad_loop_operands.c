// options: -n
// proves: operands of loop pragmas that are no numbers
void f(int n)
{
#pragma MUST_ITERATE(1 2)            // expect: error exp_comma
  while (n) n--;
#pragma UNROLL(n)                    // expect: error expr_not_constant
  while (n) n--;
#pragma UNROLL(4                     // expect: error exp_rparen
  while (n) n--;
#pragma UNROLL(99999999999)          // expect: error integer_too_large
  while (n) n--;
#pragma PROB_ITERATE(4294967296)     // expect: error integer_too_large
  while (n) n--;
#pragma UNROLL(4) more               // expect: error extra_text_in_pp_directive
  while (n) n--;
}
