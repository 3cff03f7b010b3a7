// options: -K -P
// proves: K&R preprocessing expands macros in strings and joins over comments
#define str(x) "x"
#define glue(a, b) a/**/b
str(one) glue(two, three)
