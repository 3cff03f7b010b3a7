// options: -n --gcc
// proves: what storage, linkage and place an attribute asks of its entity
void f(void)
{
  int local __attribute__((section("x")));  // expect: error attr_disallows_automatic_storage, expect: warning set_but_not_used
  static int other __attribute__((alias("g")));  // expect: error attribute_does_not_apply_to_local_variable
  extern void inner(void) __attribute__((alias("f")));  // expect: warning local_function_attribute_ignored
  local = other;
  inner();
}
static int hidden __attribute__((weak));  // expect: error attribute_requires_external_linkage
static int seen __attribute__((visibility("hidden")));  // expect: warning attribute_requires_external_linkage
int vis __attribute__((visibility("hidden")));
extern int vis __attribute__((visibility("default")));  // expect: warning gnu_visibility_conflict
__thread int model __attribute__((tls_model("global-dynamic")));
extern __thread int model __attribute__((tls_model("local-exec")));  // expect: error inconsistent_tls_model_attr_arg
int gnu(void) __attribute__((gnu_inline));  // expect: warning gnu_inline_requires_inline
int use(void) { return hidden + seen + gnu(); }
