// options: -n
int a = 1 @ 2;  // expect: error bad_token, expect: error exp_semicolon
int b = 1 ` 2;  // expect: error bad_token, expect: error exp_semicolon
