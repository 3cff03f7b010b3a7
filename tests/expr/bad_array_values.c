// options: -n --no_gcc
// proves: an array that is no object stays one in C89, and is no argument without a parameter
struct s { int a[3]; } f(void);
void unprototyped();
int *r(void) { return f().a; }  // expect: error bad_rvalue_array
int q(void) { return f().a[1]; }  // expect: error expr_not_object_pointer
void g(void) { unprototyped(f().a); }  // expect: error bad_rvalue_array
