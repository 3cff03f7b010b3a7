/* options: -n --old_c */
/* proves: a call that contains itself ends in a message, however many calls its text holds */
#define f(x) f(x)
int k = f(1);  /* expect: error macro_recursion, expect: error undefined_identifier */
#define g g + 1
int l = g;     /* expect: error macro_recursion, expect: error undefined_identifier */
#define a b b b b b
#define b a a a a a
int m = (a);     /* expect: error macro_recursion, expect: error undefined_identifier, expect: error exp_rparen */
#define h(x) x h(x + x) h(x)
int n = (h(1));  /* expect: error macro_recursion, expect: error exp_rparen */
#define call(x) h(call)(x)
int o = (call(1)); /* expect: error macro_recursion, expect: error undefined_identifier, expect: error exp_rparen */
#define once(x) (x + 1)
int p = once(once(once(1)));
