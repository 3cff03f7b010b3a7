// options: -n
// proves: what an object declaration may not be
void v;                    // expect: error incomplete_type_not_allowed
struct unknown u;          // expect: error var_retained_incomp_type
extern struct unknown ok;
int f(void)
{
  struct unknown local;    // expect: error incomplete_type_not_allowed
  int array[];             // expect: error incomplete_type_not_allowed
  int n = 1;
  static int s[n];         // expect: error vla_is_not_auto
  extern int e[n];         // expect: error variably_modified_type_not_allowed
  return sizeof local + sizeof array + sizeof s + sizeof e;
}
