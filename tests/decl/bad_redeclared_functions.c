// options: -n --remarks
// proves: what a second declaration of a function may change, at file level, in blocks and behind calls
int f1(void);  // expect: warning declared_but_not_referenced
static int f1(void);  // expect: warning linkage_conflict
int f2(void) { return 1; }  // expect: warning declared_but_not_referenced
static int f2(void);  // expect: warning linkage_conflict
static int f3(void);  // expect: warning declared_but_not_referenced
int f3(void);
int f4(int);
int f4(long);  // expect: error not_compatible_with_previous_decl
void f5(void);
int f5(void) { return 0; }  // expect: error not_compatible_with_previous_decl
void f6();
f6() { }  // expect: remark missing_type_specifier, expect: warning not_compatible_with_previous_decl
int use1(void) { return late(1) + later(2); }  // expect: remark implicit_func_decl, expect: remark implicit_func_decl
int late(int n) { return n; }
double later(double d) { return d; }  // expect: warning decl_incompatible_with_previous_use
static int used_later(int);
int use2(void)
{
  int f4(int);
  int f4(char);  // expect: error not_compatible_with_previous_decl
  extern int block1(int);
  static int block2(int);  // expect: error block_scope_function_must_be_extern
  int f1;
  extern double object;
  { int block1(int); int block1(short); float object; { extern float object; extern int f2(void); } }  // expect: error not_compatible_with_previous_decl, expect: remark local_variable_hidden, expect: error decl_incompatible_with_previous_use, expect: warning declared_but_not_referenced
  return f1 + used_later(1);  // expect: warning used_before_set
}
int block1(int);
int block1(char *);  // expect: error not_compatible_with_previous_decl
long object;  // expect: error decl_incompatible_with_previous_use
int block2(int);
static int used_later(int n) { return n; }
int variable;
int variable(void);  // expect: error not_compatible_with_previous_decl
int function(int);
int function;  // expect: error not_compatible_with_previous_decl
typedef int type;
int type(void);  // expect: error id_already_declared
enum { constant };
int constant(void);  // expect: error id_already_declared
int f7(int a, int b);
int f7(a) int a; { return a; }  // expect: error not_compatible_with_previous_decl
int f8(a, b) int a; char b; { return a; }  // expect: remark unreferenced_function_param
int f8(int, char);  // expect: error not_compatible_with_previous_decl
int f8(int, int);
int f9();
int f9(float);  // expect: error not_compatible_with_previous_decl
int f10(const int, int [3], int (*)(void));
int f10(int, int *, int (void));
int f11(int, ...);
int f11();  // expect: error not_compatible_with_previous_decl
