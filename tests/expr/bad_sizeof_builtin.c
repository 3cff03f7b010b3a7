// options: --gcc --remarks
// proves: messages of sizeof, __alignof__, typeof, built-ins, statement expressions and literals
struct S { int a; int b : 3; int v[4]; } s; struct T; extern int inc[]; int f(void); void vf(void); int n; double d; extern struct T et;
int x1 = sizeof(struct T);  // expect: error incomplete_type_not_allowed
int x2 = sizeof et;  // expect: error incomplete_type_not_allowed
int x3 = sizeof inc;  // expect: error incomplete_type_not_allowed
int x4 = sizeof s.b;  // expect: error sizeof_bit_field
int x5 = __alignof__(s.b);  // expect: error sizeof_bit_field
int x6 = __alignof__(struct T);  // expect: error alignof_incomplete_type
int x7 = sizeof(void) + sizeof(f);
int x8 = sizeof(int[]);  // expect: error incomplete_type_not_allowed
int x9 = __builtin_offsetof(struct S, b);  // expect: error offsetof_bit_field
int x10 = __builtin_offsetof(struct S, zz);  // expect: error not_a_field
int x11 = __builtin_offsetof(struct S, v[n]);  // expect: error nonconstant_offsetof
int x12 = __builtin_offsetof(int, a);  // expect: error expr_not_class
int x13 = __builtin_offsetof(struct T, a);  // expect: error incomplete_type_not_allowed
int x14 = __builtin_choose_expr(n, 1, 2);  // expect: error expr_not_constant
int x15 = __builtin_choose_expr(1, 2);  // expect: error exp_comma expect: error exp_primary_expr
int x16 = __builtin_abs(n);  // expect: error expr_not_constant expect: error bad_constant_function_call
int x17 = __builtin_popcount(7);
int x18 = __builtin_constant_p(n);
int x19 = __builtin_isnan(1);  // expect: error call_requires_floating_point_argument
int x20 = __builtin_isnan();  // expect: error call_requires_one_argument
int x21 = __builtin_types_compatible_p(int, 5);  // expect: error exp_type_specifier
int x22 = ({ 1; });  // expect: error expr_not_constant
int x23 = sizeof(typeof(vf()));
typeof(undefd) x24;  // expect: error undefined_identifier
int x25 = __builtin_clz(0);  // expect: error bad_constant_function_call
int x26 = __alignof__(inc);
int x27 = sizeof(f());
int x28 = sizeof(enum UU);  // expect: error incomplete_type_not_allowed
int x29 = __builtin_strlen("abc");
int x30 = __builtin_strlen(n);  // expect: error expr_not_constant expect: error bad_constant_function_call
void g(int k, int p[static 3], ...)  // expect: remark unreferenced_function_param
{
  int *q = (int[]){ 1, 2, k }; struct S *r = &(struct S){ 1 };
  int z1 = ({ vf(); });  // expect: error bad_initializer_type expect: warning set_but_not_used
  int z2 = ({ int t = k; t; });  // expect: remark set_but_not_used
  ({ k; });
  ({ return; });
  int z3 = sizeof(int[k]);  // expect: warning initialization_not_reachable expect: warning set_but_not_used
  typeof(k) z4 = 1; typeof(int[k]) z5;  // expect: warning declared_but_not_referenced
  (int[k]){ 1 };  // expect: error incomplete_type_not_allowed
  (void){ 1 };  // expect: error incomplete_type_not_allowed
  (int (void)){ 1 };  // expect: error incomplete_type_not_allowed
  (struct T){ 1 };  // expect: error incomplete_type_not_allowed
  (int){ 1, 2 };  // expect: warning excess_initializers_ignored
  &&lab;  // expect: error not_supported expect: error exp_primary_expr
  lab: ;  // expect: warning declared_but_not_referenced
  __builtin_va_list ap;
  __builtin_va_start(ap, k);  // expect: warning bad_va_start
  __builtin_va_start(k, k);  // expect: error bad_va_start
  __builtin_va_start(ap);  // expect: error exp_comma expect: error exp_primary_expr
  k = __builtin_va_arg(ap, int);
  k = __builtin_va_arg(ap, char);  // expect: warning va_arg_would_have_been_promoted
  d = __builtin_va_arg(ap, float);  // expect: warning va_arg_would_have_been_promoted
  k = __builtin_va_arg(k, int);  // expect: error bad_va_arg
  __builtin_va_end(ap);
  k = __builtin_fpclassify(1, 2, 3, 4, 5, 6);  // expect: error bad_final_builtin_fpclassify_arg
  k = __builtin_fpclassify(1, 2, 3, 4, 5, d);
  k = __builtin_expect(k, 1);
  vf() + 1;  // expect: error expr_not_arithmetic
  k = vf();  // expect: error incompatible_assignment_operands
  return;
  q = q; r = r; z1 = z2 = z3 = z4;  // expect: warning code_is_unreachable
}
