// options: -n --gcc
// proves: what GNU C warns of or refuses in declarations
struct flexible { int n; int rest[]; };
struct flexible several[3];  // expect: warning nonstandard_array_with_flexible_array_element
int defined = 1;
extern int defined asm("elsewhere");  // expect: warning asm_name_after_definition
int on_object asm("eax");  // expect: error register_name_on_nonregister
register int held asm("no_such_register");  // expect: error bad_reg_name
__attribute__((unused)) struct tag;  // expect: warning attributes_with_no_decl
int body(void) __attribute__((unused)) { return 1; }  // expect: error attributes_in_rout_defn
static int shared = 1;
extern __thread int shared;  // expect: error incompatible_thread_locality
int use(void) { return shared; }
