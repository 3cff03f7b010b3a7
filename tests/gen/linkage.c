// options: --gcc
// proves: asm labels, aliases, weak symbols, sections, constructors and visibility reach the object
int printf(const char *, ...);
extern int renamed(const char *) __asm__("puts");
static int order;
static void before(void) __attribute__((constructor));
static void before(void) { order = 10; }
static void after(void) __attribute__((destructor));
static void after(void) { printf("after %d\n", order); }
int real(void) { return 5; }
int other(void) __attribute__((alias("real")));
extern int missing(void) __attribute__((weak));
int placed __attribute__((section(".data.special"), aligned(64))) = 6;
int original = 8;
extern int second __attribute__((alias("original")));
int hidden __attribute__((visibility("hidden"))) = 9;
static int in_asm(void) { return 3; }
int named_global __asm__("other_name") = 11;
extern int other_name;
int main(void)
{
  renamed("renamed");
  order++;
  printf("%d %d %d %d %d %d\n", other(), missing ? 1 : 0, placed, second, hidden, in_asm());
  printf("%d %d %d\n", ((unsigned)&placed & 63) == 0, named_global, other_name);
  return 0;
}
