// proves: diag_ pragmas change severities from their place on, by number or tag
#define A 1
#pragma diag_suppress bad_macro_redef
#define A 2
#pragma diag_error 48
#define A 3                          // expect: error bad_macro_redef
#pragma diag_remark = 48, 49
#define A 4
#pragma diag_default bad_macro_redef
#define A 5                          // expect: warning bad_macro_redef
#pragma diag_warning 9999            // expect: warning invalid_error_number
#pragma diag_warning no_such_tag     // expect: warning invalid_error_tag
#pragma diag_warning "x"             // expect: warning exp_error_argument
#pragma diag_warning 1 2             // expect: warning exp_comma
#pragma diag_once 36
#warn one                            // expect: warning warn_directive
#warn two
_Pragma("diag_suppress 48")
#define A 6
int x;
