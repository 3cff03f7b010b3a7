// proves: __extension__ opens declarations and expressions in a block
#include <stdio.h>
typedef int number;
int main(void)
{
  __extension__ union { double d; int i[2]; } u = { d: 1.5 };
  __extension__ number n = 3;
  __extension__ struct { int a, b; } s = { b: 2, a: 1 };
  int m = 1;
  __extension__ m += n;
  __extension__ __extension__ ({ m++; });
  printf("%g %d %d %d %d\n", u.d, n, s.a, s.b, m);
  return 0;
}
