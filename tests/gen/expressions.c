// options: --gcc
// proves: operators on every kind of operand, with the grouping of the source
int printf(const char *, ...);
struct s { int a : 5; unsigned b : 9; int arr[3]; struct s *p; };
static int calls;
static int tick(int v) { calls = calls * 10 + v; return v; }
static struct s make(int k) { struct s v = { k, k * 3, { k, k + 1, k + 2 }, 0 }; return v; }
int main(int argc, char **argv)
{
  struct s v = make(3), *p = &v, list[2] = { { 1 }, { 2 } };
  int a = 7, b = -3, *q = v.arr, i;
  unsigned u = 5;
  long long l = 1LL << 40;
  double d = 2.5;
  float f = 0.5f;
  unsigned char c = 250;
  short h = -5;
  int (*fn)(int) = tick;
  p->p = p;
  printf("%d %d %d %d %d\n", a / b, a % b, a - -b, - -b, ~a + !a);
  printf("%u %d %u %lld %lld\n", u - 6, b < (int)u, b < u, l >> 3, (l | a) ^ -1);
  printf("%d %d %d\n", c + 10, (unsigned char)(c + 10), (h >> 1) + (h << 2));
  c += 10; h *= 3; u <<= 2; l -= a; d /= f; v.a += 20; v.b -= 30; a ^= b |= 4;
  printf("%d %d %u %lld %g %d %d %d %d\n", c, h, u, l, d, v.a, v.b, a, b);
  printf("%d %d %d %d\n", *q++, *++q, q[-1], (int)(q - v.arr));
  printf("%d %d %d\n", p->p->p->arr[1], (*p).arr[2], (&list[1])->a);
  printf("%d %d\n", make(2).arr[1], (i = 3, i++ + ++i));
  printf("%d %d\n", tick(1) && tick(0) && tick(2), tick(3) || tick(4));
  printf("%d %d\n", (argc ? tick : fn)(5), calls);
  printf("%d %g %d\n", a ? b ? 1 : 2 : 3, argc > 0 ? 1 : 2.5, (a, b) < 0);
  printf("%d %d\n", (int)sizeof(make(1)) + (int)sizeof a++, a);
  printf("%d %d\n", 'a' == "a"[0], 1["xyz"]);
  printf("%d\n", (int)((long)(char *)p == (long)p) + (p == (void *)p->p) + !p);
  *(volatile int *)&a = 77;
  printf("%d %d\n", a, ((union { float f; int i; }){ .f = 1.0f }).i);
  return 0;
}
