// proves: values of operators, conversions, literals, built-ins and compound assignments, against a direct build
#include <stdio.h>
struct bf { unsigned a:31; unsigned b:32; int c:5; unsigned long long d:33; long long e:40; unsigned char f:3; _Bool g:1; } x = { 1, 2, -3, 4, 5, 6, 1 };
struct ar { int v[4]; }; struct ar mk(int n) { struct ar r = {{n, n+1, n+2, n+3}}; return r; }
union uu { int i; float f; };
static int cnt; int side(void) { return ++cnt; }
#define P(e) printf("%s = %lld\n", #e, (long long)(e))
#define D(e) printf("%s = %g\n", #e, (double)(e))
int main(void) {
  P(x.a - 2 < 0); P(x.b - 3 < 0); P(-1 < (unsigned char)1); P(-1 < 1u); P(-1L < 1u); P(-1LL < 1u);
  P(x.d - 5 < 0); P(x.c * 2); P(~x.f); P(-x.f); P(x.g + 1); P(!x.a); P(x.a << 1); P(sizeof(x.a + 0)); P(sizeof(x.e + 0));P(sizeof(+x.d));
  P((char)200); P((signed char)200); P((short)70000); P((unsigned char)-1); P((_Bool)0.5); P((_Bool)&cnt); P((int)3.99); P((int)-3.99); P((unsigned)3e9); P((long long)-1e15); P((unsigned long long)1.8e19);
  P(mk(3).v[2]); P(sizeof mk(1).v); P(sizeof(mk(1)));
  { int *p = (int[]){1,2,3}; P(p[1]); struct ar *q = &(struct ar){{[2] = 9}}; P(q->v[2] + q->v[0]); }
  { int i = 3; int r = ({ int t = i * 2; t + 1; }); P(r); P(i ?: 7); i = 0; P(i ?: 7); P(side() ?: 5); P(cnt); }
  { int i = 0; int j = (i++, i + 10); P(j); P(i++ + ++i); int a[3] = {0}; a[i - 2] = i; P(a[0]); 2[a] = 5; P(a[2]); P(*(a + 2)); P(&a[2] - a); P(&2[a] - &*a);}
  { const char *s = "hello" + 1; P(s[0]); P("abc"[2]); P(*"x"); P(sizeof "abc" "def"); P(sizeof(L"ab")); P('\377'); P('ab'); P(L'\x1234'); }
  P(sizeof(char)); P(sizeof 'a'); P(sizeof(1 ? 1 : 1.0)); P(sizeof((char)1)); P(sizeof(char[3][4])); P(__alignof__(x)); P(sizeof(int[side() + 3])); P(cnt);
  P(__builtin_constant_p(3)); P(__builtin_constant_p(cnt)); P(__builtin_types_compatible_p(int, const int)); P(__builtin_choose_expr(0, 1, 2)); P(__builtin_offsetof(struct ar, v[3])); P(__builtin_strlen("hey")); P(__builtin_popcount(0xf0f0)); P(__builtin_clz(1)); P(__builtin_ctz(8)); P(__builtin_ffs(0)); P(__builtin_parity(7)); P(__builtin_abs(-4)); P(__builtin_classify_type(1.0)); P(__builtin_expect(cnt, 1));
  D(__builtin_inf()); D(__builtin_pow(2.0, 10.0)); P(__builtin_isnan(__builtin_nan(""))); P(__builtin_isinf(1.0)); P(__builtin_fpclassify(1,2,3,4,5,0.0)); P(__builtin_isnormal(1.0));
  { _Complex double z = 3.0 + 4.0i; _Complex double w = z * z; D(__real__ w); D(__imag__ w); z = ~z; D(__imag__ z); w = z / (1.0 + 1.0i); D(__real__ w); D(__imag__ w); P(z == w); P(z != w); z++; D(__real z); __imag z = 7; D(__imag z); w = -z; D(__imag w); P(!z); P(z ? 1 : 2); _Complex float cf = z; D(__imag cf); D(w * 2.0); w += 1; w *= 2.0i; D(__real w); D(__imag w); D((double)w); P((int)w); }
  D(1/3.0f); D(1e300*1e10); D(0.1f + 0.2); D(-0.0); D(5 % 3 * 1.5); P(5 / -2); P(-5 % 3); P(7u / -2); P(1 << 31 >> 31); P(-1 >> 1); P(~0u >> 1); P(0x80000000 / -1); P(2147483647 + 1u); P(3000000000 > 0); P('a' < 0); P((char)-1 < 0);
  { unsigned char c = 250; c += 10; P(c); c = 1; c <<= 9; P(c); c = 7; c /= 2.5; P(c); c = 3; c -= 5; P(c); c--; P(c); short s = 32767; s++; P(s); int sh = 1; sh <<= 4; P(sh); float f = 1; f += 0.1; D(f); _Bool b = 2; P(b); b++; P(b); b--; P(b); b = 0.1; P(b); x.c = 17; P(x.c); P(x.c = 18); P(x.f++); P(x.f++); P(x.f); P(x.f += 5); x.d = -1; P(x.d); P(x.d++); P(x.d);}
  { int n = 3; int v[n][2]; P(sizeof v); P(sizeof *v); P(sizeof v[0]); v[2][1] = 4; P(v[2][1]); int (*pv)[n] = 0; P(sizeof *pv); P(sizeof(int (*)[n])); typeof(v) vv; P(sizeof vv); n = 9; P(sizeof v);}
  { void *p = &x; p++; P((char *)p - (char *)&x); P(sizeof(void)); P(sizeof(main)); P(p - 1 == (void *)&x); int (*f)(void) = side; P((*f)()); P((**f)()); P((&side)()); P((1 ? side : side)()); P(f == side); P(f == &side); }
  { union uu u = { .f = 1.0f }; P(u.i); P(((union uu)2.0f).i); u = (union uu)5; P(u.i); struct { int a; struct { int b, c; }; union { int d; char e; }; } an = { 1, {2, 3}, {4} }; P(an.c + an.d); P(an.e); }
  P(printf("%s %s\n", __func__, __FUNCTION__)); P(sizeof __func__); P(__func__[1]);
  return 0; }
