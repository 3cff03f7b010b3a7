// options: --check_misra=8.7
// proves: a static object of the file that one function alone uses is reported at the end of the unit
static int mine;             // expect: warning misra_c_2004_8_7
static int ours;
static int unused;           // expect: warning declared_but_not_referenced
static int table[2];         // expect: warning misra_c_2004_8_7
static int pointed_to;
static int *pointer = &pointed_to; // expect: warning misra_c_2004_8_7
int external;
static const int sizes[] = {1, 2};
static char buffer[sizeof sizes]; // expect: warning misra_c_2004_8_7
int first(void) { mine++; mine++; return ours + external; }
int second(void) { static int local; local++; return ours + table[0] + local; }
int third(void) { return pointed_to + *pointer; }
int fourth(void) { return sizes[0] + buffer[0]; }
int first_again(void) { return 0; }
