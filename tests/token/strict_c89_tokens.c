/* options: --strict --no_gcc
// options: --strict --no_gcc
// proves: tokens of later languages are reported in strict C89, line comments once
*/
long a = 1ll; // expect: error nonstd_long_long // expect: error illegal_end_of_line_comment
int b; // not again
