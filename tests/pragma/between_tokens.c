// proves: pragma lines between any two tokens leave the tokens and the values alone
#include <stdio.h>
int x, y;
int
#pragma DATA_ALIGN(x, 8)
add(int a,
#pragma DATA_SECTION(y, ".why")
    int b)
{
  return a +
#pragma diag_suppress 1
      b;
}
#define TWICE(v) ((v) + _Pragma("diag_default 1") (v))
struct pair { int a;
#pragma NEAR(x)
  int b; } p = { 1,
#pragma FUNC_IS_PURE(add)
  2 };
int main(void)
{
  const char *text = "one "
#pragma diag_suppress 2
      "string";
  if (x == 0)
#pragma FAR(y)
    x = add(
#pragma diag_default 2
        TWICE(3), p.a) * p.b;
label
#pragma diag_suppress 3
  :
  printf("%s %d %d\n", text, x,
#pragma RETAIN(x)
         sizeof(int) == 4 ? 1 :
#pragma CLINK(y)
         0);
  return 0;
}
