/* options: --check_misra=2 */
/* proves: a comment of the rest of the line breaks rule 2.2, the opening of a comment inside of one rule 2.3 */
/* near: // is no comment in here, and neither is a slash /
   before a line that begins with a star */
char text[] = "// /* neither in a string */ ";
int divided = 4 / 2 /* one */ /* two */;
int a; // expect: warning misra_c_2004_2_2
int b; /* expect: warning misra_c_2004_2_3, at the second /* here */
// expect: warning misra_c_2004_2_2  // expect: warning misra_c_2004_2_3  as /* stands in it
#define BODY (1) // expect: warning misra_c_2004_2_2
#if 0
int skipped; // expect: warning misra_c_2004_2_2
#endif
int used = BODY + BODY;
