// options: -n
// proves: a computed goto wants an address; no back end takes it
void f(void *where, int n)
{
  if (n) goto *where;  // expect: error not_supported
  goto *n;  // expect: error assigned_goto_requires_void_ptr, expect: error not_supported
}
