/* options: --old_c --long_precision_bits=32 --remarks */
/* proves: old C: compound assignments in two tokens, unsigned preserving promotion, old member selection */
struct s { int a; int b; } x; struct q { char z; int w; int b2; } y; int i; char *cp; int *ip; float f; unsigned char uc; unsigned short us; char c;
int v();
t(p, q)
int p; float q;  /* expect: remark unreferenced_function_param */
{
  i + = 1;
  i - = 1; i * = 2; i / = 2; i % = 3; i << = 1; i >> = 1; i & = 7; i ^ = 1; i | = 2;
  i = uc - 5 < 0;  /* expect: warning unsigned_compare_with_zero */
  i = us > -1;  /* expect: warning unsigned_compare_with_negative */
  i->a = 1;  /* expect: warning old_fashioned_ptr_field_selection */
  cp->b = 2;  /* expect: warning old_fashioned_ptr_field_selection */
  ip->zz = 1;  /* expect: error not_a_field_name */
  i.b = 3;  /* expect: warning old_fashioned_field_selection */
  f.b = 4;  /* expect: warning old_fashioned_field_selection */
  i = sizeof(f + f);
  i = sizeof(-f);
  i = sizeof(1 << 2);
  i = sizeof 'a';
  v(f, c, us);
  undeclared(1);  /* expect: remark implicit_func_decl */
  ip = cp;  /* expect: warning incompatible_assignment_operands */
  ip = 5;  /* expect: warning incompatible_assignment_operands */
  cp = ip;  /* expect: warning incompatible_assignment_operands */
  i = x;  /* expect: error incompatible_assignment_operands */
  x = y;  /* expect: error incompatible_assignment_operands */
  i = (int [3])cp;  /* expect: warning nonstd_array_cast expect: warning incompatible_assignment_operands */
  i = sizeof x.a;
  i = 4 = i;  /* expect: error expr_not_a_modifiable_lvalue */
  return q;
}
struct b { unsigned u : 3; int s : 4; } bb;
r() { i = bb.u - 1 < 0; i = sizeof(bb.u); i = bb.u << 31 >> 31; i = -1 >> uc; t(1); t(1, 2, 3); t(1.5, "x"); }  /* expect: warning unsigned_compare_with_zero expect: warning integer_sign_change expect: warning too_few_arguments expect: warning old_style_incompatible_param expect: warning too_many_arguments expect: warning old_style_incompatible_param expect: warning old_style_incompatible_param expect: remark implicit_return_from_non_void_function */
int a[2] = 1;
int a2[] = { 1, 2, };
char s2[2] = "ab";
