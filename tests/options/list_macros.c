// options: --list_macros -Done -Dtwo=2
// proves: all definitions, the 212 of the target among them; dates and built-in macros are left out
#define three(a, b) a ## b
#undef one
