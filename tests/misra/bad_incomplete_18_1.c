// options: --check_misra=18.1
// proves: the value of an incomplete type is an error under the rule's number
struct opaque;                        // expect: warning misra_c_2004_18_1
extern struct opaque object;
int f(void) { return object ? 1 : 0; }             // expect: error misra_c_2004_18_1
