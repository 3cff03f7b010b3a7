// proves: built-ins of types, names of functions and sizes that only GNU C has
int printf(const char *, ...);
int sprintf(char *, const char *, ...);
struct s { char c; long long l; } __attribute__((packed));
struct t { int a __attribute__((aligned(16))); char b; };
union u { int i; float f; };
static int classes(void)
{
  struct t t; union u u; int a[2]; _Complex double c = 1; enum e { x } e = x;
  return (__builtin_classify_type(1) == 1) + (__builtin_classify_type(1.0) == 8) * 2 + (__builtin_classify_type(a) == 5) * 4 +
         (__builtin_classify_type(t) == 12) * 8 + (__builtin_classify_type(u) == 13) * 16 + (__builtin_classify_type(c) == 9) * 32 +
         64 + (__builtin_classify_type(e) == 1) * 128 + (__builtin_classify_type(classes) == 5) * 256;
}
static const char *names(void) { static char text[100]; sprintf(text, "%s %s %s", __func__, __FUNCTION__, __PRETTY_FUNCTION__); return text; }
static int sizes(void)
{
  return sizeof(void) + sizeof(names) * 2 + sizeof *(void *)0 * 4 + __alignof__(struct s) * 8 + __alignof__(((struct t *)0)->a) * 16 +
         __alignof__(struct t) + sizeof __FUNCTION__ * 1000;
}
static int constants(int n)
{
  return __builtin_constant_p(3 + 4) + __builtin_constant_p(n) * 2 + __builtin_constant_p("abc") * 4 + __builtin_constant_p(1.5) * 8 +
         __builtin_choose_expr(sizeof n == 4, 16, "no") + __builtin_types_compatible_p(int, typeof(n)) * 32 +
         __builtin_types_compatible_p(int, unsigned) * 64 + __builtin_types_compatible_p(int[], int[5]) * 128 + __builtin_expect(n, 0) * 256;
}
static int pointers(void)
{
  int a[10]; void *v = a; void *w = v + 8; int (*f)(void) = sizes;
  v++;
  v += 3;
  return (w - v) + (f + 1 == f) * 100 + (int)((char *)w - (char *)a) * 1000 + (&a[7] - &a[2]) * 10000 + ((void *)&a[1] > (void *)a) * 100000;
}
static int omitted(int n) { return (n ?: 7) + (n++ ?: 100) * 10 + (n > 3 ?: -1) * 1000; }
static int lvalues(int n) { int a = 1, b = 2; *(n ? &a : &b) = 9; return a * 10 + b; }
int main(void)
{
  printf("%d [%s] %d %d %d\n", classes(), names(), sizes(), constants(1), pointers());
  printf("%d %d %d %d\n", omitted(0), omitted(5), lvalues(0), lvalues(1));
  return 0;
}
