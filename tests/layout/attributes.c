// options: -n --abi=eabi --small_container_bitfield_layout
// proves: packed and aligned on members, classes and types change the layout
struct a { char c; int i; } __attribute__((packed));
struct b { char c; int i __attribute__((packed)); short s; };
struct __attribute__((aligned(16))) c { char c; };
struct d { char c; int i __attribute__((aligned(8))); char e; };
typedef int aligned_int __attribute__((aligned(8)));
struct e { char c; aligned_int i; };
typedef int loose_int __attribute__((aligned(1)));
struct f { char c; loose_int i; };
#define AT(type, member) __builtin_offsetof(struct type, member)
typedef char check_1[sizeof(struct a) == 5 && AT(a, i) == 1 ? 1 : -1];
typedef char check_2[sizeof(struct b) == 8 && AT(b, i) == 1 && AT(b, s) == 6 ? 1 : -1];
typedef char check_3[sizeof(struct c) == 16 && __alignof__(struct c) == 16 ? 1 : -1];
typedef char check_4[sizeof(struct d) == 16 && AT(d, i) == 8 && AT(d, e) == 12 ? 1 : -1];
typedef char check_5[AT(e, i) == 8 && sizeof(struct e) == 16 ? 1 : -1];
typedef char check_6[AT(f, i) == 1 && sizeof(struct f) == 5 ? 1 : -1];
