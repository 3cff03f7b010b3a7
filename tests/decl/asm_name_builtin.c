// proves: the asm name of a library function holds for the built-in that calls it
#include <stdio.h>
extern int puts(const char *) __asm("my_puts");
extern void *memset(void *, int, __SIZE_TYPE__) __asm("my_memset");
static int calls;
int said(const char *text) __asm("my_puts");
int said(const char *text) { return printf("said %s\n", text); }
void *filled(void *where, int value, __SIZE_TYPE__ size) __asm("my_memset");
void *filled(void *where, int value, __SIZE_TYPE__ size)
{
  char *p = where;
  ++calls;
  while (size--) *p++ = value;
  return where;
}
int main(int argc, char **argv)
{
  char text[8];
  __builtin_memset(text, 'a', argc + 6);
  text[7] = 0;
  __builtin_puts(text);
  printf("%d\n", calls);
  return 0;
}
