// options: --gcc
// proves: overflow is told of signed operations only, in 32, 40 and 64 bits
int a = 2147483647 + 1;             // expect: warning integer_overflow
int b = -2147483647 - 2;            // expect: warning integer_overflow
int c = 65536 * 65536;              // expect: warning integer_overflow
unsigned d = 4294967295u + 1u, e = 0u - 1u, f = -5u;
long long g = 9223372036854775807LL * 2;  // expect: warning integer_overflow
__int40_t h = (__int40_t)549755813887LL + (__int40_t)1;  // expect: warning integer_overflow
unsigned long long k = 18446744073709551615ull * 3;
int l = (-2147483647 - 1) / -1;     // expect: warning integer_overflow
int m = (-2147483647 - 1) % -1;
int n = 1 << 31;
