/* options: --c99 --check_misra=all */
/* proves: code that is not translated as C90 breaks rule 1.1 once */
typedef int INT32; /* expect: warning misra_c_2004_1_1 */
extern INT32 again;
