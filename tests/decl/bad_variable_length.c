// options: -n --c99
// proves: where types of variable length are refused
int f(int n)
{
  extern int (*returned(void))[n];  // expect: error vla_in_return_type
  typedef int rows[n];
  struct field { rows member; };  // expect: error field_cannot_involve_vla_type
  int k = ({ int a[n]; (int)sizeof a; });  // expect: error vla_in_statement_expr
  k += ({ typedef int t[n]; 1; });  // expect: error vla_in_statement_expr
  return k;
}
