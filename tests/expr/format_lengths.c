// options: --c99 -n --gcc --remarks
// proves: length modifiers of formats fit their arguments' types
typedef __SIZE_TYPE__ size_t;
typedef __PTRDIFF_TYPE__ ptrdiff_t;
typedef __INTMAX_TYPE__ intmax_t;
int printf(const char *, ...) __attribute__((format(printf, 1, 2)));
int scanf(const char *, ...) __attribute__((format(scanf, 1, 2)));
void prints(signed char c, short s, long l, long long ll, size_t z, ptrdiff_t t, intmax_t j, unsigned u, double d, long double ld)
{
  printf("%hhd %hd %ld %lld %zu %td %jd %u %f %Lf %p\n", c, s, l, ll, z, t, j, u, d, ld, (void *)&c);
  printf("%hhu%hhx %ho %hi\n", (unsigned char)c, u, (unsigned short)s, s);
  printf("%ld", ll);  // expect: warning printf_arg_mismatch
  printf("%lld", l);  // expect: warning printf_arg_mismatch
  printf("%zd", d);  // expect: warning printf_arg_mismatch
  printf("%td", l);  // expect: warning printf_arg_mismatch
  printf("%jd", u);  // expect: warning printf_arg_mismatch
  printf("%hd", ll);  // expect: warning printf_arg_mismatch
  printf("%hhd", d);  // expect: warning printf_arg_mismatch
  printf("%Lf", d);  // expect: warning printf_arg_mismatch
  printf("%lf%f", d, ld);  // expect: warning printf_arg_mismatch
  printf("%d %s\n", c);  // expect: warning too_few_printf_args
  printf("%%%c%5.3d%-*.*f%n\n", 'x', 3, 4, 5, d, &c);  // expect: warning printf_arg_mismatch
  printf("%d\n", 1, 2);  // expect: warning too_many_printf_args
  printf("%q %");  // expect: warning bad_printf_format_string
  printf("%" "d" "%s", u, &u);  // expect: remark printf_arg_mismatch, expect: warning printf_arg_mismatch
  printf("%I40d %I40u", (__int40_t)1, (unsigned __int40_t)2);
  printf("%I40d", l + 0LL);  // expect: warning printf_arg_mismatch
}
void scans(signed char *c, short *s, long *l, long long *ll, size_t *z, intmax_t *j, float *f, double *d, long double *ld, char *text)
{
  scanf("%hhd%hd%ld%lld%zu%jd%f%lf%Lf%s%*d%3c%[a-z]%[^]x]", c, s, l, ll, z, j, f, d, ld, text, text, text, text);
  scanf("%d", l);  // expect: warning printf_arg_mismatch
  scanf("%ld", s);  // expect: warning printf_arg_mismatch
  scanf("%f", d);  // expect: warning printf_arg_mismatch
  scanf("%lf", f);  // expect: warning printf_arg_mismatch
  scanf("%hhd", s);  // expect: warning printf_arg_mismatch
  scanf("%d %d", (int *)l);  // expect: warning too_few_printf_args
}
