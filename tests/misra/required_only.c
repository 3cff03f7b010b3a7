/* options: --check_misra=required */
/* proves: advisory rules stay closed where the required ones are opened */
#define TWICE(a) (2 * (a))
extern short basic; /* expect: warning misra_c_2004_1_1 */
#define THRICE(a) (3 * a) /* expect: warning misra_c_2004_19_10 */
