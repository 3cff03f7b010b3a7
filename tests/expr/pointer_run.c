// proves: arrays, pointers, functions and their conversions
#include <stdio.h>
#include <stddef.h>
int grid[3][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}};
int twice(int v) { return 2 * v; }
int thrice(int v) { return 3 * v; }
int (*table[])(int) = {twice, &thrice, *twice};
struct node { struct node *next; int v; } c = {0, 3}, b = {&c, 2}, a = {&b, 1};
char text[] = "hello";
typedef int row[4];
int sum(row *r, int n) { int t = 0, i, j; for (i = 0; i < n; i++) for (j = 0; j < 4; j++) t += r[i][j]; return t; }
int main(void)
{
  row *r = grid + 1;
  int *p = &grid[2][1];
  struct node *n;
  void *v = p;
  int (*f)(int) = table[1];
  printf("%d %d %d\n", (*r)[2], *(*(grid + 2) + 3), p[-2]);
  printf("%d %d %d\n", table[0](5), (*f)(5), (**f)(6));
  for (n = &a; n; n = n->next) printf("%d", n->v);
  printf(" %d\n", (*a.next->next).v);
  printf("%c %c %d\n", text[1], 2[text], (int)(&text[4] - text));
  printf("%d %d\n", *(int *)v, (int)((char *)p - (char *)grid));
  printf("%d %d\n", sum(grid, 3), (int)offsetof(struct node, v));
  printf("%d %d\n", &grid[1] == (row *)grid + 1, p > &grid[0][0]);
  printf("%c\n", "abc"[1]);
  printf("%d\n", (int)(sizeof text + sizeof(grid[0]) + sizeof *r));
  return 0;
}
