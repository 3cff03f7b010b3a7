// options: -P
// proves: arguments that begin in a text and end behind it, joined inert names, strings of odd tokens
#define LP (
#define RP )
#define f(x) [x]
#define g(x, y) {x|y}
#define open f LP
#define first g(1
#define name f
1 open 2 RP
2 open name(3) ) name
3 (4)
4 first, 2)
5 first , name
(7) )
#define self self(x) + 1
#define call(x) x(2) self
6 call(self)
#define a b a
#define b a b
#define cat(x, y) x ## y
#define xcat(x, y) cat(x, y)
7 cat(a, b) xcat(a, b) cat(sel, f) xcat(sel, f)
#define str(x...) #x
#define xstr(x...) str(x)
8 str('\"' "\\" '"' L"\n" @ \n  "a'b" ) xstr(f(a b)) str( ) str(a   b)
#define rest(a, ...) <a, ## __VA_ARGS__> #__VA_ARGS__
#define named(fmt, args...) {fmt, ##args}
9 rest(1) rest(1, 2) rest(1, 2, 3) named(x) named(x, y, z) named(x,)
#define e
#define empty(x) (x)
10 empty() empty(e) empty(empty()) cat(,) cat(e,e) cat(1,e) [e empty(e)]
#define nest(x) x f(x
11 nest(5))
#define comma ,
#define two(x, y) <x;y>

12 two(1 comma 2, 3)
