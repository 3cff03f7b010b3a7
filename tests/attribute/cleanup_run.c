// proves: cleanup runs for objects that nothing else uses
#include <stdio.h>
static void leave(int *p) { printf("leave %d\n", p != 0); }
static void work(void)
{
  int unused_one __attribute__((cleanup(leave)));
  { int inner __attribute__((cleanup(leave))) = 2; puts("inner"); }
  puts("outer");
}
int main(void)
{
  work();
  return 0;
}
