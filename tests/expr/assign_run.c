// proves: compound assignments, ++ and -- compute in the common type and store in the left one
#include <stdio.h>
struct bits { int a : 3; unsigned b : 5; int c : 7; long long d : 33; } x;
unsigned char uc = 250;
short s = 32767;
float f = 10;
int *p, arr[5] = {1, 2, 3, 4, 5};
long long big = 1;
int main(void)
{
  int i = 5, k;
  uc += 10;
  s += 1;
  f *= 1.5;
  i <<= 3;
  i |= 1;
  i ^= 0xff;
  i %= 100;
  i -= 0.5;
  big <<= 40;
  big += uc;
  printf("%d %d %g %d %lld\n", uc, s, f, i, big);
  x.a = 3;
  x.a++;
  x.b = 31;
  x.b += 2;
  x.c = -64;
  x.c--;
  x.d = 1LL << 32;
  x.d >>= 1;
  printf("%d %d %d %lld\n", x.a, x.b, x.c, (long long)x.d);
  p = arr;
  k = *p++ + *++p;
  p += 2;
  p--;
  printf("%d %d %d\n", k, *p, (int)(p - arr));
  k = i = uc = 300;
  printf("%d %d %d\n", k, i, uc);
  i = 3;
  i = i++ + 0 * i;
  k = (i = 4, i + 1);
  printf("%d\n", k);
  return 0;
}
