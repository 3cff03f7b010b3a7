// options: --gcc --remarks
// proves: comparisons of unsigned values with zero, negative constants and signed values
unsigned u; int i; unsigned char uc; unsigned long ul; unsigned long long ull; enum E { A, B } e; enum N { M = -1 } en; struct { unsigned f : 3; } s; _Bool b; unsigned short us; signed char sc; const unsigned zero = 0;
int t(void)
{
  i = u < 0;  // expect: warning unsigned_compare_with_zero
  i = u >= 0;  // expect: warning unsigned_compare_with_zero
  i = 0 > u;  // expect: warning unsigned_compare_with_zero
  i = 0 <= u;  // expect: warning unsigned_compare_with_zero
  i = u > 0;
  i = u <= 0;
  i = 0 < u;
  i = u == 0;
  i = u == -1;  // expect: warning unsigned_compare_with_negative
  i = u != -1;  // expect: warning unsigned_compare_with_negative
  i = u > -1;  // expect: warning unsigned_compare_with_negative
  i = -1 < u;  // expect: warning unsigned_compare_with_negative
  i = u == -1u;
  i = uc < 0;
  i = uc == -1;
  i = us >= -1;
  i = ull < 0;  // expect: warning unsigned_compare_with_zero
  i = ull == -1LL;  // expect: warning unsigned_compare_with_negative
  i = ull > -5;  // expect: warning unsigned_compare_with_negative
  i = e < 0;  // expect: warning unsigned_compare_with_zero
  i = en < 0;
  i = s.f < 0;
  i = b < 0;
  i = u < i;  // expect: remark signed_unsigned_comparison
  i = i < ul;  // expect: remark signed_unsigned_comparison
  i = uc < i;
  i = sc == u;  // expect: remark signed_unsigned_comparison
  i = u < 5;
  i = i < 5u;
  i = (u < 0) ? 1 : 2;  // expect: warning unsigned_compare_with_zero
  if (0 && u < 0) i = 1;
  i = sizeof(u < 0);
  i = sizeof(int) > -1;
  return u < 0u;  // expect: warning unsigned_compare_with_zero
}
