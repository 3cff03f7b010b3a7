// options: -n
// proves: an extern inline definition of GNU C gives way to a real one
extern inline int twice(int x) { return x + x; }
int use(void) { return twice(2); }
int twice(int x) { return 2 * x; }  // expect: warning already_defined
static inline int local(int x) { return x; }
int use2(void) { return local(1); }
inline int plain(int x) { return x; }
