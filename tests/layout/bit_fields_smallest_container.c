// options: -n
// proves: without that option the smallest of the integer types holds a field
struct a { unsigned flag : 1; };
struct b { unsigned a : 9, b : 9; };
struct c { char c; int b : 4; };
struct d { int a : 3; int : 0; char b; };
typedef char check_1[sizeof(struct a) == 2 && __alignof__(struct a) == 2 ? 1 : -1];
typedef char check_2[sizeof(struct b) == 4 && sizeof(struct c) == 2 ? 1 : -1];
typedef char check_3[__builtin_offsetof(struct d, b) == 4 ? 1 : -1];
