// options: -n
// proves: a backslash that no line follows is a warning in GNU C
// expect+1: warning last_line_backslash
int n; \
