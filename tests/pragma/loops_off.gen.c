/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
loops_off.c (from line number 1, sequence numbers 1-10)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();


void f(int);
void f(int __3_12_n)
{

#pragma UNROLL(2)
  while (__3_12_n != 0) __3_12_n--;

  while (__3_12_n != 0) __3_12_n--;
}
