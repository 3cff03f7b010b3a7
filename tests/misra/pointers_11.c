// options: --check_misra=11
// proves: conversions of pointers, told from casts that change nothing and from null pointer constants
typedef int (*int_function)(int);
typedef void (*void_function)(void);
struct incomplete;
extern int_function fp;
extern void_function fpv;
extern int twice(int n);
extern void *vp;
extern int *ip;
extern int row[3];
extern long *lp;
extern char *cp;
extern unsigned address;
extern const int *cip;
extern volatile int *vip;
extern struct incomplete *incomplete;
extern char **cpp;
extern const char *const *ccpp;

void functions(void)
{
  fp = twice;
  fp = (int_function)twice;
  fpv = (void_function)fp;              // expect: warning misra_c_2004_11_1
  vp = (void *)fp;                      // expect: warning misra_c_2004_11_1 expect: warning misra_c_2004_11_2
  fp = (int_function)vp;                // expect: warning misra_c_2004_11_1 expect: warning misra_c_2004_11_2
  ip = (int *)fp;                       // expect: warning misra_c_2004_11_1 expect: warning misra_c_2004_11_2
  address = (unsigned)fp;               // expect: warning misra_c_2004_11_3
  fp = (int_function)address;           // expect: warning misra_c_2004_11_3
  fp = (int_function)0;
  fp = 0;
  (void)fp;
}

void objects(void)
{
  address = (unsigned)ip;               // expect: warning misra_c_2004_11_3
  ip = (int *)address;                  // expect: warning misra_c_2004_11_3
  ip = (int *)0x4000;                   // expect: warning misra_c_2004_11_3
  ip = (int *)0;
  ip = (void *)0;
  lp = (long *)ip;                      // expect: warning misra_c_2004_11_4
  lp = (long *)row;                     // expect: warning misra_c_2004_11_4
  ip = (int *)vp;
  vp = (void *)ip;
  vp = ip;
  ip = (int *)ip;
  incomplete = (struct incomplete *)ip; // expect: warning misra_c_2004_11_4
  cp = (char *)"text";
  (void)ip;
}

void qualifiers(void)
{
  ip = (int *)cip;                      // expect: warning misra_c_2004_11_5
  ip = (int *)vip;                      // expect: warning misra_c_2004_11_5
  vp = (void *)cip;                     // expect: warning misra_c_2004_11_5
  cip = (const int *)ip;
  cip = ip;
  cpp = (char **)ccpp;                  // expect: warning misra_c_2004_11_5
  ccpp = (const char *const *)cpp;
  address = (unsigned)cip;              // expect: warning misra_c_2004_11_3
}
