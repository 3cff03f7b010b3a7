// options: -P
// proves: variable arguments, the standard's seventh example, and GNU's named rest and lost comma
#define debug(...) fprintf(stderr, __VA_ARGS__)
#define showlist(...) puts(#__VA_ARGS__)
#define report(test, ...) ((test)?puts(#test):\
 printf(__VA_ARGS__))
debug("Flag");
debug("X = %d\n", x);
showlist(The first, second, and third items.);
report(x>y, "x is %d but y is %d", x, y);
#define e1(fmt, args...) printf(fmt, ##args)
#define e2(fmt, ...) printf(fmt, ##__VA_ARGS__)
#define e3(...) f(a , ## __VA_ARGS__)
#define e4(fmt, args...) printf(fmt, args)
e1("a"); e1("a",1); e1("a",1,2); e2("b"); e2("b",); e2("b", x y , z); e3(); e3(1); e3(1,2); e4("c"); e4("c",1)
#define LOG2(args...) g(args)
LOG2(); LOG2(1,2);
