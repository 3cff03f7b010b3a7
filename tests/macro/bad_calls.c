// options: -P --display_error_number
// status: 2
// proves: wrong numbers of arguments and a call without its end
#define f(x, y) [x|y]
#define g() []
#define h(x) <x>
f(1)
f(1, 2, 3)
g(1)
h()
#if h(1
#endif
h(1, 2
