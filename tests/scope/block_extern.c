// options: --no_gcc
// proves: standard C finds an extern declaration whose block is closed, with a warning
int f(void)
{
  extern int shared;
  return shared;
}
int g(void)
{
  return shared;                     // expect: warning using_out_of_scope_declaration
}
