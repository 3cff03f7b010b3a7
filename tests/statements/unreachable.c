// proves: one message for each dead region; labels and breaks bring code back to life
extern void work(int);
void endless(int x)
{
  for (;;) { work(x); }
  x = 1;                             // expect: warning code_is_unreachable
  x = 2;
}
void left_by_break(int a)
{
  int x;
  while (1) {
    if (a) break;
  }
  x = 1;
  do { break; } while (1);
  work(x);
}
int returns(void)
{
  return 1;
  return 2;                          // expect: warning code_is_unreachable
  return 3;
}
int label_revives(int n)
{
  if (n) goto out;
  return 1;
out:
  return 2;
}
void dead_loops(int n)
{
  return;
  while (n) work(n--);               // expect: warning loop_not_reachable
}
void entered_loop(int n)
{
  goto inside;
  while (n) {
inside:
    work(n--);
  }
}
void before_the_first_case(int n)
{
  switch (n) {
    work(0);                         // expect: warning code_is_unreachable
    case 1: work(1);
  }
}
extern void stop(void) __attribute__((noreturn));
int after_noreturn(int n)
{
  if (n) return 1;
  stop();
}
