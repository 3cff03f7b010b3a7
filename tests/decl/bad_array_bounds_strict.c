// options: -n --c99 --strict
// proves: outside of GNU C an array has at least one element
int zero[0];               // expect: error array_size_must_be_positive
int one[1];
