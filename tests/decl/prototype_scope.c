// options: -n
// proves: tags that only a parameter list sees, enumerations that nothing holds
int f(void (*)(struct inside), union other *p);  // expect: warning decl_in_prototype_scope, expect: warning decl_in_prototype_scope
enum big { huge = 0xffffffffffffffffULL, less = -1 };  // expect: warning insufficient_enum_range
