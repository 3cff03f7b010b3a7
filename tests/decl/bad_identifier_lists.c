// options: -n
// proves: lists of names without a definition, and declarations of what isn't on the list
int a(x, y);               // expect: warning param_id_list_needs_function_def
int b(x) int z; { return x; }  // expect: error decl_should_be_of_param
int c(x) int x, x; { return x; }  // expect: error id_already_declared
int d(x) int x = 1; { return x; }  // expect: error initializer_in_param
int e(x) static int x; { return x; }  // expect: error bad_param_storage_class
int f(x, x) { return x; }  // expect: error dupl_param_name
