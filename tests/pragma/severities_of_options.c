// options: --diag_error=48 --diag_suppress=36
// proves: diag_default goes back to what the options have set, not to the catalogue's severity
#define A 1
#pragma diag_warning 48
#define A 2                          // expect: warning bad_macro_redef
#pragma diag_default 48
#define A 3                          // expect: error bad_macro_redef
#pragma diag_remark bad_macro_redef
#pragma diag_default bad_macro_redef
#define A 4                          // expect: error bad_macro_redef
#warn no
#pragma diag_warning warn_directive
#warn yes                            // expect: warning warn_directive
#pragma diag_default 36
#warn no
int x;
