/* options: --check_misra=20.1 -DNULL=0 -D_RESERVED */
/* proves: names of the library and other reserved ones aren't defined, undefined or defined anew */
#define _lower (1)
#define UPPER (1)
#undef UPPER
#ifdef EOF
#endif
#define _Capital (1)     /* expect: warning misra_c_2004_20_1_adv */
#define __double (1)     /* expect: warning misra_c_2004_20_1_adv */
#define BUFSIZ (1)       /* expect: warning misra_c_2004_20_1 */
#undef BUFSIZ            /* expect: warning misra_c_2004_20_1 */
#undef defined           /* expect: warning misra_c_2004_20_1 */
#define NULL (0)         /* expect: warning misra_c_2004_20_1 */
#define _lower (1)
#define _lower (2)       /* expect: warning misra_c_2004_20_1 */
