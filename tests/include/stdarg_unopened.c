// options: --strict --diag_suppress=illegal_end_of_line_comment
// proves: outside the GNU modes <stdarg.h> is not opened: its names are the compiler's own
// needs: arm
#include <stdarg.h>
#include <stdarg.h>
#ifndef va_arg
#error va_arg is no macro
#endif
extern int printf(const char *, ...);
static int sum(int n, va_list p) { int s = 0; while (n--) s += va_arg(p, int); return s; }
static int f(int n, ...) { va_list p; int r; va_start(p, n); r = sum(n, p); va_end(p); return r; }
int main(void) { va_list *q = 0; printf("%d %d\n", f(3, 1, 2, 3), q == 0); return 0; }
