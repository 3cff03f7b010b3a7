/* options: --check_misra=4 --trigraphs */
/* proves: rule 4.1 knows the escapes of C90 alone, and leaves octal ones to rule 7.1; 4.2 bans trigraphs */
char simple[] = "\a\b\f\n\r\t\v\'\"\?\\\0\101";
char single[] = {'\n', '\'', '\0', '\7'};
char hex[] = "\x41";                      /* expect: warning misra_c_2004_4_1 */
char unknown = '\q';                      /* expect: warning misra_c_2004_4_1 */
char gnu[] = "\e\E";      /* expect: warning misra_c_2004_4_1 expect: warning misra_c_2004_4_1 */
char universal[] = "\u00c4";              /* expect: warning misra_c_2004_4_1 */
#define IN_MACRO "\x42"                   /* expect: warning misra_c_2004_4_1 */
char once[] = IN_MACRO IN_MACRO;
int subscripted??(3??) = {0};               /* expect: warning misra_c_2004_4_2 expect: warning misra_c_2004_4_2 */
char questions[] = "??a ?? (";
