// options: -n
// proves: where parsing goes on after lines that were passed over is told
int f(void)
{
  int a = 1 2  // expect: error exp_semicolon
    3
    4
    5;  // expect: warning end_of_flush
  return a;
}
