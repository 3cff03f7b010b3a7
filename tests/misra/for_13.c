// options: --c99 --check_misra=13.4,13.5
// proves: what a for statement's header is about
struct s { int i; struct s *next; };
extern struct s *first(void);
extern void advance(int *i);
extern int ready(void);
void f(int n, float limit, struct s *list)
{
  int i, j;

  for (i = 0; i < n; i++) { }
  for (i = 0; n > i; i += 2) { }
  for (; i < n; i++) { }
  for (int k = 0; k < n; ++k) { }
  for (;;) { break; }
  for (struct s *p = list; p; p = p->next) { }
  for (list->i = 0; list->i < n; list->i++) { }
  for (i = 0; i < n; advance(&i)) { }
  for (i = 0, j = n; i < j; i++, j--) { }
  for (i = 0; i < n; n--) { }       // expect: warning misra_c_2004_13_5
  for (i = 0; j < n; i++) { j++; }  // expect: warning misra_c_2004_13_5
  for (j = 0; i < n; i++) { }       // expect: warning misra_c_2004_13_5
  for (i = 0; i < n;) { i++; }      // expect: warning misra_c_2004_13_5
  for (i = 0;; i++) { break; }      // expect: warning misra_c_2004_13_5
  for (i = 0; ready(); i++) { }     // expect: warning misra_c_2004_13_5
  for (i = 0; i < n; j = i) { i++; } // expect: warning misra_c_2004_13_5
}
