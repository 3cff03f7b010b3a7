// options: -n --strict --c89 --diag_suppress=2581
// proves: strict C89: int range, no trailing comma, no forward declaration, one list
enum a { big = 0x7fffffff, next };  // expect: error enum_value_out_of_int_range
enum b { one, };           // expect: error nonstd_extra_comma
enum c;                    // expect: error nonstd_forward_decl_enum
enum d { x };
enum d { y };              // expect: error redefinition
enum e { f = 1.5 };        // expect: error expr_not_integral_constant
enum { };                  // expect: error exp_identifier
