// options: --gcc --gnu_version=30300
// proves: casts, conditionals and commas are lvalues of old GNU C; a newer compiler says it with pointers
#include <stdio.h>
#if __GNUC__ < 4
#define AS(type, object) (type)object
#define EITHER(c, a, b) (c ? a : b)
#define LAST(a, b) (a, b)
#else
#define AS(type, object) *(type *)&object
#define EITHER(c, a, b) *(c ? &a : &b)
#define LAST(a, b) *((void)a, &b)
#endif
int main(void)
{
  int i = 1, j = 2, *p, a[3] = {5, 6, 7};
  char *cp;
  AS(unsigned, i) = 7;
  printf("%d\n", i);
  EITHER(i > 3, i, j) = 20;
  EITHER(i > 30, i, j) += 4;
  printf("%d %d\n", i, j);
  LAST(i, j) = 9;
  *&LAST(i, j) += 1;
  printf("%d\n", j);
  p = a;
  (AS(char *, p)) += sizeof(int);
  printf("%d\n", *p);
  AS(char *, p) = (char *)&a[2];
  cp = (char *)p;
  printf("%d %d\n", *p, (int)(cp - (char *)a));
  AS(unsigned, j) <<= 2;
  printf("%d\n", j);
  return 0;
}
