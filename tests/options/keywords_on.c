// options: --no_gcc --restrict --dollar --designators --compound_literals --vla --nonstd_default_arg_deduction
// proves: the features can be had one by one outside the GNU mode
struct s { int a, b; };
struct s s = { .b = 1 };
int *restrict p$q;
int f(int n)
{
  int v[n];
  return ((struct s){ 1, 2 }).a + v[0];
}
