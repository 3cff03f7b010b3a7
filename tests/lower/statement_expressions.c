// options: --gcc --c99
// proves: a statement expression runs once, in its place and only under its condition
// needs: arm
int printf(const char *, ...);
#define min(a, b) ({ __typeof__(a) _a = (a); __typeof__(b) _b = (b); _a < _b ? _a : _b; })
struct t { int k; struct t *n; };
static int g;
static int two(void)
{
  return ({ __label__ l; int z = 0; l: z++; if (z < 3) goto l; z; })
         + ({ __label__ l; int z = 0; l: z += 2; if (z < 9) goto l; z; });
}
static struct t mk(int k) { return ({ struct t q = { k, 0 }; q; }); }
static int sw(int x)
{
  switch (({ x + 1; })) {
    case 1 ... 3: return ({ 10; });
    case 5: { int y = ({ x * 2; }); return y; }
    default: return -1;
  }
}
static int ret(int x) { int y = ({ if (x > 3) return 99; x; }); return y; }
static void vv(int x)
{
  (void)({ x; });
  x ? ({ printf("a\n"); (void)0; }) : ({ printf("b\n"); (void)0; });
}
static int arr(int i)
{
  int a[4] = { 1, 2, 3, 4 };
  a[({ i; })] = ({ i * 7; });
  a[i] += ({ 1; });
  return a[i] + a[0];
}
int main(void)
{
  int x = 5, y = (x++, ({ x * 2; }));
  printf("%d %d %d %d\n", min(3, 4), two(), mk(4).k, y);
  printf("%d %d %d %d %d\n", sw(1), sw(4), sw(9), ret(2), ret(5));
  vv(0);
  vv(1);
  y = x && ({ g++; g > 6; });
  y += x || ({ g += 100; g > 3; });
  y += x ? ({ 5; }) : ({ g = 9; 6; });
  printf("%d %d %d %d %d\n", y, g, arr(2), x++ ?: 3, (x - 7) ?: 8);
  return 0;
}
