// proves: the alignment of a function counts in __alignof__ and reaches the generated code
#include <stdio.h>
void aligned_function(void) __attribute__((aligned(256)));
void aligned_function(void) {}
void plain_function(void) {}
int main(void)
{
  printf("%d %d %d\n", (int)__alignof__(aligned_function), (int)__alignof__(plain_function),
         (int)((unsigned long)aligned_function & 255));
  return 0;
}
