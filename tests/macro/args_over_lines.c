// options: -P
// proves: arguments over several lines, with comments and directives among them
#define f(x,y) [x|y]
#define g(x) <x>
f(1,
2) after
f
(
1
,
2
)
x f(a
 b, c d
e) y
g( f(1
,2) ) z
g(
#ifdef g
yes
#else
no
#endif
)
g(
#define inner 77
inner
)
g(__LINE__) __LINE__ g(
__LINE__)
g(a /* comment
over lines */ b) c
g("str" 'c' "a\
b")
f(,) f( , ) f((1,2),[3])
