/* options: -n --old_c */
#define f(x) f(x)
int k = f(1);  /* expect: error macro_recursion, expect: error undefined_identifier */
