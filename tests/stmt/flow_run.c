// proves: loops, switch with fallthrough and nested switches, goto in and out of blocks
#include <stdio.h>
static int kind(int v)
{
  int r = 0;
  switch (v) {
  case 1: r += 1;
  case 2: r += 2; break;
  default: r = 100;
  case 3:
    switch (r) { case 100: r++; break; case 0: r = 30; }
    break;
  case -5: return -1;
  case 0x7fffffff: r = 7;
  }
  return r;
}
static int duff(int count)
{
  int n = (count + 3) / 4, t = 0;
  switch (count % 4) {
  case 0: do { t++;
  case 3: t++;
  case 2: t++;
  case 1: t++;
    } while (--n > 0);
  }
  return t;
}
static long long wide(long long v)
{
  switch (v) {
  case 0x100000000LL: return 1;
  case -1: return 2;
  }
  return 3;
}
int main(void)
{
  int i, j, n = 0;
  for (i = -5; i <= 4; i++) printf("%d ", kind(i));
  printf("%d\n", kind(0x7fffffff));
  for (i = 0, j = 10; i < j; i++, j--) { if (i == 2) continue; if (i == 4) break; n += j; }
  printf("%d %d %d\n", i, j, n);
  while (1) { if (n-- < 30) break; }
  do n++; while (n < 40);
  printf("%d %d\n", n, duff(11));
  i = 0;
again:
  { int local = i * 2; if (i++ < 3) { printf("%d ", local); goto again; } }
  goto inside;
  for (;;) { if (n > 1000) n = 0; inside: n++; if (n > 42) goto out; }
out:
  printf("%d %lld%lld%lld\n", n, wide(0x100000000LL), wide(-1), wide(5));
  for (;;) { switch (n) { case 43: n = 50; continue; case 50: goto end; } }
end:
  return 0;
}
