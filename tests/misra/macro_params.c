/* options: --check_misra=19.7-10,19.12-13 */
/* proves: parameters stand alone in parentheses or at an operator; there is at most one operator */
#define OBJECT (1)
#define HASH_OF_OBJECT #
#define DOUBLE(a) (2 * (a))            /* expect: warning misra_c_2004_19_7 */
#define BARE(a) a                      /* expect: warning misra_c_2004_19_7 expect: warning misra_c_2004_19_10 */
#define FIRST(a) (a + 1)               /* expect: warning misra_c_2004_19_7 expect: warning misra_c_2004_19_10 */
#define LAST(a) (1 + a)                /* expect: warning misra_c_2004_19_7 expect: warning misra_c_2004_19_10 */
#define UNFINISHED(a) (a               /* expect: warning misra_c_2004_19_7 expect: warning misra_c_2004_19_10 */
#define STRING(a) (#a) /* expect: warning misra_c_2004_19_7 expect: warning misra_c_2004_19_13 */
#define PASTE(a, b) (a ## b) /* expect: warning misra_c_2004_19_7 expect: warning misra_c_2004_19_13 */
#define THREE(a, b) (a ## b ## 1) /* expect: warning misra_c_2004_19_7 expect: warning misra_c_2004_19_13
  expect-1: warning misra_c_2004_19_13 expect-1: warning misra_c_2004_19_12 */
int complete = DOUBLE((1 + 2)) + PASTE(1, 2);
int missing = PASTE(1);                /* expect: warning misra_c_2004_19_8 */
int with_directive = DOUBLE(
#if 1                                  /* expect: warning misra_c_2004_19_9 */
  1
#endif                                 /* expect: warning misra_c_2004_19_9 */
  );
#if 1
int behind = DOUBLE
  (1);
#endif
