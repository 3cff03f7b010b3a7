// options: --gcc
// proves: a unit may have a memcpy of its own; copies of objects don't use it
int printf(const char *, ...);
struct s { int a[10]; };
static int memcpy(int x) { return x + 1; }
int main(void)
{
  struct s v = { { 1, 2, 3 } }, w;
  w = v;
  printf("%d %d\n", w.a[2], memcpy(5));
  return 0;
}
