// options: -n
// proves: a last line without an end is warned of
int n;  // expect: warning last_line_incomplete