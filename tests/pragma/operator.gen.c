/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
operator.c (from line number 1, sequence numbers 1-14)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
int f(int);
#pragma DATA_SECTION(a, ".a")
int a __attribute__((__section__(".a")));
int b __attribute__((__section__(".set")));
#pragma DATA_ALIGN(c, 64)
int c __attribute__((__aligned__(64)));
int d;
int f(int __9_11_n)
{
#pragma UNROLL(4)
#pragma MUST_ITERATE(4, 8, 1)
  for (; (__9_11_n > 10); ) __9_11_n--;
  if (__9_11_n != 0)
#pragma UNROLL(2)
    while (__9_11_n > 4) __9_11_n--;
  return __9_11_n + __9_11_n;
}
