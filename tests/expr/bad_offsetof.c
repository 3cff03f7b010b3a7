// proves: designators of offsetof: what has no offset, and offsets that no size can be
struct s { int x; long long a[4]; struct { char c; short d[2][3]; } in; unsigned bits : 3; };
union u { struct s s; int n; };
int n;
unsigned ok1 = __builtin_offsetof(struct s, a[3]) + __builtin_offsetof(union u, s.in.d[1][2]);
int size1[__builtin_offsetof(struct s, a[3]) == 32 ? 1 : -1];
int size2[__builtin_offsetof(union u, s.in.d[1][2]) == 52 ? 1 : -1];
int size3[__builtin_offsetof(struct s, a[4]) == 40 ? 1 : -1];
unsigned e1 = __builtin_offsetof(struct s, bits);           // expect: error offsetof_bit_field
unsigned e2 = __builtin_offsetof(struct s, none);           // expect: error not_a_field
unsigned e3 = __builtin_offsetof(int, x);                   // expect: error expr_not_class
unsigned e4 = __builtin_offsetof(struct s, a[n]);           // expect: error nonconstant_offsetof
unsigned e5 = __builtin_offsetof(struct s, 3);              // expect: error exp_identifier
unsigned e6 = __builtin_offsetof(struct s, a[0x7fffffffffffffffLL]);  // expect: error integer_overflow_internal, expect: warning subscript_out_of_range
unsigned e7 = __builtin_offsetof(struct s, a[0x60000000]);  // expect: error integer_overflow_internal, expect: warning subscript_out_of_range
unsigned f(int i) { return __builtin_offsetof(struct s, a[i]); }
