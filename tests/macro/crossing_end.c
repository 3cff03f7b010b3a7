// options: -P
// proves: a call may begin at the end of one text and take its arguments from the next
#define f(x) x
#define f1(a) a*g1
#define g1(a) f1(a)
f1(2)(9)
#define F2(x) x G2
#define G2() F2(2)
F2(1)() ()
#define lp (
#define rp )
f lp 1 rp
#define ff f lp 1 rp
ff f(ff)
#define gg f(a
gg b) gg) after
#define EMPTY
#define DEFER(id) id EMPTY
#define A() 123
#define EXPAND(...) __VA_ARGS__
DEFER(A)() EXPAND(DEFER(A)())
#define h(x, y) <x|y>
h(f(1), 3) end
