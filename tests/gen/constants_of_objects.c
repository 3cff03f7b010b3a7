// proves: constants of static objects: addresses with offsets, punned values, infinities, strings of odd characters
int printf(const char *, ...);
struct s { char c; int n[4]; struct { short a, b; } in[2]; };
struct s object = {1, {2, 3, 4, 5}, {{6, 7}, {8, 9}}}, list[3] = {[1] = {.n = {[2] = 7}, .in[1].b = 3}, {'c'}};
static int f(int n) { return n + 1; }
static int g(int n) { return n * 2; }
int *const p1 = &object.n[2], *p2 = object.n + 1, *p3 = (int *)&object + 1, *p4 = &list[1].n[4] - 2;
short *p5 = &object.in[1].b, *p6 = &list[2].in[0].a - 1;
char *t1 = "abc" + 1, *t2 = &"defg"[2], t3[] = "tab\there\0hidden\377\"\\\x01" "9", t4[2][4] = {"ab", "cdef"}, *t5[] = {"x", t3, t3 + 3, 0};
int (*calls[])(int) = {f, &g, *f}, (**second)(int) = calls + 1;
unsigned long a1 = (unsigned long)(char *)2;
void *v = &v, *w = (char *)&object + sizeof object, *z = (void *)0x1234;
long d = &list[2] - &list[0] + sizeof(list) / sizeof *list;
const double inf = __builtin_inf(), neg = -__builtin_inf(), nan = __builtin_nan(""), tiny = 4.9406564584124654e-324, big = 1.7976931348623157e308, third = 1.0 / 3, exact = 0x1.8p-3;
const float finf = __builtin_inff(), fthird = 1.0f / 3, fbig = 3.40282347e38f;
const long double ld = 1.5L, lhuge = 1e300L;
_Bool b[] = {1, 0, 5, 0.1, !0, !!&object};
unsigned char wide[] = {255, -1, 'a', '\xff'};
__typeof__(L' ') ws[] = L"w\x1234z";
union u { int i; float f; char c[4]; } u1 = {.f = 1}, u2 = {0x41424344}, us[2] = {{1}, {.c = "zz"}};
enum e { e1 = -5, e2 = 1 << 20 } es[] = {e2, e1, e1 + 1};
struct bits { unsigned a : 3; int b : 4; int : 5; long long c : 20; _Bool d : 1; } bits = {7, -8, 0x7ffff, 1}, more[2] = {{1}, {.d = 1, .b = 3}};
int main(void)
{
  unsigned i, sum = 0;
  for (i = 0; i < sizeof t3; i++) sum = sum * 31 + (unsigned char)t3[i];
  printf("%d %d %d %d %d %d %d %d\n", *p1, *p2, *p3, *p4, *p5, p6[1], list[2].c, list[1].in[1].b);
  printf("%s %s %u %.2s%.4s %s %s %d\n", t1, t2, sum, t4[0], t4[1], t5[0], t5[2], t5[3] == 0);
  printf("%d %d %d %d %lu %d %d %d %ld\n", calls[0](4), calls[1](4), calls[2](1), second[0](7), a1, v == &v, w == &object + 1, z == (void *)4660, d);
  printf("%g %g %d %g %.17g %.17g %g %g %.9g %.9g %Lg %Lg\n", inf, neg, nan != nan, tiny, big, third, exact, finf, fthird, fbig, ld, lhuge);
  for (i = 0; i < 6; i++) printf("%d", b[i]);
  printf(" %d %d %d %d %d %d\n", wide[0], wide[1], wide[3], (int)ws[1], (int)sizeof ws / (int)sizeof *ws, u1.i);
  printf("%x %d %s %d %d %d\n", u2.i, us[0].i, us[1].c, es[0], es[1], es[2]);
  printf("%d %d %d %d %d %d %d\n", bits.a, bits.b, (int)bits.c, bits.d, more[0].a, more[1].b, more[1].d);
  return 0;
}
