// options: --c99
// proves: arithmetic on _Bool keeps 0 and 1, and a designated object is evaluated once (C99 6.3.1.2)
// needs: arm
int printf(const char *, ...);
struct s { int a : 3; _Bool b : 1; unsigned c : 12; };
static int calls;
static struct s *next(struct s *p) { calls++; return p; }
static _Bool flag(_Bool x) { return x; }
int main(void)
{
  struct s x = { .b = 2, .a = 1 };
  _Bool v = 6;
  next(&x)->b++;
  printf("%d %d\n", x.b, calls);
  printf("%d ", next(&x)->b--);
  printf("%d %d\n", x.b, calls);
  next(&x)->b |= 4;
  next(&x)->b &= 2;
  printf("%d %d\n", x.b, calls);
  printf("%d ", v--);
  printf("%d ", --v);
  printf("%d ", v++);
  v <<= 3;
  v ^= 1;
  v -= 7;
  printf("%d\n", v);
  printf("%d %d %d %d\n", flag(0.5), flag(&x != 0), flag((_Bool)256), !v);
  return 0;
}
