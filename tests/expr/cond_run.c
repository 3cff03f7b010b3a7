// proves: ?:, && and || evaluate what they must and nothing else; GNU's a ?: b evaluates a once
#include <stdio.h>
int calls;
int count(int v) { calls++; return v; }
struct s { int a, b; } s1 = {1, 2}, s2 = {3, 4};
const char *name(int v) { return v ? "yes" : 0; }
int main(void)
{
  int i = 0, *p = &i;
  printf("%d %d\n", count(0) && count(1), calls);
  printf("%d %d\n", count(2) || count(1), calls);
  printf("%d %d\n", count(7) ?: count(9), calls);
  printf("%d %d\n", count(0) ?: count(9), calls);
  printf("%s %s\n", name(1) ?: "none", name(0) ?: "none");
  printf("%d %d\n", (i ? s1 : s2).a, (!i ? s1 : s2).b);
  printf("%d\n", (i ? 0 : p) == &i);
  printf("%d\n", i ? 1 : calls > 3 ? 2 : 3);
  printf("%g\n", i ? 1 : 2.5);
  i = (count(1), count(5));
  printf("%d %d\n", i, calls);
  (void)(i ? count(1) : 0);
  i ? (void)0 : (void)count(2);
  printf("%d\n", calls);
  printf("%d\n", sizeof(i ? (char)1 : (char)2));
  return 0;
}
