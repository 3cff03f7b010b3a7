/* options: --check_misra=all,-19.8,-1.1,-6.3,-8.5,-19.7 */
/* proves: where a rule is closed, the ordinary messages come that its message stands in for */
#define PASTE(a, b) ((a) + (b))
extern int x[PASTE(1)]; /* expect: error too_few_macro_args expect: error exp_primary_expr */
