// options: -n --c99 --strict
// proves: a definition names its parameters (C99 6.9.1p5)
int a(int) { return 0; }   // expect: error all_proto_params_must_be_named
int b(void) { return 1; }
