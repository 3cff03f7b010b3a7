// options: --gcc --remarks
// proves: assorted messages of expressions
int printf(const char *, ...); int v; void vf(void); struct S { int a; int b : 2; } s, *sp; struct T *tp; int arr[4]; enum E { A } e; int old(); int __attribute__((warn_unused_result)) wur(void); void __attribute__((nonnull(1))) nn(int *, int *); void __attribute__((sentinel)) sen(int, ...); int __attribute__((deprecated)) dep; int two(int, int); int od(a, b) int a; char *b; { return a + !b; }
int not_inline(int n, ...) { return __builtin_va_arg_pack_len() + n; }  // expect: error bad_function_for_gnu_va_arg_pack
static inline int pack(int n, ...) { return __builtin_va_arg_pack_len(); }  // expect: remark unreferenced_function_param expect: warning declared_but_not_referenced
void t(int n, volatile int *vp, const int *cp)
{
  two(1);  // expect: error too_few_arguments
  two(1, 2, 3);  // expect: error too_many_arguments
  old(1, 2);
  od(1);  // expect: warning too_few_arguments
  od(1, 2);  // expect: warning old_style_incompatible_param
  od(1, 0);  // expect: remark old_style_incompatible_param
  od(1.5, 0);  // expect: warning old_style_incompatible_param expect: remark old_style_incompatible_param
  wur();  // expect: warning call_result_should_be_used
  (void)wur();
  wur(), n++;  // expect: warning call_result_should_be_used
  nn(0, 0);  // expect: warning null_argument_for_nonnull_parameter
  sen(1, 2);  // expect: warning invalid_gnu_sentinel_argument
  sen(1, 2, (void *)0);
  dep = 1;  // expect: warning deprecated_entity
  tp->a;  // expect: error ptr_to_incomplete_class_type_not_allowed
  *tp;  // expect: warning expr_has_no_effect
  tp++;  // expect: error expr_not_object_pointer
  tp + 1;  // expect: error expr_not_object_pointer
  tp - tp;  // expect: error expr_not_object_pointer
  vf;  // expect: warning expr_has_no_effect
  vf() , 1;  // expect: warning expr_has_no_effect
  n = (vf(), 2);
  n == 1;  // expect: warning expr_has_no_effect
  n = n == 1;
  v ? vf() : 1;
  v ? n++ : 0;
  *vp;
  vp[0];
  &n;  // expect: warning expr_has_no_effect
  sizeof n;  // expect: warning expr_has_no_effect
  (void)n;
  (int)n;  // expect: warning expr_has_no_effect
  n, v;  // expect: warning expr_has_no_effect expect: warning expr_has_no_effect
  -n;  // expect: warning expr_has_no_effect
  !n;  // expect: warning expr_has_no_effect
  n = arr;  // expect: warning incompatible_assignment_operands
  n = &s.b;  // expect: error address_of_bit_field
  s = 0;  // expect: error incompatible_assignment_operands
  sp->zz = 1;  // expect: error not_a_field
  s->a = 1;  // expect: error expr_not_pointer
  sp.a = 1;  // expect: error expr_not_class
  n = *vf;  // expect: warning incompatible_assignment_operands
  n[arr] = 1;
  n[v] = 1;  // expect: error expr_not_object_pointer
  arr[1.5] = 1;  // expect: error expr_not_integral
  arr[sp] = 1;  // expect: error expr_not_integral
  arr["x"] = 1;  // expect: error expr_not_integral
  arr = arr;  // expect: error expr_not_a_modifiable_lvalue
  *cp = 1;  // expect: error expr_not_a_modifiable_lvalue
  n = vf ? 1 : 2;  // expect: warning boolean_controlling_expr_is_constant
  if (arr == 0) n = 1;
  if (&n == 0) n = 1;
  if (n = v) n = 2;
  if (n = 0) n = 2;  // expect: warning assign_where_compare_meant
  n = e + 1.5;
  e++;
  n <<= 1.5;  // expect: error expr_not_integral
  n %= 2.0;  // expect: error expr_not_integral
  n += sp;  // expect: error expr_not_arithmetic
  sp += 1.5;  // expect: error expr_not_integral
  sp *= 2;  // expect: error expr_not_arithmetic
  sp -= sp;  // expect: error expr_not_integral
  n = n + vf();  // expect: error expr_not_arithmetic
  n = -"x";  // expect: error expr_not_arithmetic
  printf = 0;  // expect: error expr_not_a_modifiable_lvalue
  int printf2 = printf;  // expect: warning bad_initializer_type expect: warning declared_but_not_referenced
  n = 1 ? vf() : vf();  // expect: error incompatible_assignment_operands
  return 1 + "a";  // expect: warning expr_has_no_effect expect: error value_returned_in_void_function
  (n)(1);  // expect: warning code_is_unreachable expect: error expr_not_ptr_to_function
  "x"();  // expect: error expr_not_ptr_to_function
  goto n;  // expect: error never_defined
  n = sizeof(struct { int z; });
  n = (struct { int z; }){ 3 }.z;
  n = n <? v;  // expect: error exp_primary_expr
  n = 5.0 <? 3;  // expect: error exp_primary_expr
}
