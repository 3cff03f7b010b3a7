// options: -n --gcc --gnu_version=30200
// proves: repeated type words were bent by early GNU versions
typedef int int;  // expect: warning bad_combination_of_type_specifiers, expect: warning missing_typedef_name
typedef short short;  // expect: error dupl_decl_specifier, expect: warning missing_typedef_name
typedef long long long;  // expect: warning bad_combination_of_type_specifiers, expect: warning missing_typedef_name
int int a;  // expect: error bad_combination_of_type_specifiers
unsigned unsigned b;  // expect: warning dupl_decl_specifier
signed signed int c;  // expect: warning dupl_decl_specifier
char int d;  // expect: error bad_combination_of_type_specifiers
typedef unsigned unsigned u;  // expect: warning dupl_decl_specifier
typedef int word;
unsigned word e = 3000000000u;
long word f;
word unsigned g;
unsigned struct { int n; } h;  // expect: error bad_combination_of_type_specifiers
short word i; long long word j; 
typedef float real;
long real k;  // expect: error bad_combination_of_type_specifiers
unsigned real l;  // expect: error id_already_declared, expect: error exp_semicolon
enum { big = 0x80000000u, bigger = 0xffffffff, minus = -1 };
