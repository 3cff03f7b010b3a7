// options: --gcc
// proves: designators, ranges, unions by their later member, nested braces and addresses
int printf(const char *, ...);
union u { char c; double d; struct { int a, b; } s; };
struct deep { int a[2][3]; union u u[2]; struct deep *self; int (*f)(const char *, ...); };
static union u by_member[] = { { .d = 1.5 }, { .s = { 1, 2 } }, { 'c' }, [5].s.b = 7 };
static struct deep d = { { { 1 }, { 2, 3 } }, { { .s.b = 4 } }, &d, printf };
static int sparse[60] = { [3] = 1, [10 ... 19] = 2, 5, [50 ... 52] = 3, [51] = 4 };
static int *inside = &d.a[1][1], *past = sparse + 60, (*rows)[3] = d.a;
static char *bytes = (char *)&d.u[1] + 3;
static unsigned long address = (unsigned long)&sparse[2];
static _Bool flags[] = { 2, 0, 0.5, (_Bool)&d };
static float tiny[] = { 1e-45f, -0.0f, 1e38f * 2, 0.1f };
static long double wide = 0.1L;
int main(void)
{
  int i, n = 0;
  for (i = 0; i < 60; i++) n = n * 3 + sparse[i];
  printf("%d %g %d %d %d\n", n, by_member[0].d, by_member[1].s.b, by_member[2].c, by_member[5].s.b);
  d.self->f("%d %d %d %d\n", d.a[0][0], d.a[1][0], *inside, d.u[0].s.b);
  printf("%d %d %d %d\n", past - sparse, rows[1][0], (int)(bytes - (char *)&d), address == (unsigned long)(sparse + 2));
  printf("%d%d%d%d %g %g %g %.9g %.17g\n", flags[0], flags[1], flags[2], flags[3], tiny[0], tiny[1], tiny[2], tiny[3], (double)wide);
  return 0;
}
