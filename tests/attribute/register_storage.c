// options: -n
// proves: what stays over a reset cannot be in a register
int f(void)
{
  register int m __attribute__((noinit)) = 1;  // expect: warning attr_disallows_register_storage
  return m;
}
