// proves: statement expressions, typeof, zero-length arrays, case ranges, labels as values of the GNU modes
#include <stdio.h>
#define max(a, b) ({ __typeof__(a) _a = (a); __typeof__(b) _b = (b); _a > _b ? _a : _b; })
struct tail { int n; char text[0]; };
static int classify(int c)
{
  switch (c) {
  case '0' ... '9': return 1;
  case 'a' ... 'z': case 'A' ... 'Z': return 2;
  default: return 0;
  }
}
int calls;
static int next(void) { return ++calls; }
int main(void)
{
  int i = 3, *p = &i;
  __typeof__(p) q = p;
  void *v = p;
  printf("%d %d\n", max(next(), 0), calls);
  printf("%d\n", ({ int t = 0; for (i = 0; i < 5; i++) t += i; t; }));
  printf("%d %d %d\n", classify('5'), classify('q'), classify('-'));
  printf("%d %d\n", *q, (int)sizeof(struct tail));
  printf("%d\n", (int)((char *)(v + 1) - (char *)v));
  printf("%d %d\n", __builtin_constant_p(3), __builtin_types_compatible_p(int, const int));
  printf("%d\n", __builtin_choose_expr(1, 2, next()));
  printf("%s\n", __FUNCTION__);
  printf("%d %d\n", __alignof__(double), (int)__builtin_offsetof(struct tail, text));
  if (({ int k = i; k > 2; })) printf("in\n");
  return __builtin_expect(i == 100, 0);
}
