/* options: --check_misra=all,-2.3,-1.1,-6.3,-8 */
/* proves: where rule 2.3 is closed the ordinary warning comes */
extern char a; /* here /* is expect: warning nested_comment */
