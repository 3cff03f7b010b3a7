// proves: every operator, with its precedence and in the widest type
#if 1 + 2 * 3 != 7 || (1 + 2) * 3 != 9 || 7 / 2 != 3 || 7 % 4 != 3 || -7 / 2 != -3 || -7 % 4 != -3
#error arithmetic
#endif
#if 1 << 40 >> 39 != 2 || -1 >> 1 != -1 || ~0 != -1 || !5 || !0 != 1 || +3 != 3 || - -3 != 3
#error shifts and unary operators
#endif
#if (6 & 3 | 8 ^ 1) != 11 || (1 | 6 & 4) != 5 || (1 == 2) != 0 || 1 < 2 == 0 || (3 > 2 > 1) != 0
#error bits and comparisons
#endif
#if 1 ? 0 : 1
#error conditional
#elif (0 ? 1 : 0 ? 2 : 3) != 3 || (1 ? 2 : 0 ? 3 : 4) != 2
#error nested conditional
#endif
#if -1 < 0u || -1 > 0 || (1 ? -1 : 0u) < 0 || (2 || 3) - 1 || 0xffffffffffffffff != -1 || 'a' != 97
#error usual conversions
#endif
#if 9223372036854775807 - 1 + 1 != 0x7fffffffffffffff || 18446744073709551615u + 1 != 0
#error widest type
#endif
int done;
