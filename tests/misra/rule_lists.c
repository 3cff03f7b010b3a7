/* options: --check_misra=2-4,19.5-7,20.1 --check_misra=-3-4,19.-6,advisory --check_misra=all --check_misra=none */
/* options: "--check_misra=7, 2.2-9" --check_misra=-none --check_misra=-required --check_misra=20.1,5--6 */
/* proves: lists apply one after the other, each entry to a section, sections, a rule or rules, negated or not */
int octal = 010;
#define TWICE(a) (2 * (a)) /* expect: warning misra_c_2004_19_7 */
#define BUFSIZ (1)         /* expect: warning misra_c_2004_20_1 */
#undef BUFSIZ              /* expect: warning misra_c_2004_20_1 */
// no message
#pragma CHECK_MISRA("2.2 - 9, 7")
int octal_again = 010;         // expect: warning misra_c_2004_7_1 expect: warning misra_c_2004_2_2
