// options: -n
// proves: targets of aliases are found at the end of the file
int real(void) { return 1; }
int other(void) __attribute__((alias("real")));
extern int named __asm__("target") ;
int named = 1;
extern int by_asm_name __attribute__((alias("target")));
static int outside(void) __attribute__((weakref("elsewhere")));
int lost(void) __attribute__((alias("nowhere")));  // expect: error aliased_name_undeclared
int wrong(void) __attribute__((alias("named_too")));  // expect: error aliased_name_bad_kind
int named_too;
int one(void) __attribute__((alias("two")));
int two(void) __attribute__((alias("one")));  // expect: error alias_loop
int calls(void) { return other() + by_asm_name + outside(); }
