// options: -n
// proves: cleanup names a function of one pointer and stands on automatic objects
void release(int *p) { *p = 0; }
int not_a_function;
int f(void)
{
  int a __attribute__((cleanup(release))) = 1;
  int b __attribute__((cleanup(not_a_function)));  // expect: error invalid_cleanup_routine
  static int c __attribute__((cleanup(release)));  // expect: warning attribute_cleanup_requires_automatic_storage
  b = c = 2;
  return a + b + c;
}
