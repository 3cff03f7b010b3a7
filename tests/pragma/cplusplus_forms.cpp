// options: --c++
// proves: in C++ a pragma stands in front of its declaration; the generated file, which is C, names the symbol
#pragma DATA_SECTION(".data_1")
int x = 3;
#pragma DATA_ALIGN(8 * 2)
#pragma RETAIN
static int y;
#pragma CODE_SECTION(".code_1")
#pragma FUNC_IS_PURE
#pragma FUNC_CANNOT_INLINE();
#pragma FUNC_EXT_CALLED
int f(int n)
{
#pragma MUST_ITERATE(1, 2)
  for (int i = 0; i < n; i++) n--;
  return n;
}
#pragma NOINIT
int quiet;
#pragma INTERRUPT(fiq)
void handler() { }
#pragma LOCATION(0x100)
int port;
#pragma WEAK
int weak;
#pragma NEAR
int near_word;
#pragma FUNC_INTERRUPT_THRESHOLD(-1)
#pragma FUNCTION_OPTIONS("-o")
int g();
#pragma STRUCT_ALIGN(s, 4)          // expect: warning unrecognized_pragma
int call() { return g(); }
