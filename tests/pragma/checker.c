// options: -n --advice:power=all
// proves: pragmas of the power advice take a list of rules, or none to reset
#pragma CHECK_ULP("1.1, 2.1")
int a;
#pragma RESET_ULP("all");
#pragma RESET_ULP()
#pragma CHECK_ULP()                  // expect: error bad_pragma_format
#pragma CHECK_ULP "all"              // expect: error bad_pragma_format
int f(int n)
{
  return n +
#pragma CHECK_ULP(all)               // expect: error bad_pragma_format
      a;
}
#pragma RESET_ULP(L"all")            // expect: error bad_pragma_format
