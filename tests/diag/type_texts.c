// options: -n --c99 --no_wrap_diagnostics
// proves: types, entities and places as messages spell them
struct tag { int n; } s;
union { int n; } u;
enum color { red } e;
typedef struct { int n; } named;
typedef int (*handler)(const char *, ...);
named n;
handler h;
int (*(*table[3])(int, char))[4];
const volatile char *const *restrict cv;
int open_array[], bits;
_Complex float cf;
void old();
void none(void);
double (*pick(int which))(float, struct tag *);
unsigned long long wide(unsigned char, signed char, _Bool, long double, __int40_t);
struct field { handler member; int inner[2][3]; int flags : 3; } f;
void g(int rows, int m[rows][rows], int (*block)[rows], int fixed[static 4])
{
  s = u; s = n; s = e; s = h; s = table; s = cv; s = open_array; s = cf; s = old; s = none; s = pick; s = wide;
  s = f; s = f.inner; s = m; s = block; s = fixed; s = &f; s = "text"; s = L"wide"; s = 1.5f; s = 'c'; s = 1ULL; s = (short)1;
  s = &table; s = *table; s = &pick; s = pick(1); s = &cf; s = (void *)0; s = &s.n; s = (struct tag *const)0; s = (int (*)[])0;
  { struct tag { char c; } s2; s = s2; struct { int n; } s3; s = s3; enum { local } e2; e2 = s; named *named; s = named; }
  undeclared = s.missing + f.member.x;
  label: goto nowhere;
  red = 1; none = old; s(1); f.inner = 0;
}
