/* options: --no_gcc --strict */
/* proves: what initializers are told in strict C89 */
typedef struct { int x; int y[2]; } S; int f(void); int v; struct T; typedef struct U { int a; } U; U u;
S s2 = { 1, {2, 3}, 4 };  /* expect: error too_many_initializer_values */
S s3 = { 1, {2, 3, 4} };  /* expect: error too_many_initializer_values */
int a1[3] = { 1, 2, 3, 4 };  /* expect: error too_many_initializer_values */
int a4[3] = 1;  /* expect: error missing_initializer_list */
S s4 = 1;  /* expect: error missing_initializer_list */
char c2[2] = "abc";  /* expect: error bad_initializer_type */
char c5[] = ("abc");  /* expect: error nonstandard_parenthesized_string_initializer */
int c10[] = "abc";  /* expect: error missing_initializer_list */
int b2 = {1, 2};  /* expect: error too_many_initializer_values */
int b4 = {{1}};
int d1 = 1;
int d1 = 2;  /* expect: error already_initialized */
struct T t1 = {1};  /* expect: error incomplete_type_not_allowed */
int fn(void) = 1;  /* expect: error cannot_initialize */
typedef int td = 3;  /* expect: error cannot_initialize */
int pa(int x = 1);  /* expect: error initializer_in_param */
struct C { const int a; int b; struct { const int c; } d; };
struct C k1 = { 1, 2, { 3 } };
struct C k2 = { 1 };  /* expect: warning var_with_uninitialized_field */
void g(int n, S ps)
{
  extern int e2 = 1;  /* expect: error cannot_initialize */
  static int l1 = f();  /* expect: error bad_constant_function_call expect: warning declared_but_not_referenced */
  S ls = ps, ls2 = { n, {n} };  /* expect: error expr_not_constant expect: error expr_not_constant expect: warning declared_but_not_referenced expect: warning declared_but_not_referenced */
  int vla[n] = {1};  /* expect: error expr_not_constant */
  S ls3 = u;  /* expect: error bad_initializer_type expect: warning declared_but_not_referenced */
  S ls4 = n;  /* expect: error missing_initializer_list expect: warning declared_but_not_referenced */
  int noc[2] = {1 2};  /* expect: error exp_comma expect: warning declared_but_not_referenced */
}
