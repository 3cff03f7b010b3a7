// options: -n --strict --c99
// proves: main is never inline
inline int main(void) { return 0; }  // expect: error inline_main
