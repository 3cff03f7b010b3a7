// options: --gcc
// proves: what initializers are told in the GNU modes
typedef struct { int x; int y[2]; } S; int f(void); int v; struct T; typedef struct U { int a; } U; U u;
S s2 = { 1, {2, 3}, 4 };  // expect: warning excess_initializers_ignored
S s3 = { 1, {2, 3, 4} };  // expect: warning excess_initializers_ignored
int a1[3] = { 1, 2, 3, 4 };  // expect: warning excess_initializers_ignored
int a2[3] = {};
int a4[3] = 1;  // expect: warning missing_initializer_list
S s4 = 1;  // expect: warning missing_initializer_list
S s5 = {};
S s7 = { .z = 1 };  // expect: error not_a_field
S s8 = { [0] = 1 };  // expect: error invalid_designator_kind
int a7[3] = { [3] = 1 };  // expect: error subscript_out_of_range
int a8[3] = { [-1] = 1 };  // expect: error subscript_out_of_range
int a9[3] = { [2 ... 1] = 1 };  // expect: error no_negative_designator_range
int a11[3] = { .x = 1 };  // expect: error invalid_designator_kind
S s9 = { y: {1, 2}, x: 3 };
char c2[2] = "abc";  // expect: warning excess_characters_in_literal_ignored
char c5[] = ("abc");
int c10[] = "abc";  // expect: warning missing_initializer_list expect: warning bad_initializer_type
int b2 = {1, 2};  // expect: warning excess_initializers_ignored
int b3 = {};  // expect: error exp_primary_expr
int b4 = {{1}};
int d1 = 1;
int d1 = 2;  // expect: error already_initialized
struct T t1 = {1};  // expect: error incomplete_type_not_allowed
int fn(void) = 1;  // expect: error cannot_initialize
typedef int td = 3;  // expect: error cannot_initialize
int pa(int x = 1);  // expect: error initializer_in_param
struct F { int n; int d[]; } f1 = { 1, {1, 2, 3} };
struct F f2 = { .d = {1, 2}, .n = 5 };
struct N { struct F f; } n1 = { { 1, {1} } };  // expect: error cannot_initialize_indirect_flexible_array
union V { int a; float b; } u1 = { .b = 1 }, u2 = { 1, 2 };  // expect: warning excess_initializers_ignored
struct C { const int a; int b; struct { const int c; } d; };
struct C k1 = { 1, 2, { 3 } };
struct C k2 = { 1 };  // expect: warning var_with_uninitialized_field
struct C k3 = { .b = 1, .d = { 1 } };  // expect: warning var_with_uninitialized_field
struct C k4 = { .d = { 1 }, .a = 2 };
int r1[10] = { [2 ... 4] = 1, [3] = 2 };
void g(int n, S ps)
{
  extern int e2 = 1;  // expect: error cannot_initialize
  static int l1 = f();  // expect: error bad_constant_function_call
  int l2 = f(), la[3] = { n, 2, f() };
  S ls = ps, ls2 = { n, {n} };
  int vla[n] = {1};  // expect: error cannot_initialize expect: warning declared_but_not_referenced
  struct F lf = { 1, {1} };  // expect: error cannot_init_auto_flexible_array_member
  struct F lf2 = { .d = {1} };  // expect: error cannot_init_auto_flexible_array_member
  int lr[4] = { [0 ... 2] = n };  // expect: error no_range_designator_with_dynamic_init
  S ls3 = u;  // expect: error bad_initializer_type
  S ls4 = n;  // expect: warning missing_initializer_list
  struct C cm = { .b = n };  // expect: warning var_with_uninitialized_field
  int noc[2] = {1 2};  // expect: error exp_comma
  l2 = la[0] + ls.x + ls2.x + l1 + noc[0] + ls3.x + ls4.x + cm.a + lr[0] + lf.n + lf2.n;
}
