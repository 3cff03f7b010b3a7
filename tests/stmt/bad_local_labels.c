// options: -n
// proves: local labels are declared once in a block and defined in it (GNU)
void f(int n)
{
  __label__ a, b, a;    // expect: error id_already_declared
  __label__ never;    
  a: ;
  if (n) goto a;
  {
    __label__ a, c;     // expect: error never_defined
    if (n) goto c;
    a: if (n > 3) goto a;
  }
  b: if (n > 2) goto b;
}
int g(int n)
{
  int m = ({ __label__ out; if (n) goto out; out: n + 1; });
  goto out;  // expect: error never_defined
  return m;  // expect: warning code_is_unreachable
}
