// options: -n
// proves: storage classes and function specifiers where they may not stand
extern static int a;       // expect: error mult_storage_classes
auto int b;                // expect: warning auto_ignored
inline int c;              // expect: warning inline_and_nonfunction
void f(static int p);      // expect: error bad_param_storage_class
void g(inline int p);      // expect: error bad_param_specifier
void h(typedef int p);     // expect: error typedef_not_allowed
struct s { static int m; };  // expect: error storage_class_not_allowed
register void r(void);     // expect: error bad_function_storage_class
__thread __thread int t;   // expect: error multiple_thread_local_storage_specifiers
int m(void)
{
  __thread int u;          // expect: error cannot_use_thread_local_storage
  static int n(void);      // expect: error block_scope_function_must_be_extern
  u = n();
  return u;
}
int cast = sizeof(static int);  // expect: error exp_primary_expr
