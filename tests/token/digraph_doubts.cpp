// proves: "<::" in C++ is probably meant as "<" and "::"
// expect+1: warning probable_inadvertent_lbracket_digraph
int a<::b; // expect: error exp_primary_expr // expect: error exp_rbracket
