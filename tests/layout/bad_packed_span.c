// options: -n --abi=eabi --long_precision_bits=32
struct wide {
  char c;
  long long b : 63 __attribute__((packed));
  char e : 3;
  long long d : 64 __attribute__((packed));  // expect: error attribute_does_not_apply
};
