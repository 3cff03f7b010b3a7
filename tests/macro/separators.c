// options: -P
// proves: tokens that touch only after expansion are kept apart in the output, and no others
#define neg(x) -x
#define EMPTY
#define e 1e
#define dot .
#define id x
#define plus +
neg(-1) neg(x) -EMPTY-1 +plus plus+ id EMPTY id(id)[id] dot.dot
#define join(a, b) a b
join(a,b) L EMPTY"s" EMPTY L"s"
#define inc(x) x++
inc(+y) inc(y)+z a=neg(1) id;id id,id e+1
