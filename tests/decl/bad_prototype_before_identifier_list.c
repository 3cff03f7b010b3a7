// proves: declared types that aren't those of the prototype don't take it over (GNU)
int f(short);
int f(x) char x; { return x; }   // expect: error not_compatible_with_previous_decl
int g(short, float);
int g(x) short x; { return x; }  // expect: error not_compatible_with_previous_decl
int h(float, ...);
int h(x) float x; { return x; }  // expect: error not_compatible_with_previous_decl
long k(float);
int k(x) float x; { return x; }  // expect: error not_compatible_with_previous_decl
