// options: -n
// proves: operands that have no address, no pointer or no value
struct s { int b : 3; int n; } s;
typedef int number;
int f(int n)
{
  register int held = n;
  int *p = &held;  // expect: error address_of_register_variable
  p = &s.b;  // expect: error address_of_bit_field
  if (n = 1) n = 2;  // expect: warning assign_where_compare_meant
  n = number;  // expect: error type_identifier_not_allowed
  n->x = 1;  // expect: error expr_not_pointer
  n = n[n];  // expect: error expr_not_object_pointer
  return *p;
}
int by_param(int a, enum { first = a } e);  // expect: error param_not_allowed
