// options: -P
// proves: defined in all its forms, out of a macro too, and names of macros that are no calls
#define X
#define f(x) x
#define DEF defined(X)
#define BOTH(a) defined a && defined(f)
#if defined X && defined(X) && defined ( X ) && !defined Y && DEF && BOTH(X) && !defined(defined)
good1
#endif
#if f
#else
good2
#endif
#if f (3) == 3 
good3
#endif
#if defined __LINE__ && __LINE__ == 17
good4
#endif
