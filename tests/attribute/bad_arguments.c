// options: -n
// proves: unknown attributes and wrong arguments; the declaration stands without them
int a __attribute__((no_such_thing(1, "x", (2))));  // expect: warning unrecognized_attribute
int b __attribute__((aligned(3)));  // expect: error bad_attribute_alignment
int c __attribute__((unused(1)));   // expect: error arguments_provided_for_attribute
int d __attribute__((section));     // expect: error missing_attribute_arguments
int e __attribute__((section()));   // expect: error invalid_empty_attribute_arg_list
int f __attribute__((section(1)));  // expect: error exp_string_literal
int g __attribute__((visibility("no")));  // expect: error unrecognized_visibility
int h __attribute__((__));          // expect: warning unrecognized_attribute
int i __attribute__((,, unused ,));
int j __attribute__(());
void k(int) __attribute__((nonnull(1)));  // expect: error nonnull_on_nonpointer
void l(int *) __attribute__((nonnull(2)));  // expect: error nonnull_parameter_number_too_large
void *m(int) __attribute__((alloc_size(2)));  // expect: error invalid_argument_to_attribute
int n __attribute__((tls_model("x")));  // expect: error bad_tls_model_attr_arg
void o(const char *, ...) __attribute__((format(nothing, 1, 2)));  // expect: warning invalid_argument_to_attribute
int p __attribute__((unused);       // expect: error exp_rparen
int use(void) { return a + b + c; }
