/* options: --strict --check_misra=all,-20.4,-6 --misra_advisory=error --misra_required=suppress --misra_required=bad */
/* proves: a severity reaches the rules of its class that are on; suppressing them turns them off */
#define TWICE(a) (2 * (a)) /* expect: error misra_c_2004_19_7 */
extern void *malloc(unsigned);
#undef TWICE
#pragma diag_suppress 1428
#define THRICE(a) (3 * (a))
#pragma diag_default misra_c_2004_19_7
#define FOURFOLD(a) (4 * (a)) /* expect: error misra_c_2004_19_7 */
