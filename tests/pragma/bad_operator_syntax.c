// options: -n
// proves: after a faulty operator the text around it is read as if it weren't there
int a _Pragma("DATA_SECTION(a, \".d\")" 1);       // expect: error exp_rparen
int b _Pragma(string (1) 2);                      // expect: error exp_string_literal
int c _Pragma = 1;                                // expect: error exp_lparen
int d _Pragma("unheard of");                      // expect: warning unrecognized_pragma
int e _Pragma("_Pragma(\"once\")");               // expect: warning unrecognized_pragma
int f _Pragma();                                  // expect: error exp_string_literal
int g(void) { return a + b + c + d + e + f; }
int h _Pragma(                                    // expect+1: error exp_string_literal
;
