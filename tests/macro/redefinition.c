// options: --strict --c99
// proves: in strict mode a differing redefinition is an error, an equal one nothing
#define OBJ (1 - 1)
#define OBJ (1  /* white space */  -   1)
#define FUN(a) ( a )
#define FUN( a ) ( a )
#define OBJ (0)      // expect: error bad_macro_redef
#define FUN(b) ( b ) // expect: error bad_macro_redef
#undef NEVER
int done = OBJ + FUN(1);
