// proves: jumps over initializations, and into the scope of arrays of variable length
// options: --c99
extern void use(int);
void forward(void)
{
  goto inside;                       // expect: warning branch_past_initialization
  {
    int skipped = 1;                 // expect: warning initialization_not_reachable
inside:
    use(skipped);
  }
}
void backward(int n)
{
again:
  {
    int value = n;
    use(value);
    if (n--) goto again;
  }
}
void sideways(int n)
{
  { int a = 1; use(a); if (n) goto other; }          // expect: warning branch_past_initialization
  { int b = 2; use(b); other: use(n); }
}
void by_case(int n)
{
  switch (n) {
    int skipped = 1;                 // expect: warning initialization_not_reachable
    case 1:                          // expect: warning branch_past_initialization
      use(skipped);
  }
}
void variable_length(int n)
{
  goto inside;                       // expect: error branch_past_initialization
  {
    int array[n];
inside:
    use(sizeof array);
  }
}
