// options: -n --c99
// proves: arrays of variable length in blocks and parameters; [*] in prototypes only
int sum(int n, int m, int a[n][m]);
int star(int n, int a[*]);
int sum(int n, int m, int a[n][m])
{
  int local[n * 2], (*p)[m] = a;
  typedef int row[m];
  row r;
  r[0] = local[0] = p[0][0];
  return sizeof local + sizeof(row) + r[0];
}
int bad(int n)
{
  goto over;               // expect: error branch_past_initialization
  int a[n];
over:
  return sizeof a;
}
int defined(int n, int a[*]) { return n + a[0]; }  // expect: error vla_with_unspecified_bound_not_allowed
