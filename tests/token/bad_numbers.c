// options: --c99
// proves: numbers that are none, and those that don't fit
int a = 0x;                 // expect: error bad_hex_digit
int b = 089;                // expect: error bad_octal_digit
double c = 1e;              // expect: error bad_float_constant
double d = 0x1.8;           // expect: error bad_float_constant
double e = 1e999;           // expect: error bad_float_value
int f = 12abc;              // expect: error extra_chars_on_number
long g = 1i32;              // expect: error bad_suffix
int h = 3i;                 // expect: error complex_integral_type
int i = 0b;                 // expect: error bad_binary_digit
int j = 18446744073709551616;                 // expect: error integer_too_large
unsigned long long k = 9223372036854775808;   // expect: warning c99_constant_in_unsigned_long_long_range
float l = 0x1.0000001p0f;   // expect: warning inexact_fp_conversion
