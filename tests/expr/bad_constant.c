// options: --no_gcc --remarks
// proves: what an integral constant expression and a static initializer may not hold outside the GNU modes
int v; const int cv = 5; int f(void); int arr[3]; struct S { int a; int b[4]; } s; enum E { A = 3 };
int a1[1.5];  // expect: error expr_not_integral_constant
int a2[(int)1.5];
int a3[0 ? (int)1.5 : 2];
int a4[1 ? 2 : f()];  // expect: error expr_not_integral_constant
int a5[v];  // expect: error expr_not_constant
int a6[v = 1];  // expect: error bad_integral_operator
int a7[v++];  // expect: error bad_integral_operator
int a8[f()];  // expect: error expr_not_integral_constant
int a9[(1, 2)];  // expect: error bad_integral_operator
int a10[sizeof(v++)];
int a11[1 / 0];  // expect: error divide_by_zero
int a12[1 << 40];  // expect: error shift_count_too_large
int a13[-1];  // expect: error array_size_must_be_positive
int a14[cv];  // expect: error expr_not_constant
int a15[s.a];  // expect: error bad_integral_operator
int a16[*arr];  // expect: error bad_integral_operator
int a17[sizeof "abc"];
int a18["abc"[1]];  // expect: error expr_not_integral_constant
int a19[1.5 + 2 > 3];  // expect: error expr_not_integral_constant
int a20[A];
int a21[1 || v];
int a22[0 && (v = 1) || 2];  // expect: error bad_integral_operator
int a23[undeclared];  // expect: error undefined_identifier
int a24[1 ? 2 : 1 / 0];
int a25[2147483647 + 1];  // expect: warning integer_overflow expect: error array_size_must_be_positive
int a26[&v != 0];  // expect: error expr_not_constant
struct B { int x : 1.5; int y : v; int z : 2 + 1; };  // expect: error expr_not_integral_constant expect: error expr_not_constant
enum G { G1 = v, G2 = 1.5, G3 = f(), G4 = 1 << 3, G5 = (int)2.5 };  // expect: error expr_not_constant expect: error expr_not_integral_constant expect: error expr_not_integral_constant
void sw(int n)
{
  switch (n) {
  case v:  // expect: error expr_not_constant
  case 1.5:  // expect: error expr_not_integral_constant
  case f():  // expect: error expr_not_integral_constant
  case (int)5.5: ;
  }
}
int i1 = v;  // expect: error expr_not_constant
int i2 = cv;  // expect: error expr_not_constant
int i3 = f();  // expect: error bad_constant_function_call
int *i4 = &v;
int *i5 = arr + 5;  // expect: warning pointer_outside_base_object
int i6 = v = 1;  // expect: error bad_constant_operator
int i7 = (1, 2);  // expect: error bad_constant_operator
int i8 = s.a;  // expect: error expr_not_constant
int *i9 = &s.b[1];
int i10 = *arr;  // expect: error expr_not_constant
int i11 = 1 / 0;  // expect: error divide_by_zero
int i12 = v ? 1 : 2;  // expect: error expr_not_constant
int i13 = 1 ? 2 : v;
int i14 = !&v;
int i15 = &v && 1;
int i16 = "abc"[1];
int i17 = (int)&v * 2;  // expect: error expr_not_constant
short i18 = (short)(int)&v;  // expect: error expr_not_constant
int i19 = &arr[2] - &arr[0];
float i20 = 1e300;  // expect: error float_to_float_conversion
unsigned char i21 = 256;  // expect: warning integer_truncated
int i22 = 1e10;  // expect: error float_to_integer_conversion
int i23 = 5 % 0;  // expect: error mod_by_zero
