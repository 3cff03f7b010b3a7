// options: -n
// proves: section pragmas without a name, about other things, and against another section
int x; extern int ex; int f(void); typedef int type;
#pragma DATA_SECTION(x, 5)            // expect: error bad_pragma_format
#pragma DATA_SECTION(x, L"wide")      // expect: error bad_pragma_format
#pragma DATA_SECTION(x, "")           // expect: error bad_pragma_format
#pragma DATA_SECTION(x ".d")          // expect: error exp_comma
#pragma DATA_SECTION(x, ".d"          // expect: error exp_rparen
#pragma DATA_SECTION(nowhere, ".d")   // expect: warning pragma_requires_file_level
#pragma DATA_SECTION(f, ".d")         // expect: warning pragma_requires_level_zero_def
#pragma DATA_SECTION(ex, ".d")        // expect: warning pragma_requires_level_zero_def
#pragma CODE_SECTION(x, ".c")         // expect: warning pragma_requires_func_def
#pragma CODE_SECTION(nowhere, ".c")   // expect: warning pragma_bad_symbol
#pragma CODE_SECTION(type, ".c")      // expect: warning pragma_requires_func_def
#pragma CODE_SECTION(f, "a")
#pragma CODE_SECTION(f, "b")          // expect: warning section_pragma_conflict
#pragma CODE_SECTION(f, "a")
void g(void)
{
  static int local;                   // expect: warning declared_but_not_referenced
#pragma DATA_SECTION(local, ".d")     // expect: warning pragma_requires_level_zero_def
}
#pragma SET_DATA_SECTION              // expect: error exp_lparen
#pragma SET_DATA_SECTION(".a"         // expect: error exp_rparen
#pragma SET_DATA_SECTION(x)           // expect: error bad_pragma_format
#pragma SET_CODE_SECTION("a") more    // expect: error extra_text_in_pp_directive
#pragma SET_DATA_SECTION(".one")
extern int twice;
#pragma SET_DATA_SECTION(".two")
int twice;                            // expect: warning section_pragma_conflict
int y __attribute__((section(".p")));
int y __attribute__((section(".q"))); // expect: warning section_pragma_conflict
