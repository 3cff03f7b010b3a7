// options: -n --remarks
// proves: arguments that attributes refuse
typedef int function(int);
struct unfinished;
int a1 __attribute__((aligned(function)));  // expect: error function_type_not_allowed
int a2 __attribute__((aligned(struct unfinished)));  // expect: error incomplete_type_not_allowed
int a3 __attribute__((aligned(3)));  // expect: error bad_attribute_alignment
int a4 __attribute__((aligned(0)));  // expect: error bad_attribute_alignment
int a5 __attribute__((aligned(-8)));  // expect: error bad_attribute_alignment
int a6 __attribute__((aligned(1.5)));  // expect: error expr_not_integral_constant
int a7 __attribute__((aligned("8")));  // expect: error expr_not_integral_constant
int a8 __attribute__((aligned(4, 8)));  // expect: error unbalanced_attribute_argument
int a9 __attribute__((aligned()));  // expect: error invalid_empty_attribute_arg_list
int a10 __attribute__((section));  // expect: error missing_attribute_arguments
int a11 __attribute__((section(data)));  // expect: error exp_string_literal
int a12 __attribute__((section("a" "b")));
int a13 __attribute__((section(L"wide")));  // expect: error exp_string_literal
int a14 __attribute__((nocommon(1)));  // expect: error arguments_provided_for_attribute
int a15 __attribute__((packed));  // expect: warning wrong_entity_for_attribute
int a16 __attribute__((const, noreturn));
int a17 __attribute__((alias("a15")));
int a18 __attribute__((no_such_thing(1, (2), "x")));  // expect: warning unrecognized_attribute
int a19 __attribute__((unused, , deprecated("text")));
