// options: -r
// proves: the end of a function that should return a value
int falls_off(int n) { if (n) return 1; }           // expect: warning implicit_return_from_non_void_function
int all_paths(int n) { if (n) return 1; else return 2; }
int by_switch(int n) { switch (n) { case 1: return 1; break; default: return 2; } }  // expect: warning code_is_unreachable
int no_default(int n) { switch (n) { case 1: return 1; } }  // expect: warning implicit_return_from_non_void_function
int no_value(void) { return; }                      // expect: warning no_value_returned_in_non_void_function
void value(void) { return 1; }                      // expect: error value_returned_in_void_function
int main(void) { }                                  // expect: remark implicit_return_from_non_void_function
