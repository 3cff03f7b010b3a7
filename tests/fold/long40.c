// options: --gcc
// proves: with 32-bit int and 40-bit long the arithmetic conversions and folding count 40 bits
long l; unsigned long ul; int i; unsigned u; long long ll; unsigned long long ull; __int40_t q; unsigned __int40_t uq;
struct B { unsigned b31 : 31, b32 : 32; int s : 32; } b;
#define IS(n, e, type) extern int is_##n[__builtin_types_compatible_p(__typeof__(e), type) ? 1 : -1]
#define TRUE(n, e) extern int true_##n[(e) ? 1 : -1]
IS(1, l + u, long);
IS(2, l + i, long);
IS(3, uq + l, unsigned long);
IS(4, q + u, __int40_t);
IS(5, ul + ll, long long);
IS(6, uq + ll, long long);
IS(7, uq + q, unsigned __int40_t);
IS(8, ul + q, unsigned long);
IS(9, ull + l, unsigned long long);
IS(10, u + ll, long long);
IS(11, b.b31 + 0, int);
IS(12, b.b32 + 0, unsigned);
IS(13, b.s + 0, int);
IS(14, 1 ? u : l, long);
IS(15, 549755813887, long);
IS(16, 0xffffffff, unsigned);
IS(17, 4294967296, long);
IS(18, 0x8000000000, unsigned long);
TRUE(1, 549755813887L > 0);
TRUE(2, (unsigned long)-1 == 1099511627775UL);
TRUE(3, 1L << 38 > 0);
TRUE(4, 0xffffffUL * 65536UL == 0xffffff0000UL);
TRUE(5, -1L >> 1 == -1L);
TRUE(6, -1UL >> 1 == 549755813887UL);
TRUE(7, 2147483647 + 1L == 2147483648L);
TRUE(8, 0xffffffffffUL + 1 == 0);
TRUE(9, ~0UL == 0xffffffffffUL);
TRUE(10, (long)0x8000000000UL < 0);
TRUE(11, -1 < 1UL == 0);
TRUE(12, -1L < 1U);
TRUE(13, (int)4294967301L == 5);
TRUE(14, (long)1e11 == 100000000000L);
TRUE(15, sizeof(long) == 8);
long c1 = 549755813887L + 1;  // expect: warning integer_overflow
long c2 = 1L << 40;  // expect: warning shift_count_too_large
int c3 = 4294967296L;  // expect: warning integer_truncated
long c4 = 1e12;  // expect: error float_to_integer_conversion
long c5 = 549755813888LL;  // expect: warning integer_sign_change
