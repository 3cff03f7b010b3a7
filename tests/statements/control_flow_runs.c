// needs: arm
// proves: every kind of statement does the same after translation
extern int printf(const char *, ...);
static int loops(int n)
{
  int sum = 0, i;
  for (i = 0; i < n; i++) {
    if (i == 3) continue;
    if (i == 7) break;
    sum += i;
  }
  while (n-- > 0) {
    if (n & 1) continue;
    sum += 100;
  }
  do {
    sum++;
    if (sum > 1000) break;
  } while (sum % 7);
  return sum;
}
static const char *choose(int n)
{
  switch (n) {
    case 0: return "zero";
    case 1:
    case 2: n = 0;                   /* falls through */
    case 3: return n ? "three" : "one or two";
    case 10 ... 20: return "ten to twenty";
    default: break;
  }
  return "other";
}
static int jumps(int n)
{
  int steps = 0;
again:
  steps++;
  if (n > 1) {
    n = n & 1 ? 3 * n + 1 : n / 2;
    goto again;
  }
  if (steps > 100) goto out;
  steps += 1000;
out:
  return steps;
}
static int duff(int count)
{
  int done = 0, rounds = (count + 3) / 4;
  switch (count % 4) {
    case 0: do { done++;
    case 3:      done++;
    case 2:      done++;
    case 1:      done++;
            } while (--rounds > 0);
  }
  return done;
}
static int nested(int n)
{
  int i, j, found = -1;
  for (i = 0; i < n && found < 0; i++)
    for (j = 0; j < n; j++)
      if (i * j == 12) { found = i * 10 + j; break; }
  return found;
}
static int old_style(a, b, c)
  char a;
  float b;
{
  return a + (int)b + c;
}
int main(void)
{
  int i;
  for (i = 0; i < 12; i++) printf("%d ", loops(i));
  for (i = -1; i < 22; i += 3) printf("%s,", choose(i));
  printf("\n%d %d %d %d\n", jumps(27), jumps(1), duff(10), nested(9));
  printf("%d\n", old_style('a', 2.5, 3));
  return 0;
}
