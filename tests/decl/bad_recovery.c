// options: -n
// proves: the parser goes on behind what is no declaration
}                          // expect: error exp_declaration
int a;
)  ;                       // expect: error exp_declaration
int b
int c;                     // expect: error exp_semicolon
int d[2;                   // expect: error exp_rbracket
int e(int;                 // expect: error exp_rparen
struct s { int m; } f
int g;                     // expect: error exp_semicolon
int after;
int use(void) { return a + b + after; }
