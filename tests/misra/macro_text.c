/* options: --check_misra=19.4 */
/* proves: what a macro may stand for */
#define NOTHING
#define CONSTANT 42u
#define TEXT "text"
#define BRACED {1, 2, {3}}
#define PARENTHESES ((1) + -f(2)[3])
#define QUALIFIER volatile
#define STORAGE static
#define STATEMENT do { f(1); g(); } while (0)
#define CALL(x) (f((x)))
#define NEGATIVE -1                       /* expect: warning misra_c_2004_19_4 */
#define NAME other                        /* expect: warning misra_c_2004_19_4 */
#define SUM (1) + (2)                     /* expect: warning misra_c_2004_19_4 */
#define TYPE unsigned int                 /* expect: warning misra_c_2004_19_4 */
#define BLOCK { f(1); }                   /* expect: warning misra_c_2004_19_4 */
#define SEMICOLON do { f(1); } while (0); /* expect: warning misra_c_2004_19_4 */
#define FOREVER do { f(1); } while (1)    /* expect: warning misra_c_2004_19_4 */
#define OPEN (1                           /* expect: warning misra_c_2004_19_4 */
#define TWO_LINES f(1), \
                  f(2)                    /* expect-1: warning misra_c_2004_19_4 */
