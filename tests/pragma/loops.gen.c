/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
loops.c (from line number 1, sequence numbers 1-29)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();



int f(int);
int f(int __4_11_n)
{
  auto int __6_7_sum; __6_7_sum = 0;


  { auto int __9_12_i; __9_12_i = 0;
#pragma MUST_ITERATE(8,, 2)
#pragma UNROLL(4)
    for (; (__9_12_i < __4_11_n); __9_12_i++) __6_7_sum += __9_12_i; }
#pragma PROB_ITERATE(1, 100)
  while (__6_7_sum > 100) __6_7_sum--;
#pragma LOOP_NO_ALIAS
  do __6_7_sum++; while (__6_7_sum < 10);
  if (__4_11_n != 0){
#pragma NO_ALIAS_CLONE()
    for (; (__4_11_n != 0); __4_11_n--) { goto __T1;
      __T1:; }} else
#pragma UNROLL 2
    while ((__6_7_sum++) < 3) { }
  again:;

  { auto int __T2;

    auto int __T3;

    auto int __T4;
    auto int __22_12_k; { { auto int __22_23_z; __22_23_z = __4_11_n; __T2 = 
__22_23_z; } __22_12_k = __T2; }
#pragma UNROLL(3)
    for (; (__22_12_k < 3); __22_12_k++)

    {
#pragma MUST_ITERATE(,,4)
      while (1) { { { auto int __24_19_z; __24_19_z = --__6_7_sum; __T3 = (
__24_19_z > 4); } { } } if (!(__T3 != 0)) goto __T5;
#pragma PROB_ITERATE(,5)
        do { __4_11_n++; { { auto int __26_29_z; __26_29_z = __4_11_n; __T4 = (
__26_29_z < 4); } { } } } while (__T4 != 0); }
      __T5:; }
  }




  if (__6_7_sum < 0) goto again;
  return __6_7_sum;
}
