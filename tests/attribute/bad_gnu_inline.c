// proves: inline declarations of a function agree on gnu_inline, which a function that isn't inline does without
inline int plain_first(int);
inline int plain_first(int) __attribute__((gnu_inline));  // expect: error first_decl_not_gnu_inline
extern inline __attribute__((gnu_inline)) int gnu_first(int n) { return n; }
inline int gnu_first(int);  // expect: error missing_gnu_inline_attr_on_redeclaration
int never_inline(int) __attribute__((gnu_inline));  // expect: warning gnu_inline_requires_inline

// What headers of the C library do.
extern int in_header(int);
extern __inline __attribute__((gnu_inline)) int in_header(int n) { return n + 1; }
int in_header(int);
int user(void) { return in_header(1) + plain_first(2) + gnu_first(3); }
