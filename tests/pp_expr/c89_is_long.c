/* options: --strict --c --long_precision_bits=32 */
/* proves: in strict C89 the arithmetic is that of long */
#if 2147483647 + 1 > 0  /* expect: error integer_overflow */
#error wrapped
#endif
#if 4294967295u + 1u != 0
#error unsigned long has 32 bits
#endif
int done;
