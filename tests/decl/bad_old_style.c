// options: -n
typedef int number;
int identifiers(a, number) int a; { return a; }  // expect: error typedef_cannot_be_param_name
int dots(a, ...) int a; { return a; }  // expect: error ellipsis_not_allowed
int list(int, 3);  // expect: error exp_type_specifier
