// options: --gcc --c99
// proves: what a loop's condition or increment hoists runs at each iteration, behind continue and the increment
// needs: arm
int printf(const char *, ...);
static int f(int n)
{
  int s = 0;
  for (int i = 0; i < ({ int k = i; k; }) + 2 && i < n; i++) s += i;
  for (int i = 0; ({ int q = i * 2; q < n; }); ({ i++; s++; })) {
    if (i == 2) continue;
    s += 10 * i;
  }
  for (int i = ({ 0; }); i < n; i = ({ i + 2; })) s += ({ if (i == 4) continue; i; });
  return s;
}
static int g(int n)
{
  int c = 0;
  while (({ n--; n > 0; })) {
    if (n == 2) continue;
    c += n;
    if (c > 100) break;
  }
  do {
    c++;
    if (c & 1) continue;
    c++;
  } while (({ int z, w = c; for (z = 0; z < 3; z++) if (z == 1) break; w + z < 20; }));
  return c;
}
int main(void)
{
  printf("%d %d\n", f(9), g(8));
  return 0;
}
