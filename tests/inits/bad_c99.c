// options: --no_gcc --c99
// proves: what initializers are told in C99
typedef struct { int x; int y[2]; } S; int f(void); int v; struct T; typedef struct U { int a; } U; U u;
S s2 = { 1, {2, 3}, 4 };  // expect: error too_many_initializer_values
S s3 = { 1, {2, 3, 4} };  // expect: error too_many_initializer_values
int a1[3] = { 1, 2, 3, 4 };  // expect: error too_many_initializer_values
int a4[3] = 1;  // expect: warning missing_initializer_list
S s4 = 1;  // expect: warning missing_initializer_list
S s7 = { .z = 1 };  // expect: error not_a_field
S s8 = { [0] = 1 };  // expect: error invalid_designator_kind
int a7[3] = { [3] = 1 };  // expect: error subscript_out_of_range
int a8[3] = { [-1] = 1 };  // expect: error subscript_out_of_range
int a11[3] = { .x = 1 };  // expect: error invalid_designator_kind
char c2[2] = "abc";  // expect: error bad_initializer_type
char c5[] = ("abc");
int c10[] = "abc";  // expect: warning missing_initializer_list expect: warning bad_initializer_type
int b2 = {1, 2};  // expect: error too_many_initializer_values
int b4 = {{1}};
int d1 = 1;
int d1 = 2;  // expect: error already_initialized
struct T t1 = {1};  // expect: error incomplete_type_not_allowed
int fn(void) = 1;  // expect: error cannot_initialize
typedef int td = 3;  // expect: error cannot_initialize
int pa(int x = 1);  // expect: error initializer_in_param
struct F { int n; int d[]; } f1 = { 1, {1, 2, 3} };  // expect: error cannot_initialize_flexible_array_member
struct F f2 = { .d = {1, 2}, .n = 5 };  // expect: error cannot_initialize_flexible_array_member
struct N { struct F f; } n1 = { { 1, {1} } };  // expect: error cannot_initialize_flexible_array_member
union V { int a; float b; } u1 = { .b = 1 }, u2 = { 1, 2 };  // expect: error too_many_initializer_values
struct C { const int a; int b; struct { const int c; } d; };
struct C k1 = { 1, 2, { 3 } };
struct C k2 = { 1 };  // expect: warning var_with_uninitialized_field
struct C k3 = { .b = 1, .d = { 1 } };  // expect: warning var_with_uninitialized_field
struct C k4 = { .d = { 1 }, .a = 2 };
void g(int n, S ps)
{
  extern int e2 = 1;  // expect: error cannot_initialize
  static int l1 = f();  // expect: error bad_constant_function_call
  int l2 = f(), la[3] = { n, 2, f() };
  S ls = ps, ls2 = { n, {n} };
  int vla[n] = {1};  // expect: error cannot_initialize expect: warning declared_but_not_referenced
  struct F lf = { 1, {1} };  // expect: error cannot_initialize_flexible_array_member
  struct F lf2 = { .d = {1} };  // expect: error cannot_initialize_flexible_array_member
  S ls3 = u;  // expect: error bad_initializer_type
  S ls4 = n;  // expect: warning missing_initializer_list
  struct C cm = { .b = n };  // expect: warning var_with_uninitialized_field
  int noc[2] = {1 2};  // expect: error exp_comma
  l2 = la[0] + ls.x + ls2.x + l1 + noc[0] + ls3.x + ls4.x + cm.a + lr[0] + lf.n + lf2.n;  // expect: error undefined_identifier
}
