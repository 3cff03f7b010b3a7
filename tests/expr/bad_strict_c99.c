// options: --no_gcc --c99 --strict --remarks
// proves: strict C99: what is reported beside plain C99
int f(void); int v; int arr[3]; struct S { int a; } s; struct T;
enum E { A = 1 };
void t(int n)
{
  void *p = &v, *q = p; char *c; int (*fp)(void) = f;   // expect: warning set_but_not_used
  undeclared();  // expect: error undefined_identifier
  p = (void *)fp;
  fp = p;  // expect: error incompatible_assignment_operands
  p == fp;  // expect: error incompatible_operands
  c = p + 1;  // expect: error expr_not_object_pointer
  n = sizeof(void);  // expect: error incomplete_type_not_allowed
  n = sizeof f;  // expect: error sizeof_function
  *p;  // expect: error incomplete_type_not_allowed
  v = ({ 1; });  // expect: error exp_primary_expr
  n = n ?: 1;  // expect: error exp_primary_expr
  n = (struct S)s;  // expect: error cast_to_bad_type
  (n ? f() : (void)0);  // expect: error incompatible_operands
  return f(), (void)0;  // expect: error value_returned_in_void_function
  n = 1 / 0;  // expect: warning code_is_unreachable expect: warning divide_by_zero
  n = 2147483647 + 1;  // expect: warning integer_overflow
  n = "abc"[0];
  n = &arr == arr;  // expect: error incompatible_operands
  n = arr < &v;
  c = "x";
  n = 'ab';  // expect: warning multi_char_literal
  q = 0 ? p : c;
  long long ll = 1;  // expect: warning declared_but_not_referenced
  &*undef2;  // expect: error undefined_identifier
  typeof(n) z;  // expect: error undefined_identifier expect: error exp_semicolon
  f = 0;  // expect: error expr_not_a_modifiable_lvalue
}
int a1["abc"[0]];  // expect: error expr_not_integral_constant
int a2[(int)1.5];
int a3[(int)(1.5 + 2)];  // expect: error expr_not_integral_constant
int a4[&v - &v];  // expect: error array_size_must_be_positive
int a5[(int)&((struct S *)0)->a];  // expect: error bad_integral_operator
char c1[2] = ("a");  // expect: error nonstandard_parenthesized_string_initializer
