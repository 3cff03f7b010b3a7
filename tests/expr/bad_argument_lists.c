// options: -n
// proves: operands of the operations on argument lists
typedef __builtin_va_list va_list;
int f(int n, ...)
{
  va_list a;  // expect: warning set_but_not_used
  int i = 0;
  __builtin_va_start(a, i);  // expect: warning bad_va_start
  __builtin_va_end(i);  // expect: error bad_va_end
  __builtin_va_copy(a, i);  // expect: error bad_va_copy
  i = __builtin_va_arg(i, int);  // expect: error bad_va_arg
  i = __builtin_fpclassify(1, 2, 3, 4, 5, 6);  // expect: error bad_final_builtin_fpclassify_arg
  i = __builtin_fpclassify(1, 2);  // expect: error too_few_arguments, expect: error invalid_builtin_fpclassify_args
  return i;
}
void g(int n) { va_list a; __builtin_va_start(a, n); __builtin_va_end(a); }  // expect: error va_start_requires_ellipsis_function
