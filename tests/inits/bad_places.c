// options: -n
// proves: what has no initializer, and designators of two kinds
register int held asm("eax") = 3;  // expect: error register_mapped_variable_cannot_have_initializer
struct { struct { int a; } s; } x = { s: .a = 3 };  // expect: error no_ordinary_and_extended_designators
