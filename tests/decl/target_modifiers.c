// options: -n
// proves: words of the target stand among the specifiers of objects and functions only
__near int a;
__far int b;
interrupt void isr(void);
cregister extern int c;
register int g;
void f(__near int p);      // expect: warning bad_param_storage_class
int size = sizeof(__far int);  // expect: error exp_primary_expr
