// options: --c99
// proves: arrays of variable length under every kind of jump that leaves, repeats or skips their scopes
int printf(const char *, ...);
static int seed = 1;
static int random_below(int n) { seed = seed * 1103515245 + 12345; return (unsigned)seed % (unsigned)n; }
static int loops(int n)
{
  int sum = 0, i = 0;
  do {
    if (i % 3 == 1) continue;
    int a[i + 1];
    a[i] = i;
    for (int j = 0; j < 5; j++) {
      if (j == 1) continue;
      int b[j + 1], c[i + j + 1];
      c[i + j] = b[j] = j;
      if (j == 3) break;
      sum += b[j] + c[i + j] + (int)sizeof c;
      if (j == 2) continue;
      int d[2][j + 1];
      d[1][j] = 7;
      sum += d[1][j] + sizeof d / sizeof *d;
    }
    sum += a[i];
  } while (({ int step = i++; step < n; }));
  return sum;
}
static int jumps(int n)
{
  int rounds = 0, sum = 0;
again:
  if (rounds++ > n) goto out;
  {
    char text[rounds];
    text[rounds - 1] = 'a' + rounds;
    sum += text[rounds - 1] + sizeof text;
    if (random_below(3) == 0) goto again;
    char more[rounds * 2];
    more[rounds] = 1;
    if (random_below(3) == 1) goto again;
    sum += more[rounds] + sizeof more;
    switch (rounds % 4) {
      case 0: { short s[rounds]; s[0] = 3; sum += s[0]; if (rounds > 4) break; }  /* falls through */
      case 1: sum += 100; goto again;
      case 2: { long long w[rounds][2]; w[rounds - 1][1] = sizeof w; sum += (int)w[rounds - 1][1]; }
    }
  }
  goto again;
out:
  return sum;
}
static int inner(int n, int m[n][n + 1], int (*p)[n])
{
  int total = 0;
  for (int i = 0; i < n; i++) {
    if (m[i][i] < 0) return total;
    total += ({ int t[9]; t[m[i][0]] = i; if (t[m[i][0]] == 2) continue; t[m[i][0]] + p[1][i]; });
  }
  return total;
}
static int shapes(int n)
{
  int m[n][n + 1], sum = 0;
  typedef int row[n];
  row rows[2], *p = rows;
  int (*q)[n + 1] = m + 1;
  for (int i = 0; i < n; i++) for (int j = 0; j <= n; j++) m[i][j] = i + j;
  for (int i = 0; i < 2; i++) for (int j = 0; j < n; j++) p[i][j] = i * j;
  n = 50;
  sum = sizeof m + sizeof(row) * 1000 + (*q)[1] + sizeof *q + (int)(q - m) * 7 + (int)(&rows[1] - rows);
  return sum + inner(4, m, (int (*)[4])p);
}
int main(void)
{
  printf("%d %d %d %d\n", loops(6), jumps(20), shapes(4), seed);
  return 0;
}
