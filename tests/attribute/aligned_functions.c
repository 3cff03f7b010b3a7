// options: --gcc
// proves: an alignment asked of a function reaches its definition whichever declaration has it
int printf(const char *, ...);
typedef int takes_int(int);
int first(int) __attribute__((aligned(256)));
int first(int x) { return x; }
takes_int second __attribute__((aligned(128)));
takes_int third;
void old_style() __attribute__((aligned(512)));
void old_style(int a) { printf("%d\n", a); }
static int local(void) __attribute__((aligned(64)));
static int local(void) { return 4; }
int second(int x) { return x + 1; }
int third(int x) { return x + 2; }
int main(void)
{
  old_style(first(1) + second(3) + third(4) + local());
  printf("%lu %lu %lu %lu\n", (unsigned long)first & 254, (unsigned long)second & 126,
         (unsigned long)old_style & 510, (unsigned long)local & 62);
  printf("%d %d %d\n", (int)__alignof__(first), (int)__alignof__(second), (int)__alignof__(third));
  return 0;
}
