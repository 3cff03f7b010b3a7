// options: -n --gcc
// proves: what is defined is no alias, but an inline definition gives way
int real(void) { return 1; }
int target(void) { return 1; }
int target(void) __attribute__((alias("real")));  // expect: error alias_cannot_have_definition
int value = 2;
int with_value = 1;
extern int with_value __attribute__((alias("value")));  // expect: error alias_cannot_have_definition
inline int inlined(void) { return 1; }
int inlined(void) __attribute__((alias("real")));  // expect: warning ignoring_inline_definition_because_of_alias
