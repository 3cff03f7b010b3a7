/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
cplusplus_forms.cpp (from line number 1, sequence numbers 1-32)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
#pragma CODE_SECTION(_Z1fi, ".code_1")
#pragma FUNC_IS_PURE(_Z1fi)
#pragma FUNC_CANNOT_INLINE(_Z1fi)
#pragma FUNC_EXT_CALLED(_Z1fi)
int _Z1fi(int) __attribute__((__section__(".code_1")));
#pragma INTERRUPT(_Z7handlerv, fiq)
void _Z7handlerv(void);
#pragma FUNC_INTERRUPT_THRESHOLD(_Z1gv, -1)
#pragma FUNCTION_OPTIONS(_Z1gv, "-o")
int _Z1gv(void);

int _Z4callv(void);
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
 __attribute__((__section__(".code_1"))) int _Z1fi(int __12_11_n)
{

  { auto int __15_12_i; __15_12_i = 0;
#pragma MUST_ITERATE(1, 2)
    for (; (__15_12_i < __12_11_n); __15_12_i++) __12_11_n--; }
  return __12_11_n;
}



void _Z7handlerv(void) { }
int _Z4callv(void) { return _Z1gv(); }
