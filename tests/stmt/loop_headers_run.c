// options: --c99
// proves: declarations in loop headers, with arrays of variable length, compound literals and statements inside
int printf(const char *, ...);
static int calls;
static int next(int n) { calls++; return n - 1; }
static int sum_of(int n)
{
  int sum = 0;
  for (int i = 0, last = n; i < last; i++)
    for (int j = i, k[2] = {i, j}; j < last; j++, k[0]++)
      sum += k[0] * k[1];
  return sum;
}
static int variable(int n)
{
  int sum = 0;
  for (int i = 1, a[n]; i <= n; i++) {
    a[i - 1] = i * (int)sizeof a;
    sum += a[i - 1];
    if (sum > 400) continue;
    int b[i];
    b[i - 1] = a[i - 1];
    sum += b[i - 1] + sizeof b;
  }
  return sum;
}
static int conditions(int n)
{
  int count = 0;
  while (({ int m = next(n); n = m; m > 0; })) count++;
  do { if (count == 3) continue; count += 2; } while (({ static int left = 4; left-- > 0; }));
  struct pair { int a, b; }; for (struct pair p = {1, 2}, *q = &p; q->a < 10; p = (struct pair){q->a + q->b, q->b + 1}) count += p.b;
  for (;;) { if (++count > 100) break; else continue; }
  return count;
}
static int from_literals(int n)
{
  int sum = 0;
  for (const int *p = (int[]){n, 2 * n, 3, 0}; *p; p++) sum += *p;
  for (char *s = (char[]){"abc"}; *s; ++s) sum += *s - 'a';
  return sum;
}
int main(void)
{
  printf("%d %d %d %d %d\n", sum_of(5), variable(6), conditions(8), from_literals(7), calls);
  return 0;
}
