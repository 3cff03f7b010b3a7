/* options: --check_misra=7 */
/* proves: octal constants and escapes are reported where they are written, once; 0 is no octal constant */
int zero[] = {0, 0u, 0L, 00 /* expect: warning misra_c_2004_7_1 */};
int other[] = {10, 0x10, 100};
double floating[] = {010.5, 01e1, 09.0};
int octal = 010u;               /* expect: warning misra_c_2004_7_1 */
char escapes[] = "\0 \08";
char octal_escape = '\007';     /* expect: warning misra_c_2004_7_1 */
char two_digits[] = "\00";      /* expect: warning misra_c_2004_7_1 */
#define MODE 0644               /* expect: warning misra_c_2004_7_1 */
#define SAME(x) (x)
int used = MODE + SAME(MODE);
int argument = SAME(0755);      /* expect: warning misra_c_2004_7_1 */
#if 010 == 8                    /* expect: warning misra_c_2004_7_1 */
int condition;
#else
int skipped = 010;
#endif
