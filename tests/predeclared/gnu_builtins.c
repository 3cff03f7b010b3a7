// proves: the built-in functions have the prototypes of their library counterparts
extern int printf(const char *, ...);
int main(void)
{
  char text[16];
  __builtin_memset(text, 'a', 9);
  __builtin_strcpy(text + 9, "xyz");
  memcpy(text, "__", 2);
  printf("%s %u\n", text, (unsigned)__builtin_strlen(text));
  printf("%x %d %d %d\n", __builtin_bswap32(0x01020304), __builtin_popcount(7), __builtin_ffs(8),
         __builtin_clz(1u));
  printf("%.2f %.2f %d\n", __builtin_fabs(-2.5), (double)__builtin_sqrtf(16.0f), __builtin_abs(-3));
  if (__builtin_expect(text[0] == '_', 1)) printf("%d\n", abs(-4));
  return 0;
}
