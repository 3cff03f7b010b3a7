// proves: attributes of types, objects, fields, functions, parameters and labels reach the generated C or act here
int printf(const char *, ...);
void *memcpy(void *, const void *, unsigned);
typedef int I8 __attribute__((mode(QI)));
typedef unsigned U64 __attribute__((mode(__DI__)));
typedef float D __attribute__((mode(DF)));
typedef int A16 __attribute__((aligned(16)));
typedef short alias_short __attribute__((may_alias));
typedef struct { char c; int n; } __attribute__((packed, aligned(2))) tight;
struct mixed { char c; A16 a; char d __attribute__((aligned(8))); short s[3] __attribute__((packed)); int last __attribute__((aligned(16))); };
enum __attribute__((packed)) small { s0, s200 = 200 };
enum small_too { t0 = -1, t1 = 100 } __attribute__((packed));
union __attribute__((packed)) odd { char c[5]; int n; };
int common __attribute__((nocommon)), spread __attribute__((aligned(64))) = 4, own __attribute__((section(".data.mine"))) = 5;
static int kept __attribute__((used)) = 6;
extern int weak_one __attribute__((weak));
int maybe(void) __attribute__((weak));
static int square(int) __attribute__((const, cold, noinline, nothrow, flatten, hot, no_instrument_function));
static int square(int n __attribute__((unused))) { return n * n; }
static int in_section(int) __attribute__((section(".text.mine"), used));
static int in_section(int n) { return n + 1; }
static int order[4], count;
static void first(void) __attribute__((constructor));
static void first(void) { order[count++] = 1; }
__attribute__((always_inline, artificial)) static inline int always(int n) { skip: __attribute__((unused)); return n - 1; }
__attribute__((noreturn)) void stop(int);
__attribute__((deprecated)) static int old(void) { return 9; }
static int punned(float f) { return *(alias_short *)&f; }
__attribute__((pure, externally_visible)) int visible(const int *p) { return *p; }
static __thread int per_thread = 11;
int main(void)
{
  struct mixed m; tight t[2]; int local __attribute__((aligned(32))) = 3;
  printf("%d %d %d %d %d\n", (int)sizeof(I8), (int)sizeof(U64), (int)sizeof(D), (I8)-1 < 0, (U64)-1 > 0);
  printf("%d %d %d %d\n", (int)sizeof m, (int)sizeof t, (int)__alignof__(tight), (int)((char *)&t[1].n - (char *)t));
  printf("%d %d %d %d\n", (int)((char *)&m.a - &m.c), (int)(&m.d - &m.c), (int)((char *)m.s - &m.c), (int)((char *)&m.last - &m.c));
  printf("%d %d %d %d\n", (int)sizeof(enum small), (int)sizeof(enum small_too), (int)sizeof(union odd), (int)__alignof__(union odd));
  printf("%d %d %d\n", (unsigned)&spread % 64, (unsigned)&local % 32, &weak_one == 0);
  printf("%d %d %d %d %d\n", square(7), in_section(7), always(7), old(), visible(&own));
  printf("%d %d %d %d %d %d\n", order[0], count, punned(1.5f), maybe == 0, kept + common, per_thread);
  return local - 3;
}
