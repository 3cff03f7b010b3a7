// options: --c99
// proves: compound literals have an object of their own for each place, at file scope for the program (C99 6.5.2.5)
#include <stdio.h>
struct point { int x, y; };
struct point *at_file_scope = &(struct point){3, 4};
int *list = (int[]){1, 2, 3};
static int area(struct point p) { return p.x * p.y; }
static int sum(const int *v, int n) { return n ? *v + sum(v + 1, n - 1) : 0; }
int main(void)
{
  struct point *keep[2];
  int i;
  for (i = 0; i < 2; i++) {
    struct point *p = &(struct point){i, i + 1};
    p->x += 10;
    printf("%d %d\n", p->x, p->y);
    keep[i] = p;
  }
  printf("%d\n", keep[0] == keep[1]);
  printf("%d %d\n", area((struct point){.y = 5, .x = 6}), sum((int[]){i, 2, 3}, 3));
  printf("%d %d %d\n", at_file_scope->y, list[2], (int)sizeof((int[]){1, 2, 3}));
  printf("%s\n", (char[]){"text"});
  printf("%d\n", ((struct point){7, 8}).y);
  list[1] = 20;
  printf("%d\n", sum(list, 3));
  return 0;
}
