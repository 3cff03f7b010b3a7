// options: -n
// proves: heads that no body may follow
typedef int function(void);
function defined { return 1; }  // expect: error function_type_must_come_from_declarator
enum tint late(void) { return 0; }  // expect: error incomplete_function_return_type, expect: warning incomplete_type_not_allowed
int old(a) int a; return a;  // expect: error exp_lbrace
int after;
