// proves: constant expressions of every operator fold to what the machine computes
int printf(const char *, ...);
#define SHOW(e) printf("%d:%lld ", __LINE__, (long long)(e))
#define SHOWF(e) printf("%d:%g ", __LINE__, (double)(e))
static const long long folded[] = {
  7 / -2, 7 % -2, -7 / 2, -7 % 2, 1u - 2, ~0u >> 1, -1 >> 1, 1 << 31 >> 31, 5 & ~1, 6 ^ 3, 6 | 9, !5, !0, 5 == 5.0, 3 < -1u, 3 < -1,
  (char)300, (signed char)300, (unsigned short)-1, (short)40000, (_Bool)0.25, (int)-2.9, (unsigned)3e9, (long long)1e18, (unsigned char)3.99f,
  2 ? 3 : 4, 0 ? 1u : -1, sizeof(int[3]), -5 / 2 * 2 + -5 % 2, 0x7fffffff + 0u + 1, 10000000000 / 3, -10000000000 % 7, 1LL << 40 >> 3,
  (unsigned long long)-1 / 10, 0xffffffffu * 0xffffffffu, 0xffffffffull * 0xffffffffull >> 32, 12345678987654321ll / 1234567, -1ll == 0xffffffffffffffffull };
static const double fl[] = { 1.0 / 3, 1.0f / 3, 2.5 * 4 - 1, -0.0, 0.1f + 0.2f, 0.1 + 0.2, 7 / 2, 7 / 2., (float)16777217, (float)0.1, 1e-320, 3 - 1e-20, -(1.5 > 1), 0x1p-149f };
volatile int i0 = 7, i1 = -2; volatile unsigned u0 = 4000000000u; volatile long long l0 = -10000000000; volatile double d0 = 2.5; volatile float f0 = 0.1f;
_Complex double z = 1.0 + 2.0i, w = (3.0 - 1.0i) * (1.0 + 2.0i) / 2.0;
static const _Complex float cf = ~(1.0f + 3.0if) + 1;
int main(void)
{
  unsigned i;
  for (i = 0; i < sizeof folded / sizeof *folded; i++) printf("%lld ", folded[i]);
  printf("\n");
  for (i = 0; i < sizeof fl / sizeof *fl; i++) printf("%.9g ", fl[i]);
  printf("\n");
  SHOW(i0 / i1); SHOW(i0 % i1); SHOW(u0 / i0); SHOW(l0 / i0); SHOW(l0 % i0); SHOW(l0 >> 3); SHOW((unsigned long long)l0 / 10); SHOW(u0 > i1); SHOW(l0 < u0);
  SHOW((int)(d0 * 1e3)); SHOW((unsigned char)d0); SHOW((_Bool)f0); SHOW((short)u0); SHOW(-u0); SHOW(~l0); SHOW(!d0); SHOW(d0 && f0);
  SHOWF(i0 / d0); SHOWF(u0 * f0); SHOWF((float)l0); SHOWF(l0 * d0); SHOWF(i1 + f0); SHOWF(-d0); SHOWF(u0 + .5); SHOWF(d0 ? f0 : i0); SHOWF(i0++ + ++i1);
  SHOWF(__real__ z); SHOWF(__imag__ w); SHOWF(__real__ (z * w)); SHOWF(__imag__ (z / w)); SHOWF(__imag__ cf); SHOWF(__real__ cf); SHOW(z == w); SHOW(z != 1.0 + 2.0i);
  z += d0; z *= 2; z -= 1.0i; z /= i0; SHOWF(__real__ z); SHOWF(__imag__ ~z); __imag__ z = 4; SHOWF(__imag__ z); SHOWF((double)z); SHOW(!z); SHOW(sizeof z + sizeof cf);
  printf("\n");
  return 0;
}
