// options: --remarks
// proves: format strings are compared with the arguments, for attributes and for the pragmas
int pr(const char *f, ...) __attribute__((format(printf, 1, 2)));
int sc(const char *f, ...) __attribute__((format(scanf, 1, 2)));
#pragma __printf_args
int log_message(int level, const char *format, ...);
#pragma __scanf_args
int read_values(const char *format, ...);
int unchecked(const char *format, ...);
int i; long l; long long ll; double d; float f; char c, *s; void *v; unsigned u; const char *cs; int *ip;
void t(void)
{
  pr("%d %s %c %p %% %5.2f %-3d", i, s, c, v, d, i);
  pr("%d", l);  // expect: warning printf_arg_mismatch
  pr("%d", ll);  // expect: warning printf_arg_mismatch
  pr("%d", d);  // expect: warning printf_arg_mismatch
  pr("%d", u);  // expect: remark printf_arg_mismatch
  pr("%x", i);
  pr("%ld", i);  // expect: warning printf_arg_mismatch
  pr("%lld", ll);
  pr("%f", i);  // expect: warning printf_arg_mismatch
  pr("%Lf", d);  // expect: warning printf_arg_mismatch
  pr("%s", i);  // expect: warning printf_arg_mismatch
  pr("%s", ip);  // expect: warning printf_arg_mismatch
  pr("%p", i);  // expect: warning printf_arg_mismatch
  pr("%n", i);  // expect: warning printf_arg_mismatch
  pr("%d");  // expect: warning too_few_printf_args
  pr("%d", i, i);  // expect: warning too_many_printf_args
  pr("%");  // expect: warning bad_printf_format_string
  pr("%q", i);  // expect: warning bad_printf_format_string
  pr("%*d", d, i);  // expect: warning printf_arg_mismatch
  pr("%*.*f", i, i, d);
  pr("%2$d %1$d", i, i);
  pr("%0$d", i);  // expect: warning positional_format_specifier_zero
  pr(s, i);
  sc("%d", i);  // expect: warning printf_arg_mismatch
  sc("%d", ip);
  sc("%f", &f);
  sc("%f", &d);  // expect: warning printf_arg_mismatch
  sc("%lf", &d);
  sc("%*d %[a-z]", s);
  sc("%s", cs);  // expect: warning printf_arg_mismatch
  log_message(1, "%d", d);  // expect: warning printf_arg_mismatch
  read_values("%d", i);  // expect: warning printf_arg_mismatch
  unchecked("%d", d);
}
