// options: --c99 --gcc
// proves: declarations of an identifier list name the parameters declared before them, in bounds and sizes
int printf(const char *, ...);
int sum(n, a, m)
    int n;
    int a[n];
    int (*m)[n];
{
  int total = sizeof *m;
  for (int i = 0; i < n; i++) total += a[i] * m[1][i];
  return total;
}
int sizes(a, b, c)
    short a;
    char b[sizeof a * 2], (*c)[sizeof a + 1];
{
  return sizeof *c * 100 + sizeof b * 10 + sizeof a + b[0];
}
int rows(t, r, c)
    int r, c;
    int t[r][c + 1];
{
  return t[r - 1][c] + sizeof t[0];
}
int calls;
int count(void) { return ++calls; }
int once(p) int (*p)[count()]; { return sizeof *p + calls * 100; }
enum { outer = 3 };
int hidden(outer, p) int outer; int (*p)[outer]; { return sizeof *p; }
int main(void)
{
  int t[2][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}}, u[2][3] = {{1, 2, 3}, {4, 5, 6}};
  printf("%d %d %d\n", sum(4, t[0], t), sizes(1, "x", "yz"), rows(u, 2, 2));
  printf("%d %d\n", once(0), hidden(5, 0));
  return 0;
}
