// options: -P
// proves: # keeps spelling, escapes quotes and backslashes inside literals only, and trims white space
#define s(x) #x
s("a\n" 'b' '\'' "\"" L"x" a+b   c	d)
s(  spaced   out  ) s() s( )
s(@ \n "\n" \ '\\')
s(a
  b
     c)
s( /* x */ a /* y */ b /* z */ )
#define all(...) #__VA_ARGS__
all() all(a) all( a , b,c , (d,e) )
