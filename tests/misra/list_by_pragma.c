/* options: --strict --check_misra=none */
/* proves: a pragma opens rules from its line on, and the reset of it brings the command line's state back */
int before = 010;
#pragma CHECK_MISRA("7.1, 19.7")
int behind = 010;       /* expect: warning misra_c_2004_7_1 */
#define TWICE(a) (2 * (a)) /* expect: warning misra_c_2004_19_7 */
#pragma CHECK_MISRA("-7.1")
int without = 010;
#pragma CHECK_MISRA("required")
int required = 010;     /* expect: warning misra_c_2004_7_1 */
#pragma RESET_MISRA("all")
int reset = 010;
#define THRICE(a) (3 * (a))
