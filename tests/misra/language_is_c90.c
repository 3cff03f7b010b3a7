/* options: --strict --check_misra=all */
/* proves: strict C90 keeps rule 1.1 */
typedef int INT32;
extern INT32 again;
