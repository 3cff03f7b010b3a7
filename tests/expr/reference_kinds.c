// options: --remarks
// proves: how a name is used decides what is said: read before set, set but not used, address taken
int f(int); void g(int *); struct S { int a, b[3]; }; void gs(struct S);
void t(int p)
{
  int a; int b; int c; int d; int e[3]; struct S s; struct S s2; int h; int i; int j; int k; int l; int m; int n; int o; static int st; register int r; int q; int u, v, w; volatile int vol; int x1, x2, x3, x4, x5;  // expect: warning set_but_not_used expect: warning set_but_not_used expect: warning set_but_not_used
  f(a);  // expect: warning used_before_set
  b = 1;
  c = 1; f(c);
  g(&d); f(d);
  f(e[0]);
  e[1] = 2;
  f(s.a);  // expect: warning used_before_set
  s2.a = 1;
  h++;  // expect: warning used_before_set
  i += 2;  // expect: warning used_before_set
  j = j + 1;  // expect: warning used_before_set
  (void)k;  // expect: warning used_before_set
  f(sizeof l);
  m = n = 3;
  o;  // expect: warning expr_has_no_effect
  f(st);
  f(r);  // expect: warning used_before_set
  if (p) q = 1;
  f(q);
  while (p--) { f(u); u = 1; }
  for (;;) { if (p) break; v = 2; }
  f(v);
  w = p ? w : 0;  // expect: warning used_before_set
  f(vol);
  x1 = 0 ? x2 : 1; f(x1);  // expect: warning used_before_set
  f(p && x3);  // expect: warning used_before_set
  *(&x4) = 1;
  gs(s2);
  switch (p) { case 1: x5 = 1; case 2: f(x5); }
}
void only_set(int p) { int a = 1; int b; b = 2; int *q = &b; static int s; s = 3; int e[2]; e[0] = 1; struct S x; x.a = 1; p = 3; }  // expect: warning declared_but_not_referenced expect: warning declared_but_not_referenced expect: warning set_but_not_used expect: warning set_but_not_used
void uses(void) { int y = y; int z = f(z); int n = sizeof n; int *p = &n; int (*ff)(int) = f; f(*p), ff(1); }  // expect: warning used_before_set expect: warning used_before_set
void lp(int n) { int i, s; for (i = 0; i < n; i++) s += i; f(s); }
void gt(int n) { int a; if (n) goto lab; a = 1; lab: f(a); }
