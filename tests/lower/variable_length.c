// options: --c99
// proves: the dimensions of a variable-length array are evaluated once, at its declaration (C99 6.7.5.2)
// needs: arm
int printf(const char *, ...);
static int add(int n, int m, int a[n][m])
{
  int s = 0;
  int t[n + 1][m], k = n++;
  printf("%d %d %d\n", (int)sizeof t, (int)sizeof t[0], (int)sizeof(int[n]));
  for (int i = 0; i < k; i++) for (int j = 0; j < m; j++) t[i][j] = a[i][j] + 1;
  m = 77;
  int (*pp)[3] = t;
  for (int i = 0; i < k; i++) s += a[i][1] + t[i][2] + pp[i][0];
  return s;
}
int main(void)
{
  int z[2][3] = { { 1, 2, 3 }, { 4, 5, 6 } }, n = 3;
  int a[n++], *p = a;
  for (int i = 0; i < 3; i++) a[i] = i;
  p += 3;
  int (*q)[3] = &a;
  typedef int row[n];
  n = 100;
  row r;
  printf("%d %d %d %d %d\n", (int)sizeof a, (*q)[2], p[-1], n, (int)sizeof r);
  printf("%d\n", add(2, 3, z));
  return 0;
}
