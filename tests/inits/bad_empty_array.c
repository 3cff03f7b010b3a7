// options: -n --no_gcc
int y[] = {};  // expect: error bad_initializer_for_array_with_unspecified_bound
struct s { int a[]; } z = { {} };  // expect: error incomplete_type_not_allowed, expect: error exp_primary_expr
