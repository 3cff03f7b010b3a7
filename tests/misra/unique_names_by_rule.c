// options: --check_misra=5.3,5.7
// proves: where a rule is off, the next one that is broken speaks
typedef int INT32;
typedef unsigned COUNT;
INT32 level;
void hide_typedef(void) { INT32 COUNT = 1; COUNT++; }  // expect: warning misra_c_2004_5_3
INT32 hide_object(INT32 level) { return level; }       // expect: warning misra_c_2004_5_7
struct level { INT32 x; };                             // expect: warning misra_c_2004_5_7
