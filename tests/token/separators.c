// options: --c99
// proves: tokens that don't stand together in the source aren't joined in the output
#define PLUS +
#define MINUS(x) -x
#define EMPTY
#define DOT .
+PLUS MINUS(-1) x EMPTY y-EMPTY- 1 DOT 2 DOT.3
#define E e
1E+1 1 E+1 L 'a' EMPTY"x"
