// options: -P
// proves: a function-like name with no parenthesis behind it is a name, however far the search goes
#define foo() bar
#define f(x) x
#define EMPTY
foo
()
foo

x
foo EMPTY ()
foo /* c */ // d
/* e
*/ () end
f(foo)() f(foo ()) f(foo)
foo
#define unrelated
() foo
foo /* over
lines */ + foo /*
*/
#define EMPTY2
  , foo
