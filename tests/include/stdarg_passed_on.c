// options: -E --no_gcc
// proves: outside the GNU modes the directive for <stdarg.h> is passed on, and its names are macros
#include <stdarg.h>
#ifdef va_start
#include <stdarg.h>
va_start(p, n);
#endif
