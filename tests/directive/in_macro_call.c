// proves: directives inside the arguments of a macro call are carried out
#define SHOW(x, y) [x|y]
SHOW(a
#define a A
#if 1
+ 1
#else
+ 2
#endif
, a
#undef a
a) a
