// options: -n
// proves: values follow each other, the type holds them all, enumerators are ints where they fit
enum a { zero, five = 5, six, minus = -1, back };
typedef char check_1[six == 6 && back == 0 ? 1 : -1];
enum b { big = 0xffffffffU, bigger };
typedef char check_2[sizeof(enum b) == 8 && bigger == 0x100000000LL ? 1 : -1];
enum c { small };
typedef char check_3[sizeof(enum c) == 4 && (enum c)-1 > 0 && small - 1 < 0 ? 1 : -1];
enum d { self = sizeof(int), other = self * 2, };
typedef char check_4[other == 8 ? 1 : -1];
enum __attribute__((packed)) e { p = 200 };
typedef char check_5[sizeof(enum e) == 1 ? 1 : -1];
