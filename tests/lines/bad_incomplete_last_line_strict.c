// options: -n --strict --c99
// proves: a last line without an end is an error in strict C
int n;  // expect: error last_line_incomplete