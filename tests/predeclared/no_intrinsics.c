// options: --no_intrinsics
// proves: no intrinsic is predeclared, but the GNU built-ins remain
int (*add2)(int, int) = _add2; // expect: error undefined_identifier
unsigned swapped(unsigned x)
{
  return __builtin_bswap32(x);
}
