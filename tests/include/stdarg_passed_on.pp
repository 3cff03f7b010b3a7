#line 1 "stdarg_passed_on.c"


#include <stdarg.h>

#include <stdarg.h>
va_start(p, n);
