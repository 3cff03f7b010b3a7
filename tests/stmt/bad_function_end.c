// options: -n
int f(void) { return 1;  // expect: error exp_rbrace
