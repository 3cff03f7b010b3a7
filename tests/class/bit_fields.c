// options: -n --remarks --abi=eabi
// proves: widths of bit-fields against their types
struct s {
  int one : 1;             // expect: remark signed_one_bit_field
  unsigned flag : 1, : 0, whole : 32;
  int named : 0;           // expect: error zero_length_bit_field_must_be_unnamed
  int negative : -1;       // expect: error bad_bit_field_size
  float f : 2;             // expect: error bad_bit_field_type
  int *p : 2;              // expect: error bad_bit_field_type
  int wide : 33;           // expect: warning extra_bits_ignored
  _Bool b : 1;
  long long ll : 40;
  enum { red = 3, green = 4 } colour : 2;  // expect: warning enum_bit_field_too_small
  int n : 1.5;             // expect: error expr_not_integral_constant
};
int size = sizeof(((struct s *)0)->one);  // expect: error sizeof_bit_field
