// proves: names declared under a visibility pragma take that visibility, unless they have one
#pragma GCC visibility push(hidden)
int hidden_object = 1;
int hidden_function(void);
extern int shown __attribute__((visibility("default")));
#pragma GCC visibility pop
int ordinary;
int *use(void) { hidden_function(); return &shown; }
