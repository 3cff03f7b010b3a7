// options: --gcc --gnu_version=40300
// proves: edges of folding: saturation, powers, NaN, bit counts, wrap-around
int i1 = (int)1e20;  // expect: warning float_to_integer_conversion
int i2 = (int)-1e20;  // expect: warning float_to_integer_conversion
unsigned u1 = (unsigned)-1.0;  // expect: warning float_to_integer_conversion
int i3 = (char)300;
double p1 = __builtin_pow(2.0, 255.0);
int p2[__builtin_constant_p(__builtin_pow(2.0, 255.0)) ? 1 : -1];
double p3 = __builtin_pow(2.0, 256.0);  // expect: error bad_constant_function_call
double p4 = __builtin_pow(2.0, 0.5);  // expect: error bad_constant_function_call
int n1[__builtin_nan("") == __builtin_nan("") ? -1 : 1];
int n2[__builtin_nan("") != 0.0 ? 1 : -1];
int n3[__builtin_nan("") < 1.0 ? -1 : 1];
int n4[__builtin_inf() > 1e308 ? 1 : -1];
int b1[__builtin_popcount(-1) == 32 ? 1 : -1];  // expect: warning integer_sign_change
int b2 = __builtin_ctz(0);  // expect: error bad_constant_function_call
int b3[__builtin_ffs(8) == 4 ? 1 : -1];
int b4[__builtin_parity(3) == 0 ? 1 : -1];
int b5[__builtin_clzll(1) == 63 ? 1 : -1];
int b6[__builtin_abs(-5) == 5 ? 1 : -1];
int w1[-1 >> 1 == -1 ? 1 : -1];
int w2[(-5) / 2 == -2 && (-5) % 2 == -1 ? 1 : -1];
int w3[-0u == 0 ? 1 : -1];
int w4 = -2147483647 - 2;  // expect: warning integer_overflow
unsigned w5 = -4294967295u;
int w6 = -(-2147483647 - 1);  // expect: warning integer_overflow
int w7 = (-2147483647 - 1) / -1;  // expect: warning integer_overflow
int w8 = 65536 * 65536;  // expect: warning integer_overflow
unsigned w9 = 65536u * 65536u;
int w10[(0x7fffffff << 1) == -2 ? 1 : -1];
int w11[(unsigned char)-1 == 255 ? 1 : -1];
int w12[(1 ? -1 : 0u) > 0 ? 1 : -1];
int w13[1.0 / 3 * 3 == 1.0 ? 1 : -1];
float f1 = 3.4e38f * 10;  // expect: error bad_float_operation_result
double d1 = 1.0 / 0.0;
double d2 = 1 / 0.0f;
int f2 = 1e10f;  // expect: error float_to_integer_conversion
int l1[(1, 2) == 2 ? 1 : -1];  // expect: error bad_constant_operator
