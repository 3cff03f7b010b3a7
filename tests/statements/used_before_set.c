// proves: a value read before any was stored; loops, labels and addresses keep the tool silent
extern void fill(int *);
int plain(void)
{
  int n;
  return n;                          // expect: warning used_before_set
}
int address(void)
{
  int n;
  fill(&n);
  return n;
}
int in_loop(int count)
{
  int n;
  while (count--) {
    if (count == 3) return n;
    n = count;
  }
  return 0;
}
int after_label(int count)
{
  int n;
again:
  if (count) return n;
  n = 1;
  goto again;
}
int size_only(void)
{
  int n;
  return sizeof n;
}
