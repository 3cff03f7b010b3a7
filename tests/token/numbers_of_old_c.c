/* options: -n --old_c --remarks */
/* proves: integer constants of old C have the kinds that its rules give, and no unsigned suffix */
int a[] = {2147483647, 2147483648, 4294967295, 4294967296};  /* expect: warning integer_sign_change, expect: warning integer_sign_change, expect: warning integer_truncated */
int b[] = {0x7fffffff, 0x80000000, 0xffffffff, 0x100000000, 017777777777, 020000000000, 0377777777777};  /* expect: warning integer_truncated, expect: warning integer_truncated */
char c1[sizeof 2147483648 == sizeof(long) ? 1 : -1];
char c2[0xffffffff < 0 ? 1 : -1];
char c3[sizeof 1L == sizeof(long) ? 1 : -1];
int u1 = 1u, u2 = 1UL, u3 = 0xfU;
int nines = 999999999999999999999, octal = 09, eights = 0778;  /* expect: warning integer_too_large, expect: warning integer_truncated */
float f1 = 1.5f, f2 = 1.5F;
long l1 = 1ll;
char d1[sizeof 'a' == sizeof(int) ? 1 : -1], *text = "\x41\a\?";  /* expect: warning unrecognized_char_escape */
int bad = 12ab, hex = 0x, exponent = 1e, dots = 1.2.3;  /* expect: error extra_chars_on_number, expect: warning bad_hex_digit, expect: warning bad_float_constant, expect: error exp_semicolon */
