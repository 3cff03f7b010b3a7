// options: --gcc
// proves: the inline rules of GNU C89: extern inline makes no definition, plain inline does
int printf(const char *, ...);
extern inline __attribute__((gnu_inline)) int abs(int x) { return x < 0 ? -x : x; }
inline __attribute__((gnu_inline)) int kept(int x) { return x + 1; }
static inline int local(int x) { return x * 2; }
extern inline __attribute__((gnu_inline, always_inline)) int forced(int x) { return x - 1; }
int (*pointer)(int) = kept, (*outside)(int) = abs;
int main(void)
{
  printf("%d %d %d %d %d\n", abs(-4), pointer(4), local(4), forced(4), outside(-9));
  return 0;
}
