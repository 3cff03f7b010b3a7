// options: -n --no_gcc
// proves: without GNU C an alignment that reduces is an error
struct __attribute__((aligned(2))) reduced { int n; };  // expect: error invalid_alignment_reducing_attr
