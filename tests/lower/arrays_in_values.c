// options: --c99 --gcc --no_warnings
// proves: an array inside a value that is no object has elements and an address
int printf(const char *, ...);
struct s {
  int n, a[4];
  char name[8];
  struct {
    int m[2][2];
  } in;
};
static struct s f(int n)
{
  struct s r = {n, {n, n + 1, n + 2, n + 3}, "name", {{{1, 2}, {3, n}}}};
  return r;
}
static int sum(int *p)
{
  return p[0] + p[1];
}
int main(void)
{
  struct s x = f(10), y = f(20);
  int i = 2;
  printf("%d %d %d %d\n", f(1).a[i], *f(2).a, *(f(3).a + 1), i [f(8).a]);
  printf("%d %s %s %d\n", sum(f(4).a), f(5).name, f(5).name + 1, (int)sizeof f(1).a);
  printf("%d %d %d\n", (i ? x : y).a[1], (x = y).a[1], (i, y).a[3]);
  printf("%d %d %d\n", f(6).in.m[1][1], *f(7).in.m[1], (*f(7).in.m)[1]);
  if (f(9).name)
    for (; f(i).a[0] < 4; i++)
      ;
  while (*f(i).a > 2)
    i--;
  printf("%d\n", i);
  return 0;
}
