// options: -n --remarks
// proves: entities that attributes refuse, and aliases that lead nowhere
int a3;
extern int b1 __attribute__((alias("nowhere")));  // expect: error aliased_name_undeclared
extern int b2 __attribute__((alias("b3")));
extern int b3 __attribute__((alias("b2")));  // expect: error alias_loop
void b4(void) __attribute__((alias("b5")));
void b5(void) { }
extern int b6 __attribute__((alias("b5")));  // expect: error aliased_name_bad_kind
static int b7(void) __attribute__((weakref("b8")));
int b9(void) __attribute__((weakref));
int m1 __attribute__((mode(QI, HI)));  // expect: error unbalanced_attribute_argument
struct s1 m2 __attribute__((mode(QI)));  // expect: error mode_incompatible_with_type, expect: error var_retained_incomp_type
int *m3 __attribute__((mode(QI)));  // expect: error mode_incompatible_with_type
double m4 __attribute__((mode(SI)));  // expect: error mode_incompatible_with_type
enum e { e0 } m5 __attribute__((mode(QI)));
int c1 __attribute__((cleanup(nothing)));  // expect: warning attribute_cleanup_requires_automatic_storage
void f(void)
{
  int c2 __attribute__((cleanup(none)));  // expect: error invalid_cleanup_routine, expect: warning declared_but_not_referenced
  int c3 __attribute__((cleanup(b5)));  // expect: error invalid_cleanup_routine, expect: warning declared_but_not_referenced
  int c4 __attribute__((cleanup(a3)));  // expect: error invalid_cleanup_routine, expect: warning declared_but_not_referenced
  static int c5 __attribute__((visibility("hidden")));  // expect: warning attribute_requires_external_linkage, expect: warning declared_but_not_referenced
  register int c6 __attribute__((aligned(8)));  // expect: error attr_disallows_register_storage, expect: warning declared_but_not_referenced
  int c7 __attribute__((weak, nocommon, section("x")));  // expect: error attribute_requires_external_linkage, expect: error attr_disallows_automatic_storage
  label: __attribute__((noreturn)) f();  // expect: error wrong_entity_for_attribute, expect: warning declared_but_not_referenced
}
void g(int p __attribute__((packed)), int q __attribute__((section("x"))), int r __attribute__((aligned(8))));  // expect: error wrong_entity_for_attribute, expect: error wrong_entity_for_attribute, expect: error wrong_entity_for_attribute
struct __attribute__((noreturn, aligned(7))) h { int n __attribute__((weak)); int bits : 3 __attribute__((aligned(4))); };  // expect: error wrong_entity_for_attribute, expect: error bad_attribute_alignment, expect: error wrong_entity_for_attribute
void i(void) __attribute__((format(printf, 1, 2))), j(char *, ...) __attribute__((format(print, 1, 2))), k(int, ...) __attribute__((format(printf, 1, 2)));  // expect: warning invalid_argument_to_attribute
void l(int *, int) __attribute__((nonnull(2))), m(int *) __attribute__((nonnull(3))), n(void) __attribute__((nonnull)), o(int *) __attribute__((nonnull(0)));  // expect: error nonnull_on_nonpointer, expect: error nonnull_parameter_number_too_large, expect: warning no_pointer_parameters, expect: error nonnull_parameter_number_too_large
void *p(int) __attribute__((alloc_size(2))), *q(int) __attribute__((alloc_size(1))), r(int) __attribute__((malloc)), s(int, ...) __attribute__((sentinel(1)));  // expect: error invalid_argument_to_attribute
