// options: --gcc
// proves: loops with every form of header, dangling else, case ranges
int printf(const char *, ...);
static int classify(int n)
{
  switch (n) {
  case -5 ... -1: return 1;
  case 0:
    if (n) return 2; else
  default: { n += 10; break; }
  case 7: ;
  case 8: { int n = 3; return n; }
  }
  if (n > 100) if (n > 200) return 4; else return 5;
  else return n;
}
int main(void)
{
  int i = 0, j, k = 0;
  for (;;) { if (++i > 3) break; if (i == 2) continue; printf("%d ", i); }
  for (i = 0, j = 9; i < j; i++, j--) ;
  while (i-- > 2) do { k++; if (k % 3 == 0) continue; k += 2; } while (k < 10);
  printf("%d %d %d\n", i, j, k);
  for (i = -6; i < 9; i++) printf("%d ", classify(i));
  printf("%d %d\n", classify(140), classify(240));
  i = 0;
again: if (i++ < 2) goto again;
  printf("%d\n", i);
  return 0;
}
