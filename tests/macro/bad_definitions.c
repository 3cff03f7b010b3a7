// proves: each fault of a definition has its message
#define paste_first ## x    // expect: error paste_cannot_be_first
#define paste_last(x) x ##  // expect: error paste_cannot_be_last
#define sharp(x) #y         // expect: error exp_macro_param
#define twice(x, x) x       // expect: error duplicate_macro_param_name
#define open(x              // expect: error exp_rparen
#define number(1)           // expect: error exp_identifier
#define 5                   // expect: error exp_identifier
#define                     // expect: error exp_identifier
#define close+1             // expect: warning white_space_required_after_macro_name
#define rest(x) __VA_ARGS__ // expect: error VA_ARGS_not_allowed
#define __LINE__ 5          // expect: error cannot_redef_predef_macro
#define changed 1
#define changed 2           // expect: warning bad_macro_redef
#define same  a  +  b
#define same a + b
#define touching a+b
#define touching a + b      // expect: warning bad_macro_redef
#define p(x) x
#define p(y) y              // expect: warning bad_macro_redef
int changed_is = changed;
