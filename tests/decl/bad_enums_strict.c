/* options: -n --strict */
/* proves: values of enumerators beyond int, in strict C */
enum a { a0 = 0x7fffffff, a1 };  /* expect: error enum_value_out_of_int_range */
enum b { b0 = 0x80000000 };  /* expect: error enum_value_out_of_int_range */
enum c { c0 = 0xffffffff };  /* expect: error enum_value_out_of_int_range */
enum d { d0 = -2147483647 - 1, d1 = 1.5 };  /* expect: error expr_not_integral_constant */
enum e { e0 = 1, e0, e1 = e0 };  /* expect: error id_already_declared */
enum f { f0 = 3 } f;
enum f { f1 };  /* expect: error redefinition */
enum g;  /* expect: error nonstd_forward_decl_enum */
enum h { };  /* expect: error exp_identifier */
enum i { i0, };  /* expect: error nonstd_extra_comma */
enum { };  /* expect: error exp_identifier */
enum a x = 3;
struct a y;  /* expect: error tag_kind_incompatible_with_declaration */
int e1;  /* expect: error id_already_declared */
enum j { j0 = sizeof(enum j) };  /* expect: error incomplete_type_not_allowed, expect: error nonstd_forward_decl_enum */
