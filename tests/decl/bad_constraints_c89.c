/* options: -n --strict */
/* proves: what strict C89 alone refuses: qualified bounds, doubled qualifiers of arrays, early enumerations, arrays that are no lvalues */
struct s { char c[3]; } x, y;
struct s make(void);
typedef const int row[3];
const row twice;  /* expect: error dupl_type_qualifier */
void f(int a[const], int b[volatile 2]);  /* expect: error type_qualifier_not_allowed, expect: error type_qualifier_not_allowed */
enum early *p;  /* expect: error nonstd_forward_decl_enum */
void g(void)
{
  char *t = make().c;  /* expect: error bad_rvalue_array, expect: warning set_but_not_used */
  t = (x = y).c;  /* expect: error bad_rvalue_array */
  t = (1, x).c;  /* expect: warning expr_has_no_effect, expect: error bad_rvalue_array */
  t = x.c;
  f((x, y).c, 0);  /* expect: warning expr_has_no_effect, expect: error bad_rvalue_array */
}
char *h(void) { return make().c; }  /* expect: error bad_rvalue_array */
int size = sizeof(make().c);
