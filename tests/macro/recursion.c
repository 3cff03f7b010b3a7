// options: -P
// proves: a name stays as it is inside its own expansion, wherever the text travels
#define a a
#define b c
#define c b
a b c
#define f(x) x
#define NIL(x) x
#define G_0(arg) NIL(G_1)(arg)
#define G_1(arg) NIL(arg)
G_0(42)
#define AA BB
#define BB AA
AA BB f(AA) f(f)(AA) f(f)(f)(1)
#define obj(x)x
obj obj(obj)(obj (2))
#define CAT(x, y) x##y
#define again CAT(ag, ain) again
again f(again)
#define in_arg f(in_arg) in_arg2
#define in_arg2 f(in_arg)
in_arg
