/* options: --check_misra=19.5-6 */
/* proves: rule 19.5 begins behind a function's brace and ends in front of the closing one */
#define BEFORE (1)
struct tag {
#define IN_STRUCT (2)
  int member;
};
void f(int a
#define IN_PARAMETERS (3)
) {
#define INSIDE (4)                     /* expect: warning misra_c_2004_19_5 */
  a = INSIDE;
  {
    a = BEFORE;
#undef INSIDE                          /* expect: warning misra_c_2004_19_5 expect: warning misra_c_2004_19_6 */
  }
}
#define AFTER (5)
void g(void) {}
#undef AFTER                           /* expect: warning misra_c_2004_19_6 */
