// options: --c99
// proves: only an inline definition that other units share may not name what has internal linkage (C99 6.7.4p3)
static int hidden(void) { return 1; }
inline int shared(void) { return hidden(); } // expect: error bad_linkage_of_ref_within_inline_function
static inline int private_one(void) { return hidden(); }
extern inline int external(void) { return hidden(); }
inline int made_external(void) { return hidden(); }
extern int made_external(void);
inline int with_static(void)
{
  static int count; // expect: error static_variable_in_inline_function
  return ++count;
}
__inline__ __attribute__((__gnu_inline__)) int old_rule(void) { return hidden(); }
extern __inline__ __attribute__((__gnu_inline__)) int old_extern(void)
{
  static int count;
  return ++count + hidden();
}
int use(void) { return private_one(); }
