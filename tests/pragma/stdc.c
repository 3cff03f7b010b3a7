// options: --c99 --strict
// proves: STDC pragmas are taken in front of declarations and at the start of blocks
#pragma STDC FP_CONTRACT ON
double a;
#pragma STDC FOO ON              // expect: error unrecognized_stdc_pragma
#pragma STDC CX_LIMITED_RANGE NO // expect: error bad_stdc_pragma_arg
double f(double x)
{
#pragma STDC FENV_ACCESS DEFAULT
  a = x;
#pragma STDC FENV_ACCESS OFF     // expect: error stdc_pragma_not_allowed_here
  return a;
}
