// options: --c99
// proves: variable-length arrays: size evaluated once, sizeof at run time, parameters, typedefs, loops
#include <stdio.h>
#include <string.h>
static int calls;
static int size(int n) { calls++; return n; }
static int sum(int n, int m, int a[n][m])
{
  int t = 0;
  for (int i = 0; i < n; i++) for (int j = 0; j < m; j++) t += a[i][j];
  return t + (int)sizeof a[0];
}
int main(void)
{
  int n = 4;
  char buf[size(n) + 1];
  typedef int vec[n];
  n = 7;
  vec v;
  printf("%d %d %d\n", (int)sizeof buf, (int)sizeof v, calls);
  memset(buf, 'x', sizeof buf - 1);
  buf[sizeof buf - 1] = 0;
  puts(buf);
  int grid[n][3];
  for (int i = 0; i < n; i++) for (int j = 0; j < 3; j++) grid[i][j] = i * j;
  printf("%d %d\n", sum(n, 3, grid), (int)sizeof grid);
  int (*p)[3] = grid + 2;
  printf("%d %d\n", (*p)[2], (int)(&grid[5] - p));
  for (int k = 1; k < 4; k++) {
    int w[k];
    for (int i = 0; i < k; i++) w[i] = i + k;
    printf("%d %d;", (int)(sizeof w / sizeof *w), w[k - 1]);
  }
  printf("\n");
  return 0;
}
