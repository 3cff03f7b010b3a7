// options: -n --no_gcc
// proves: a backslash that no line follows is an error without GNU C
// expect+1: error last_line_backslash
int n; \
