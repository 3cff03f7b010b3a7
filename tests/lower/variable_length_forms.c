// options: --c99 --gcc --no_warnings
// proves: arrays of variable length in loops, switches, parameters and statics keep the size that they had
#include <stdio.h>
#include <string.h>
struct p {
  int x;
  char c;
};
int stat(int n)
{
  static int buf[20];
  static int(*p)[3];
  for (int i = 0; i < 20; i++)
    buf[i] = i;
  p = (void *)buf;
  int(*q)[n] = (void *)p;
  return q[1][0] * 100 + p[1][0];
}
int st2(int n, int k)
{
  static int buf[20];
  for (int i = 0; i < 20; i++)
    buf[i] = i;
  static int(*p)[3] = 0;
  {
    int(*w)[n] = (void *)buf;
    static int c;
    c += w[k][0];
    return c;
  }
}
int par(int n, int a[static n], int b[const n], int (*c)[n], int d[][n], struct p e[n],
        int (*f)(int m, int g[m][m]))
{
  return a[n - 1] + b[0] + (*c)[1] + d[1][0] + e[n - 1].x + f(2, (void *)a) + sizeof *c +
         sizeof d[0];
}
int fn(int m, int g[m][m])
{
  return g[m - 1][m - 1] + sizeof g[0];
}
int proto(int n, int[n], int (*)[n], int[*][*]);
int proto(int n, int a[n], int (*b)[n], int c[n][n])
{
  return sizeof *b + c[1][1] + a[0];
}
int sw(int n)
{
  int r = 0;
  switch (n) {
  case 1: {
    int a[n + 1];
    a[n] = 4;
    r = a[1] + sizeof a;
    break;
  }
  default: {
    char a[n];
    memset(a, 3, n);
    r = a[n - 1];
    {
      short b[n][2];
      b[n - 1][1] = 9;
      r += b[n - 1][1] + sizeof b;
    }
  }
  }
  return r;
}
int back(int n)
{
  int s = 0;
again:;
  char a[n];
  a[0] = n;
  s += sizeof a + a[0];
  if (--n > 2) goto again;
  return s;
}
int diff(int n, char (*p)[n], char (*q)[n])
{
  return p - q;
}
int loop(int n)
{
  int s = 0;
  for (int i = 1; i <= n; i++) {
    for (char v[i], *p = v; p < v + sizeof v; p++) {
      *p = i;
      s += *p;
      if (s > 40) break;
    }
    if (s & 1) continue;
    double w[i][i];
    s += sizeof w / sizeof w[0];
  }
  return s;
}
int whl(int n)
{
  int s = 0;
  while (n-- > 0) {
    struct p v[n + 1];
    v[n] = (struct p){n, 'c'};
    if (n == 3) continue;
    s += v[n].x;
    do {
      int q[n + 2];
      q[0] = s;
      s = q[0] + 1;
      if (n == 1) break;
    } while (0);
  }
  return s;
}
int cnd(int n, int m)
{
  int a[n][m];
  memset(a, 1, sizeof a);
  int(*p)[m] = a, (*r)[] = a;
  int *z = n > 2 ? *p : 0;
  return (n ? a : p)[0][0] == z[0] && (*r)[1] == z[1];
}
int tdef(int n)
{
  typedef char T[n];
  typedef T U[2];
  n = 100;
  U u;
  T *p = u;
  return sizeof u + sizeof(T) + sizeof(U) + (p + 1 == &u[1]) + (char *)(p + 1) - (char *)p;
}
long long big(unsigned char n)
{
  long long a[n][n];
  return sizeof a;
}
int rec(int n)
{
  if (n == 0) return 0;
  int a[n];
  for (int i = 0; i < n; i++)
    a[i] = i;
  return a[n - 1] + rec(n - 1);
}
int neg(int n)
{
  char a[n < 0 ? -n : n];
  return sizeof a;
}
int inner(int n)
{
  int r = 0;
  {
    int n2 = n;
    int a[n2];
    {
      int n = 3;
      int b[n][n2];
      r = sizeof b + sizeof a;
    }
    n2 = 9;
    r += sizeof a;
  }
  return r;
}
int st(int n)
{
  static int(*p)[n] = 0;
  static int buf[10];
  p = (void *)buf;
  n = 77;
  return (char *)(p + 1) - (char *)p;
}
int main(void)
{
  int x[20];
  for (int i = 0; i < 20; i++)
    x[i] = i * i;
  struct p e[3] = {{1}, {2}, {3}};
  printf("%d %d %d\n", stat(4), st2(3, 1), st2(5, 2));
  printf("%d\n", par(3, x, x, (void *)x, (void *)x, e, fn));
  printf("%d\n", proto(3, x, (void *)x, (void *)x));
  printf("%d %d\n", sw(1), sw(5));
  printf("%d\n", back(6));
  printf("%d\n", diff(3, (void *)((char *)x + 9), (void *)x));
  printf("%d %d\n", loop(6), whl(6));
  printf("%d %d\n", cnd(3, 2), tdef(5));
  printf("%d\n", st(3));
  printf("%lld %d %d %d\n", big(20), rec(8), neg(-4), inner(2));
  return 0;
}
