// options: -n
// proves: compatible declarations of one name merge into the composite type (C99 6.2.7)
int tentative; int tentative;
extern int a[]; int a[3];
int f(); int f(int (*)(), double (*)[3]); int f(int (*)(char *), double (*)[]);
static int internal; extern int internal;
static int g(void); int g(void);
extern int later; int later = 4;
typedef char check_1[sizeof(a) == 3 * sizeof(int) ? 1 : -1];
int use(void) { double d[1][3]; internal = 1; return f(0, d) + g() + internal; }
static int g(void) { return 1; }
