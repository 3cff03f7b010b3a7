/* options: -P -K */
/* proves: K&R preprocessing: parameters in strings, vanishing comments, tokens that grow */
#define str(x) "x"
#define chr(x) 'x'
#define cat(a,b) a/**/b
#define X foo
#define f(x) x
#define g(x) x g2
#define g2(y) <y>
str(abc) chr(z) cat(xy,zw)
X/**/bar
g(1)(2)
f(X) f(f)(3)
 # define not_in_column_one
f("X" X)
f(1
,2)
