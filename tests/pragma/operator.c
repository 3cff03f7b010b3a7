// proves: pragmas made by macros act as lines do, with their operands as the arguments give them
#define DO(x) _Pragma(#x)
#define PLACE(v, section) DO(DATA_SECTION(v, section))
#define UNROLLED(n) DO(UNROLL(n)) DO(MUST_ITERATE(n, 4 * 2))
#define QUIET(x) _Pragma("diag_error 48") x _Pragma("diag_default 48")
PLACE(a, ".a") int a;
_Pragma("SET_DATA_SECTION(\".set\")") int b; _Pragma("SET_DATA_SECTION()") int c;
_Pragma(L"DATA_ALIGN(c, 64)") _Pragma("") QUIET(int d;)
int f(int n)
{
  UNROLLED(4) for (; n > 10;) n--;
  if (n) DO(UNROLL(2)) while (n > 4) n--;
  return n _Pragma("diag_suppress 1") + n;
}
