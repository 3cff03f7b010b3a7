// proves: initializers of every form, static and automatic, and values that depend on widths, against a direct build
#include <stdio.h>
#include <string.h>
#include <stddef.h>
struct P { int x, y; }; struct Q { char c; struct P p[2]; short s; union { int i; char b[8]; } u; struct { int m; struct P n; }; };
static int g = 7; static int arr[10] = { [2 ... 4] = 1, [3] = 2, [8] = 9, 10 };
static struct Q q1 = { 'a', { {1, 2}, {3} }, 5, { .b = "hey" }, { 6, {7, 8} } };
static struct Q q2 = { .p[1].y = 4, .s = 3, .u.i = 0x41424344, .n.x = 9, 10, .c = 'z', .p[0] = { .y = 1 } };
static struct Q qa[] = { [1] = { .s = 2 }, [0].s = 1, [0].p[1] = { 5, 6 }, [3] = { 'x' } };
static char s1[] = "abc" "def", s2[3] = "abc", s3[10] = "abc", s4[][4] = { "ab", "cde", {'x'} };
static int *pa = &arr[3], *pb = arr + 2, *pc = &((struct Q *)0)->p[1].y == 0 ? 0 : &g; static char *cp = "hello" + 2; static const char *tab[] = { "x", [2] = "z", "w" };
static size_t off = offsetof(struct Q, p[1].y), off2 = (size_t)&((struct Q *)0)->u.b[3]; static ptrdiff_t df = &arr[7] - &arr[2]; static int (*fp[2])(const char *, ...) = { printf, &printf };
static long adr = (long)&arr[1]; static unsigned char uc = 300, uc2 = -1; static float fl = 1, fl2 = 1.0 / 3; static int ic = 3.99, in = -3.99; static _Bool bb = 5, bn = 0.0, ba = &g;
static double dd = 1 / 2, de = 1 / 2.0, df2 = 1e-320; static long long ll = 1LL << 40, lm = -1u, ln = -1; static unsigned long long um = -1;
static int mat[2][3] = { 1, 2, 3, 4 }, mat2[][3] = { {1}, {2, 3}, 4, 5, 6, {7} }, mat3[2][2][2] = { { {1}, 2, 3 }, 4, 5 };
union U { struct { short a, b; } s; int i; float f; } u1 = { { 1, 2 } }, u2 = { .i = 0x30004 }, u3 = { .f = 1.5f };
struct BF { unsigned a : 3; int b : 5; unsigned : 0; int c : 9; unsigned d : 31; long long e : 40; _Bool f : 1; } bf = { 9, -3, 300, 5, -7, 1 };
struct FA { int n; char d[]; } fa = { 3, "xyz" };
static struct P *pp = &(struct P){ 11, 12 }; static int *pi = (int[]){ 4, 5, 6 };
static struct P fn(int a) { return (struct P){ a, a + 1 }; }
static int sum(int n, ...) { __builtin_va_list ap; int t = 0; __builtin_va_start(ap, n); while (n--) t += __builtin_va_arg(ap, int); __builtin_va_end(ap); return t; }
static void dump(const char *n, const void *p, size_t k) { const unsigned char *c = p; printf("%s:", n); while (k--) printf(" %d", *c++); printf("\n"); }
#define I(e) printf("%s = %lld\n", #e, (long long)(e))
int main(void)
{
  int n = 3, i;
  for (i = 0; i < 10; i++) printf("%d ", arr[i]); printf("\n");
  I(q1.p[1].y); I(q1.u.b[1]); I(q1.n.y); I(q2.p[1].y); I(q2.n.x); I(q2.n.y); I(q2.c); I(q2.p[0].x); I(q2.p[0].y); I(q2.u.i); I(sizeof qa / sizeof *qa); I(qa[0].p[1].y); I(qa[0].s); I(qa[1].s); I(qa[3].c);
  I(sizeof s1); dump("s2", s2, 3); dump("s3", s3, 10); I(sizeof s4); dump("s4", s4, sizeof s4); I(*pa); I(pb - arr); I(pc == &g); I(cp[0]); I(sizeof tab / sizeof *tab); I(tab[1] == 0); I(tab[3][0]);
  I(off); I(off2); I(df); I(fp[0] == fp[1]); I(adr == (long)(arr + 1)); I(uc); I(uc2); I(ic); I(in); I(bb + bn + ba); I(dd); printf("%g %g %g %.9g\n", de, df2, fl, fl2); I(ll); I(lm); I(ln); I(um == -1);
  dump("mat", mat, sizeof mat); dump("mat2", mat2, sizeof mat2); dump("mat3", mat3, sizeof mat3); I(u1.s.b); I(u2.s.b); I(u3.i);
  I(bf.a); I(bf.b); I(bf.c); I(bf.d); I(bf.e); I(bf.f); I(fa.d[2]); I(pp->y); I(pi[2]); I(fn(3).y); I((fn(4), fn(5)).x); I(sum(3, 1, 2, 3)); I(sum(2, 'a', (short)-5));
  { struct Q l = { .s = n, .p[1].x = n + 1, .u.b = { [2] = n } }; struct Q m = l; struct Q k[2] = { l, [1].s = 4 }; int v[5] = { n, [3] = n * 2, 8 }; struct P w = fn(9), z = { w.x, fn(2).y }; struct { struct P a; int b; } t = { w, 3 }, t2 = { 1, 2, 3 };
    I(m.s); I(m.p[1].x); I(m.u.b[2]); I(m.u.b[3]); I(m.c); I(k[0].s); I(k[1].s); I(k[1].c); I(v[0] + v[1] * 10 + v[3] * 100 + v[4] * 1000); I(w.y); I(z.y); I(t.a.y); I(t2.b);
    struct P *y = &(struct P){ n, .y = n + 5 }; I(y->y); y = (struct P[]){ {1}, {n, 2} }; I(y[1].x); char loc[] = "loc", loc2[6] = { "pq" }; I(sizeof loc); dump("loc2", loc2, 6); char *sp = (char[]){ "mut" }; sp[0] = 'c'; printf("%s\n", sp);
    for (i = 0; i < 2; i++) { static int st = 5; int au[3] = { i }; st += 2; I(st); I(au[0] + au[1]); au[1] = 99; }
    const struct P cps = { 1, n }; I(cps.y); int (*pf)(int, ...) = sum; I(pf(1, 42)); I((*pf)(1, 43)); union U lu = { .f = 2.0f }; I(lu.i); lu = (union U){ .s = { 5, 6 } }; I(lu.i); }
  { int v2[n][n + 1]; int (*r)[n + 1] = v2; for (i = 0; i < n * (n + 1); i++) v2[0][i] = i; I(r[2][1]); I(sizeof v2); I(sizeof r[0]); I(&v2[2] - v2); I((char *)(r + 1) - (char *)r); typedef int T[n]; n = 10; T tt; I(sizeof tt); I(sizeof(T)); int w3 = sizeof(int[n++]); I(w3); I(n); }
  { int a = 5, b = 3; int c = a > b ? ({ int z = a; a += b; z; }) : 0; I(c); I(a); a = ({ switch (b) { case 3: b = 9; } b; }); I(a); I(({ goto lab; lab: b + 1; })); I(sizeof({ b++; })); I(b); }
  { unsigned char x = 255; signed char y = -1; short z = -1; I(x + 1); I(x == y); I((unsigned char)y == x); I(z == 65535); I((unsigned short)z == 65535); I(x << 24 >> 24); I(y << 1); I(-x); I(~x); I(!x); I(x-- > 254); I(++x); I(x++); I(x); I((char)x); x |= 256; I(x); x ^= y; I(x); y >>= 1; I(y); z *= 70000; I(z); float f = 16777217; I(f); I((int)(f + 1.0)); I((int)1e9f); double d = 0.1; d += 0.2; I(d == 0.3); I(d > 0.3); I((float)d == 0.3f); int t = 7; t /= 2.9; I(t); t -= 0.5; I(t); unsigned w = -5; w /= 2; I(w); I(5u - 6 > 0); I((long long)(5u - 6)); I(1 ? -1 : 0u); I((1 ? -1 : 0u) > 0); I((char)0x80 >> 1); I(07 + 0x1f + 'a'); I(-7 / 2); I(-7 % 3); I(-7 >> 1); I(1 << 31 < 0); }
  I(strlen("a\0b")); I(sizeof "a\0b"); I("\x41\102\n"[0]); I("\x41\102\n"[1]); I('\''); I('\\'); I('\0'); I(sizeof L'a'); I(0 ? sizeof(char[n]) : 5); I(n == 11 && (n = 0, 1) || n++); I(n); I((n, 3)); I(n ? n : -1);
  return 0;
}
