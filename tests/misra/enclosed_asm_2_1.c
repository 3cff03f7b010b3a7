// options: --gcc --check_misra=2.1
// proves: assembly and other code in one function is reported, a function of assembly alone is not
int mixed(int a) // expect: warning misra_c_2004_2_1
{
  asm(" nop");
  a++;
  return a;
}
void only(void) { asm(" nop"); { asm(" nop"); } }
int with_return(void) { asm(" mov r0, #1"); return 0; }
int none(int a) { a++; return a; }
