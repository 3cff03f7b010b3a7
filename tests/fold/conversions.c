// options: --gcc
// proves: implicit conversions tell what is lost; casts are silent
unsigned char c1 = 300;             // expect: warning integer_truncated
signed char c2 = 200;               // expect: warning integer_sign_change
unsigned u1 = -1;                   // expect: warning integer_sign_change
unsigned char c3 = (unsigned char)300;
unsigned u2 = (unsigned)-1;
int i1 = 1e20;                      // expect: error float_to_integer_conversion
int i2 = (int)1e20;                 // expect: warning float_to_integer_conversion
float f1 = 1e39;                    // expect: error float_to_float_conversion
double d1 = 1e300 * 1e300;          // expect: error bad_float_operation_result
double d2 = 1 / 0.0, d3 = 0.0 / 0.0;
