// options: -n --c99 --no_gcc
// proves: without GNU C a designator is followed by an equals sign
struct s { int a, b; } x = { .a 3 };  // expect: error exp_assign
int a[3] = { [1] 3 };  // expect: error exp_assign
