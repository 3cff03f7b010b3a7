// options: --c99
// needs: arm
// proves: bounds of parameters are evaluated on entry, also those with side effects
extern int printf(const char *, ...);
static int calls;
static int count(int n) { calls++; return n; }
static int sum(int rows, int columns, int matrix[rows][columns])
{
  int total = 0;
  for (int i = 0; i < rows; i++)
    for (int j = 0; j < columns; j++) total += matrix[i][j];
  columns = 100;
  return total + sizeof matrix[0] / sizeof(int);
}
static int with_effect(int n, int a[count(n)]) { return a[n - 1]; }
static int forward(int n, int (*p)[n]) { return p[1][0] + (int)sizeof *p; }
static int local(int n)
{
  int square[n][n];
  typedef int row[n + 1];
  row line;
  for (int i = 0; i < n; i++)
    for (int j = 0; j < n; j++) square[i][j] = i * j;
  for (int i = 0; i <= n; i++) line[i] = i;
  n = 50;
  return sum(sizeof square / sizeof square[0], sizeof square[0] / sizeof(int), square)
         + (int)sizeof(row) + line[3];
}
int main(void)
{
  int m[2][3] = {{1, 2, 3}, {4, 5, 6}};
  int v[4] = {7, 8, 9, 10};
  printf("%d %d %d %d %d\n", sum(2, 3, m), with_effect(3, v), calls, forward(3, m), local(4));
  return 0;
}
