// options: -n
// proves: declarations that declare nothing, each with its own message
int;                       // expect: warning useless_decl
struct { int a; };         // expect: warning useless_decl
const struct s { int a; };  // expect: warning useless_type_qualifiers
static struct t { int a; };  // expect: warning storage_class_requires_function_or_variable
inline struct u { int a; };  // expect: warning inline_and_nonfunction
enum { alone };
struct v;
;
x;                         // expect: warning missing_decl_specifiers
