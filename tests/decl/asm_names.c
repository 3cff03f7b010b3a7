// options: -n
// proves: asm names of objects, functions and registers (GNU)
extern int a __asm__("other_a");
int f(void) __asm__("other_f");
int f(void) __asm__("third_f");  // expect: warning asm_name_conflict
int g(void) { int local __asm__("l") = 1; return local + a + f(); }  // expect: warning asm_name_on_auto_variable
int h(void) __asm__("h_") { return 1; }  // expect: error asm_name_in_rout_defn
int i(void) __asm__(1);    // expect: error exp_string_literal
struct s { int m __asm__("m_"); };  // expect: error field_with_asm_name_not_allowed
