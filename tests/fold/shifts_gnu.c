// options: --gcc
// proves: in the GNU modes a too large count is warned of and has a value
enum { a = 1 << 40 };               // expect: warning shift_count_too_large
int zero = a;
