// proves: operands of sizeof with variable length and of __imag__ on a real value are evaluated
#include <stdio.h>
static int count(int *n) { return ++*n; }
int main(void)
{
  int a = 1, n = 3, i = 0, calls = 0;
  char rows[2][n + 3];
  int size = sizeof(*(++a, (char (*)[a])0));
  printf("%d %d\n", size, a);
  size = sizeof(rows[i++ + (int)sizeof(a++)]);
  printf("%d %d %d\n", size, i, a);
  size = sizeof(rows[count(&calls)]) + sizeof(int[count(&calls)]) / sizeof(int);
  printf("%d %d\n", size, calls);
  printf("%d\n", (int)__imag__ ++i);
  printf("%d\n", i);
  return 0;
}
