// proves: integer and floating operators keep the meaning of mixed types (C99 6.3.1.8)
#include <stdio.h>
int i = -7, j = 3;
unsigned u = 5;
long long big = 0x123456789abcdefLL;
unsigned long long ubig = ~0ULL;
short s = -300;
unsigned char uc = 200;
float f = 1.5f;
double d = -2.25;
int main(void)
{
  printf("%d %d %d %d\n", i / j, i % j, i * j, i - j);
  printf("%u %d %d\n", i + u, i < u, (long long)i < u);
  printf("%llx %llx %lld\n", big << 8, ubig >> 60, big / -1000);
  printf("%d %d %d %d\n", s >> 2, uc << 4, (char)300, (signed char)200);
  printf("%d %d\n", uc + s, ~uc);
  printf("%g %g %g %d\n", f + d, f * i, d / u, (int)d);
  printf("%d %d %d %d\n", i & 12, i | 12, i ^ 12, !i);
  printf("%d %d %d\n", 1 ? -1 : 1u > 0, -1 > 1u, sizeof(1 ? s : uc));
  printf("%lld %llu\n", big % 1000, ubig % 1000);
  printf("%d %d\n", (unsigned short)-1 == 65535, (short)40000);
  printf("%.3f %.3f\n", (float)u / 3, (double)ubig);
  return 0;
}
