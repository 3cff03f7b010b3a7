/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
cplusplus_forms.cpp (from line number 1, sequence numbers 1-32)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
#pragma CODE_SECTION(f, ".code_1")
#pragma FUNC_IS_PURE(f)
#pragma FUNC_CANNOT_INLINE(f)
#pragma FUNC_EXT_CALLED(f)
int f(int) __attribute__((__section__(".code_1")));
#pragma INTERRUPT(handler, fiq)
void handler(void);
#pragma FUNC_INTERRUPT_THRESHOLD(g, -1)
#pragma FUNCTION_OPTIONS(g, "-o")
int g(void);

int call(void);
#pragma DATA_SECTION(x, ".data_1")
extern int x __attribute__((__section__(".data_1")));
#pragma DATA_ALIGN(y, 16)
#pragma RETAIN(y)
static int y __attribute__((__aligned__(16))) __attribute__((__used__));
#pragma NOINIT(quiet)
int quiet;


#pragma LOCATION(port, 256)
int port;
#pragma WEAK(weak)
int weak __attribute__((__weak__));
#pragma NEAR(near_word)
int near_word;
int x __attribute__((__section__(".data_1"))) = 3;
 __attribute__((__section__(".code_1"))) int f(int __12_11_n)
{

  { auto int __15_12_i; __15_12_i = 0;
#pragma MUST_ITERATE(1, 2)
  for (; (__15_12_i < __12_11_n); __15_12_i++) __12_11_n--;}
  return __12_11_n;
}



void handler(void) { }
int call(void) { return g(); }
