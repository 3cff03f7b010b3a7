// options: --c99 --gcc --no_warnings
// proves: a range's expressions are evaluated once, and a later designator changes its own place only
int printf(const char *, ...);
static int calls;
static int f(void)
{
  return ++calls * 10;
}
struct point {
  int x, y;
};
static void show(const char *what, struct point *p, int n)
{
  printf("%s:", what);
  for (int i = 0; i < n; i++)
    printf(" %d,%d", p[i].x, p[i].y);
  printf(" calls %d\n", calls);
}
int main(void)
{
  struct point whole[4] = {[0 ... 2] = {f(), 2}};
  show("whole", whole, 4);
  struct point replaced[5] = {[0 ... 4] = {f(), 2}, [1] = {1, f()}, [3] = {7}};
  show("replaced", replaced, 5);
  struct point member[4] = {[0 ... 2].x = 3};
  show("member", member, 4);
  struct point goes_on[4] = {[0 ... 2].x = 3, 4, 5};
  show("goes on", goes_on, 4);
  struct {
    struct point a[3];
    int z;
  } nested = {.a[0 ... 1].y = 7, .a[1].x = 2, .z = 3};
  show("nested", nested.a, 3);
  static struct point fixed[2][3] = {[0 ... 1][1 ... 2] = {5, 6}, [1][1].x = 8, [0] = {{1}}};
  show("static", fixed[0], 6);
  return 0;
}
