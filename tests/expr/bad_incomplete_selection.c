// options: -n
// proves: members of incomplete classes
struct nope *p;
int by_arrow(void) { return p->x; }  // expect: error ptr_to_incomplete_class_type_not_allowed
int by_dot(void) { return (*p).x; }  // expect: error incomplete_type_not_allowed
