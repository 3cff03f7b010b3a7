// options: -n --remarks
// proves: empty dependent statements and constant selectors are remarked
int f(int n)
{
  if (n) ;  // expect: remark empty_then_statement
  if (n) n = 1; else ;  // expect: remark empty_else_statement
  switch (3) { case 3: break; }  // expect: remark switch_selector_expr_is_constant
  return n;
}
__attribute__((noreturn)) void stops(void) { }  // expect: warning noreturn_function_does_return
