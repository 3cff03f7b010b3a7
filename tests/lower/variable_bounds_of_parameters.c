// options: --c99 --gcc --no_warnings
// needs: arm
// proves: bounds of parameters with side effects are evaluated once, on entry
#include <stdio.h>

static int f1(int n, int a[n++][n++])
{
  int inner = sizeof(a[0]) / sizeof(int); // C99 leaves the order of the two open
  return n * 100 + (inner == 5 || inner == 6);
}
static int f2(int n, int a[n++])
{
  return n * 100 + *a;
}
static int f3(int n, int b[2][n], int (*const c)[n++], const int d[2][n])
{
  return n * 1000 + sizeof b[0] + sizeof c[0] * 2 + d[1][0];
}
static int f4(int n, char (*b)[sizeof(int[n++])][2])
{
  return n * 1000 + sizeof *b + b[1][2][1];
}
static int f5(int n, int (**b)[n += 2])
{
  return n * 1000 + (*b)[1][1];
}
static int plain(int n, int b[n][n])
{
  return sizeof b[0] + b[1][0];
}

int main(void)
{
  int buf[64], *start = buf;
  for (int i = 0; i < 64; i++)
    buf[i] = i;
  char bytes[64];
  for (int i = 0; i < 64; i++)
    bytes[i] = i;
  printf("%d %d\n", f1(5, 0), f2(5, start));
  printf("%d\n", f3(5, 0, 0, (void *)buf));
  printf("%d\n", f4(3, (void *)bytes));
  printf("%d %d\n", f5(3, (void *)&start), plain(4, (void *)buf));
  return 0;
}
