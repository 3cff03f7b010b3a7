// proves: what calls of overloaded functions and references can't do
int amb(int, double);
int amb(double, int);
int f(int *);
int f(char *);
int g(int &);
int one(int);
struct S { int x; };
int operator+(S, int);
void calls(S s, const int c, long l)
{
  amb(1, 2);                  // expect: error ambiguous_overloaded_function
  f(3);                       // expect: error no_matching_new_function
  g(3);                       // expect: error nonconst_ref_init_from_rvalue
  g(c);                       // expect: error qualifier_dropped_in_ref_init
  nope(1);                    // expect: error undefined_identifier
  nope2(s);                   // expect: error undefined_identifier
  one(s);                     // expect: error no_conversion_function
  s + s;                      // expect: error no_matching_operator_function
  int &r = 3;                 // expect: error nonconst_ref_init_from_rvalue
  int &q = l;                 // expect: error bad_nonconst_ref_init
  int (*p)(long *) = f;       // expect: error no_match_for_addr_of_overloaded_function
  (void)r; (void)q; (void)p;
}
int &dangling()
{
  int local = 1;
  return local;               // expect: warning returning_ref_to_local_variable
}
