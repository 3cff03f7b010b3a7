// options: -n --c99 --remarks
// proves: qualifiers that mean nothing or stand wrongly
typedef int function(int);
typedef int array[3];
typedef const int cint;
const function f1;  // expect: warning useless_type_qualifiers
const array a1;  // expect: remark has_no_initializer_on_const
const cint c1;  // expect: remark has_no_initializer_on_const
volatile cint c2;  // expect: remark has_no_initializer_on_const
const const int c3;  // expect: remark dupl_type_qualifier, expect: remark has_no_initializer_on_const
int restrict r1;  // expect: error restrict_not_allowed
int *restrict r2;
function *restrict r3;  // expect: error restrict_pointer_to_function
typedef int *pointer;
restrict pointer r4;
const int f2(void);  // expect: remark useless_type_qualifier_on_return_type
int f3(const void);  // expect: error void_param_not_allowed
int f4(int const a[restrict static 3], int b[const *]);
int f5(int a[static 2][static 3]);  // expect: error type_qualifier_not_allowed
void f6(void) { int b[const 3]; const; int const; auto const int d = 1; }  // expect: error type_qualifier_not_allowed, expect: warning useless_decl, expect: warning useless_type_qualifiers, expect: warning useless_decl, expect: warning useless_type_qualifiers, expect: warning declared_but_not_referenced, expect: warning declared_but_not_referenced
void f7(register int a, static int b, extern int c, const register int d, auto int e, typedef int f);  // expect: error bad_param_storage_class, expect: error bad_param_storage_class, expect: remark storage_class_not_first, expect: error bad_param_storage_class, expect: error typedef_not_allowed
struct s { const int a; volatile struct { int n; } const v; const; static int q; register int r; };  // expect: warning useless_decl, expect: error storage_class_not_allowed, expect: error storage_class_not_allowed
const struct t { int n; };  // expect: warning useless_type_qualifiers
