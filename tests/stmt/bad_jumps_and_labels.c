// options: -n --c99 --no_gcc
// proves: a declaration directly behind a label is an error in C
int f(int n)
{
  if (n) goto label;
label:
  int k = 1;  // expect: error labeled_declaration
  return k;
}
