// options: -n --gcc --report_gnu_extensions
// proves: what GNU C adds to the language is told on demand
int *__restrict__ p;  // expect: warning gnu_restrict_is_nonstandard
int none[0];  // expect: warning zero_length_array_is_gnu_extension
struct open { int size; int rest[]; };  // expect: warning flexible_array_is_nonstandard
extern int named asm("other");  // expect: warning asm_name_is_gnu_extension
void statement(void) { asm volatile("nop"); }  // expect: warning volatile_asm_is_gnu_extension
