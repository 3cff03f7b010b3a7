// proves: elided braces, designators that continue and override, ranges, strings (C99 6.7.8)
#include <stdio.h>
#include <string.h>
struct point { int x, y; };
struct line { struct point a, b; char name[6]; } lines[3] = {1, 2, 3, 4, "one", {{5}, {.y = 8}, "second"}, [2].b.x = 9, 10, "end"};
int sparse[] = {[5] = 1, 2, [1] = 3, 4, [8] = 5};
int range[10] = {[2 ... 6] = 7, [4] = 1};
int over[3] = {1, 2, 3, [0] = 9, [2] = 8};
union u { int i; float f; char c[4]; } us[] = {{1}, {.f = 2.5f}, {.c = "ab"}};
struct anon { int a; union { int b; struct { short c, d; }; }; int e; } an = {1, {.c = 2, .d = 3}, 4}, an2 = {.d = 5, .e = 6};
char text[] = {"braces"}, cut[3] = "abc", *list[] = {"x", "yy", 0}, two[2][4] = {"ab", "cde"};
struct point *pp = &lines[1].b;
int *ip = &sparse[5] + 1, (*fp)(const char *, ...) = printf;
long diff = (char *)&lines[2] - (char *)&lines[0];
double dv = 1 / 3.0 + 2;
struct old { int x : 4, : 4, y : 8; } bits = {3, 77};
struct old2 { int q, r; } o = {q: 3, r: 4};
int main(void)
{
  int i;
  struct point local = {i = 3, i * 2}, copy = local, arr[2] = {local, {.y = 4}};
  struct line ll = {local, {7, 8}, "auto"};
  char buf[8] = "hi", empty[4] = {0};
  static struct point st = {1, 2};
  for (i = 0; i < 3; i++)
    printf("%d %d %d %d %.6s\n", lines[i].a.x, lines[i].a.y, lines[i].b.x, lines[i].b.y, lines[i].name);
  for (i = 0; i < (int)(sizeof sparse / sizeof *sparse); i++) printf("%d ", sparse[i]);
  for (i = 0; i < 10; i++) printf("%d", range[i]);
  printf(" %d%d%d\n", over[0], over[1], over[2]);
  printf("%d %g %s\n", us[0].i, us[1].f, us[2].c);
  printf("%d %d %d %d %d %d\n", an.a, an.c, an.d, an.e, an2.d, an2.e);
  printf("%s %d %.3s %s %s\n", text, (int)sizeof text, cut, list[1], two[1]);
  printf("%d %d %ld %.4f %d %d %d\n", pp->y, *ip, diff, dv, bits.x, bits.y, o.r);
  printf("%d %d %d %d %d\n", local.y, copy.x, arr[0].y, arr[1].x, arr[1].y);
  printf("%d %d %s %s %d %d\n", ll.a.x, ll.b.y, ll.name, buf, buf[5], empty[3]);
  printf("%d %d\n", st.x + st.y, (int)strlen(buf));
  fp("%s\n", "done");
  return 0;
}
