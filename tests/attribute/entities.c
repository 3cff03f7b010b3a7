// options: -n
// proves: what an attribute may stand on, and the conditions on it
static int a __attribute__((weak));  // expect: error attribute_requires_external_linkage
int b __attribute__((constructor));  // expect: error wrong_entity_for_attribute
int c __attribute__((gnu_inline));   // expect: error wrong_entity_for_attribute
struct s { int m __attribute__((section("x"))); };  // expect: error wrong_entity_for_attribute
struct t;
struct __attribute__((packed)) t *head;  // expect: warning attribute_ignored_on_incomplete_class_decl
struct t __attribute__((packed)) *ptr;  // expect: warning wrong_entity_for_attribute
void early(void) __attribute__((constructor(101)));  // expect: error arguments_provided_for_attribute
int f(void)
{
  int local __attribute__((section("x"))) = 1;  // expect: error attr_disallows_automatic_storage
  int fine __attribute__((unused));
  return local + a;
}
typedef union { int *i; char *c; } args __attribute__((__transparent_union__));
typedef union { char c; int i; } not_args __attribute__((transparent_union));  // expect: warning union_cannot_be_transparent
typedef int not_union __attribute__((transparent_union));  // expect: warning transparent_type_is_not_union
void takes(args);
int *i;
void calls(void) { takes(i); takes("x"); }
