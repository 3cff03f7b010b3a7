// options: -n --strict --c99
// proves: what strict C99 asks of inline functions and their parameters
inline int never(void);  // expect: error inline_never_defined
extern int shared;
int helper(void);
static int hidden = 1;
static int inner(void) { return hidden; }
inline int refers(void)
{
  static const int fixed = 1;
  static int kept;  // expect: error static_variable_in_inline_function
  return shared + helper() + fixed + kept
         + hidden  // expect: error bad_linkage_of_ref_within_inline_function
         + inner();  // expect: error bad_linkage_of_ref_within_inline_function
}
int g(void) { return never() + refers(); }
int old(a) { return a; }  // expect: error undeclared_parameter
