// options: --gcc
// proves: differences and comparisons of one object's addresses are constants, of two objects are not
int arr[10], a, b;
struct s { char c; int i, j; } v;
enum { distance = &arr[10] - &arr[2] };
char check_distance[distance == 8 ? 1 : -1];
char check_order[&arr[3] > &arr[2] ? 1 : -1];
char check_offset[(unsigned long)&((struct s *)0)->j == 8 ? 1 : -1];
char check_builtin[__builtin_offsetof(struct s, j) == 8 ? 1 : -1];
char check_equal[&a == &a ? 1 : -1];
int *past = &arr[10], *outside = &arr[11];  // expect: warning subscript_out_of_range
int *before = arr - 1;                      // expect: warning pointer_outside_base_object
int between = &a - &b;                      // expect: error expr_not_constant
