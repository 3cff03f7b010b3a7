// options: -n --c99
main() { }  // expect: warning implicit_int_on_main
