// options: -P
// proves: the last line counts without its newline
int a;
int last