// options: --diag_suppress=179
// proves: messages about declarations as conditions
struct C { C(int); operator bool(); };
struct P { int x; };
int f();
void g(P p, int *q)
{
  if (int a = q) a++; // expect: error bad_initializer_type
  if (C c = C(1)) f(); // expect: error not_supported
  while (P r = p) f(); // expect: error not_supported
  switch (int *s = q) { } // expect: error expr_not_integral_or_enum
  if (int b = 1) { } b = 2; // expect: error undefined_identifier
}
