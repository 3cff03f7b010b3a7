// options: -n
// proves: arrays whose elements are incomplete may be declared, and completed later, but not defined, measured or held
struct never;
struct later;
extern struct never elsewhere[3];
struct later soon[2];
struct later grid[2][3];
struct never tentative[2];  // expect: error var_retained_incomp_type
int early = sizeof soon;  // expect: error incomplete_type_not_allowed
void parameter(struct never a[2]);
struct holder { struct never held[2]; };  // expect: error incomplete_type_not_allowed
void f(void)
{
  struct never local[2];  // expect: error incomplete_type_not_allowed
  static struct later still[2];  // expect: error incomplete_type_not_allowed
  sizeof(struct never[2]);  // expect: error incomplete_type_not_allowed
  &elsewhere;  // expect: warning expr_has_no_effect
  parameter(elsewhere);
}
struct later { int n; };
int late[sizeof soon == 8 && sizeof grid == 24 ? 1 : -1];
