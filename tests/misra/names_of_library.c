/* options: --check_misra=20.2,20.4-12 --gcc */
/* proves: names of the standard library are found where they are used and where they are declared anew */
struct member { int remove; int time; };
int f(struct member *p) { goto exit; exit: return p->time + p->remove; }
typedef int time_of_day;
extern int *location_of_errno(void);
#define errno (*location_of_errno())
#define va_arg_of(x) (x)
#define EOF (-1)
#define offsetof(type, member) ((unsigned)&((type *)0)->member)
#define putc(c, stream) (fputs(c))
extern void *malloc(unsigned); /* expect: warning misra_c_2004_20_2 expect: warning misra_c_2004_20_4 */
int free(int exp) /* expect: warning misra_c_2004_20_2 expect: warning misra_c_2004_20_4
  expect-1: warning misra_c_2004_20_2 */
{
  return exp; }
typedef long time_t; /* expect: warning misra_c_2004_20_2 expect: warning misra_c_2004_20_12 */
extern struct tm *now; /* expect: warning misra_c_2004_20_12 */
enum { EDOM };       /* expect: warning misra_c_2004_20_2 */
int g(void)
{
  time_t clock = 0;     /* expect: warning misra_c_2004_20_12 expect: warning misra_c_2004_20_2 */
  void *p = malloc(1u); /* expect: warning misra_c_2004_20_4 */
  clock += errno;       /* expect: warning misra_c_2004_20_5 */
  clock += offsetof(struct member, time); /* expect: warning misra_c_2004_20_6 */
  clock += setjmp(p);   /* expect: warning misra_c_2004_20_7 */
  raise(1);             /* expect: warning misra_c_2004_20_8 */
  putc("a", p);         /* expect: warning misra_c_2004_20_9 */
  clock += EOF;         /* expect: warning misra_c_2004_20_9 */
  clock += atoi("1");   /* expect: warning misra_c_2004_20_10 */
  abort();              /* expect: warning misra_c_2004_20_11 */
  return abs((int)clock) + (now != 0);
}
