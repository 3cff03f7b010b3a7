// options: -n --no_gcc
// proves: what GNU C takes is an error without it, or needs its place
_Complex c;  // expect: error missing_floating_point_type
auto int automatic;  // expect: error bad_file_scope_storage_class
int f(int n)
{
  ;
  int late = n;
  switch (n) {
    case 1: int k = 2; late = k;  // expect: error declaration_after_statements, expect: error labeled_declaration
  }
  return late;
}
