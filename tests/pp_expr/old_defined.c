// options: -K -P
// proves: a macro that expands to defined works in old C, where replacements are scanned as text
#define X
#define DEF defined(X)
#define ONE 1
#define ADD(a) a + ONE
#if DEF && ADD(1) == 2
good
#endif
ADD(3)
