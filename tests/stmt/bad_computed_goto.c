// options: -n
void f(void *where)
{
  goto *where;  // expect: error not_supported
}
