// options: -n --gcc
// proves: places, words and texts of asm declarations
struct s { int n; asm("here"); };  // expect: error asm_decl_not_allowed
void g(void)
{
  asm const("nop");  // expect: warning const_ignored
  asm goto("nop");  // expect: error invalid_asm_qualifiers
  asm(nop);  // expect: error exp_asm_string
}
