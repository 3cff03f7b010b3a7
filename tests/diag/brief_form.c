// options: -E
// proves: one line a message; the line number follows splices
#define A(x) x
#define A(y) y y
#undef \
  A B
#if 1 /* /* */
#endif
