// options: -n --abi=eabi --small_container_bitfield_layout
// proves: with containers of the declared type a field never crosses one, and gives it alignment
struct a { char c; int b : 4; int d : 4; char e; };
struct b { int x : 20; int y : 20; };
struct c { int a : 3; int : 0; int b : 3; };
struct d { char c; long long l : 40; };
struct e { unsigned char u : 4; unsigned short v : 10; };
union f { int i : 5; char c; };
struct g { char c; int : 20; };
struct h { int a : 5; char b : 7; short c : 9; } __attribute__((packed));
typedef char check_1[sizeof(struct a) == 4 && __builtin_offsetof(struct a, e) == 2 ? 1 : -1];
typedef char check_2[sizeof(struct b) == 8 && sizeof(struct c) == 8 ? 1 : -1];
typedef char check_3[sizeof(struct d) == 8 && __alignof__(struct d) == 8 ? 1 : -1];
typedef char check_4[sizeof(struct e) == 2 && sizeof(union f) == 4 ? 1 : -1];
typedef char check_5[sizeof(struct g) == 4 && __alignof__(struct g) == 4 ? 1 : -1];
typedef char check_6[sizeof(struct h) == 3 ? 1 : -1];
