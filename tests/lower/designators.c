// options: --c99 --gcc
// proves: designators become positions; later ones override place by place, braces replace the whole
// needs: arm
int printf(const char *, ...);
struct p { int x, y; const char *n; };
struct p tab[4] = { [2] = { .y = 3, .n = "two" }, [0].x = 7 };
int arr[] = { [3] = 1, 2, [1] = 9, [0 ... 1] = 4, [8] = 3, [6 ... 7] = 5, [7] = 8 };
struct { char s[6]; int z; } text = { .s = "hello", .s[1] = 0x61, .z = 1 };
union u { int a; char c[4]; struct p s; } un = { .a = 3, .s.y = 4 }, first = { .s.y = 1, .a = 7 };
struct nest { struct p a[3]; int z; } nest = { .a[1].y = 2, .a = { [2].x = 5 }, .z = 1, .a[0] = { 1, 2, "q" } };
static int calls;
static int side(int k) { calls += k; return calls; }
int main(void)
{
  struct nest b = { .a[1].y = side(3), .z = side(4), .a[1].x = 9, .a[2] = { side(5), 1 } };
  int over[4] = { [0] = 100, [2] = 1, [0] = 2 };
  struct p run[3] = { [0 ... 2] = { 1, 2, "last" }, [1].y = 8 };
  for (int i = 0; i < 4; i++) printf("%d %d %s|", tab[i].x, tab[i].y, tab[i].n ? tab[i].n : "-");
  for (int i = 0; i < (int)(sizeof arr / sizeof *arr); i++) printf("%d ", arr[i]);
  printf("%s %d %d %d\n", text.s, text.z, un.s.y, first.a);
  for (int i = 0; i < 3; i++) printf("%d %d %s|", nest.a[i].x, nest.a[i].y, nest.a[i].n ? nest.a[i].n : "-");
  for (int i = 0; i < 3; i++) printf("%d %d|", b.a[i].x, b.a[i].y);
  for (int i = 0; i < 3; i++) printf("%d %d|", run[i].x, run[i].y);
  printf("%d %d %d %d %d\n", nest.z, b.z, over[0], over[2], calls);
  return 0;
}
