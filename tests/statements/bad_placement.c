// proves: statements outside of what they belong to, and their missing parts
void f(int n)
{
  break;                             // expect: error break_must_be_in_loop_or_switch
  continue;                          // expect: error continue_must_be_in_loop
  case 1: ;                          // expect: error case_label_must_be_in_switch
  default: ;                         // expect: error default_label_must_be_in_switch
  switch (n) {
    default: break;
    default: break;                  // expect: error default_label_appears_more_than_once
    case 3: continue;                // expect: error continue_must_be_in_loop
  }
  else n = 1;                        // expect: error exp_statement
  do n--; whilst (n);                // expect: error exp_while
}
int g(int n)
{
  if (n) int k = n;                  // expect: error dependent_stmt_is_declaration // expect: warning declared_but_not_referenced
  return 0;
}
