// options: -n --wchar_t_bits=32
// proves: specifiers in any order name one type; each size is the target's
typedef char check_1[sizeof(short int) == 2 && sizeof(int short) == 2 ? 1 : -1];
typedef char check_2[sizeof(unsigned) == 4 && sizeof(long long int) == 8 ? 1 : -1];
typedef char check_3[sizeof(int long unsigned long) == 8 ? 1 : -1];
typedef char check_4[sizeof(__int40_t) == sizeof(unsigned __int40_t) ? 1 : -1];
typedef char check_5[(signed char)-1 < 0 && (unsigned char)-1 > 0 ? 1 : -1];
typedef char check_6[sizeof(long double) >= sizeof(double) ? 1 : -1];
typedef char check_7[sizeof(_Complex float) == 2 * sizeof(float) ? 1 : -1];
typedef char check_8[sizeof(_Complex) == 2 * sizeof(double) ? 1 : -1];
extern const volatile int *const restrict_free;
int unsigned static long counter;
unsigned long *use(void) { return &counter; }
