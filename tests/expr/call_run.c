// proves: prototypes convert arguments, old-style calls promote them, variable arguments arrive
#include <stdio.h>
#include <stdarg.h>
struct big { int a[10]; double d; };
struct big make(int v) { struct big b = {{v, v + 1}, v / 2.0}; return b; }
int take(struct big b, char c, float f) { return b.a[1] + c + (int)f; }
int old(a, b, c) char a; short b; float c; { return a + b + (int)(c * 2); }
int total(int n, ...)
{
  va_list ap, copy;
  int t = 0, i;
  va_start(ap, n);
  va_copy(copy, ap);
  for (i = 0; i < n; i++) t += va_arg(ap, int);
  t += (int)va_arg(ap, double) + (int)va_arg(ap, long long);
  va_end(ap);
  t += va_arg(copy, int) * 1000;
  va_end(copy);
  return t;
}
static int show(const char *format, ...)
{
  va_list ap;
  int r;
  va_start(ap, format);
  r = vprintf(format, ap);
  va_end(ap);
  return r;
}
int fact(int n) { return n < 2 ? 1 : n * fact(n - 1); }
int main(void)
{
  printf("%d\n", take(make(7), 'a' + 256, 3.9));
  printf("%d\n", old('b', 70000, 1.5));
  printf("%d\n", total(3, 1, 2, 3, 4.5, 100LL));
  printf("%d\n", show("%s-%c-%5.2f-%ld\n", "x", 'y', 3.14159, -5L));
  printf("%d %g\n", make(3).a[0], make(5).d);
  printf("%d\n", fact(10));
  return 0;
}
