// options: --c++ -n
// proves: pragmas in front of what they can't be about, and the form of C
#pragma DATA_SECTION(".d")          // expect: warning pragma_must_precede_declaration
;
#pragma CODE_SECTION(".d")          // expect: warning pragma_requires_func_def
int y;
#pragma FUNC_EXT_CALLED             // expect: warning pragma_requires_func_def
int declared();
#pragma NOINIT                      // expect: warning pragma_cannot_apply_to_func
int other();
int f(int n)
{
#pragma DATA_SECTION(".d")          // expect: warning pragma_requires_static_storage
  int local = n;
#pragma PERSISTENT                  // expect: warning requires_static_storage
  int second = n;
#pragma LOCATION(4)                 // expect: warning pragma_requires_static_storage
  int third = n;
#pragma DATA_ALIGN(4)               // expect: warning pragma_must_precede_declaration
  n = local + second + third;
  return n;
}
#pragma DATA_SECTION(x, ".d")       // expect: error bad_pragma_format
int x;
