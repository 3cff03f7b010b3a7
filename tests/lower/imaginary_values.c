// options: --c99 --no_gcc --no_warnings
// proves: imaginary values are held by their imaginary parts, and products know the unit (C99 G.5)
int printf(const char *, ...);
#ifdef __GNUC__ // builds the golden file without having the type
int main(void)
{
  printf("all 43 hold\n");
  return 0;
}
#else
typedef double _Imaginary imag;
static imag global = 3.0 * __I__, table[2] = {1.0 * __I__, -2.0 * __I__};
static struct {
  float _Imaginary f;
  int i;
} part = {0.5f * __I__, 7};
static double folded = __I__ * __I__;

static float _Imaginary narrow(float _Imaginary x, int negative)
{
  return negative ? -x : x;
}
static int right;
static void is(const char *what, double _Complex z, double real, double imaginary)
{
  double *parts = (double *)&z;
  if (parts[0] == real && parts[1] == imaginary)
    right++;
  else
    printf("%s is %g %g\n", what, parts[0], parts[1]);
}
#define IS(x, real, imaginary) is(#x, x, real, imaginary)

static void operators(imag a, imag b, double d, double _Complex z)
{
  IS(global, 0, 3), IS(table[1], 0, -2), IS(part.f, 0, 0.5), IS(folded, -1, 0);
  IS(sizeof a, 8, 0), IS(narrow(a, 1), 0, -3), IS(-a, 0, -3);
  IS(a * d, 0, 12), IS(d * a, 0, 12), IS(a * b, -6, 0), IS(a / b, 1.5, 0), IS(b / d, 0, 0.5);
  IS(6 / a, 0, -2), IS(2 * a, 0, 6), IS(a + b, 0, 5), IS(a - b, 0, 1), IS(a + d, 4, 3);
  IS(d - a, 4, -3), IS(z * a, -15, 3), IS(z - a, 1, 2), IS(d ? b : z, 0, 2), IS(d ? a : b, 0, 3);
  IS(a == b, 0, 0), IS(a != b, 1, 0), IS(a == d, 0, 0), IS(!a, 0, 0), IS(a && b, 1, 0);
  double zero = d - d, inf = 1 / zero;
  IS(inf * b, 0, inf), IS((double _Complex)(inf * __I__), 0, inf);
}

static void conversions(imag a, imag b, double d, double _Complex z)
{
  imag c = z;
  IS(c, 0, 5), c = d, IS(c, 0, 0), d = a, IS(d, 0, 0);
  _Bool truth = a;
  IS(truth, 1, 0), truth = c, IS(truth, 0, 0);
  int calls = 0;
  d = (calls++, b), IS(d, 0, 0), IS(calls, 1, 0);
}

static void assignments(imag a, imag b, double d, double _Complex z)
{
  a *= d, a /= 2, IS(a, 0, 6), a += b, a -= 1.0 * __I__, IS(a, 0, 7), a += d, IS(a++, 0, 7);
  a *= z, IS(a, 0, 7), a *= b, IS(a, 0, 0), d += b, IS(d, 4, 0);
  z += b, IS(z, 1, 7), z *= b, IS(z, -14, 2);
}

int main(void)
{
  operators(3.0 * __I__, 2.0 * __I__, 4, 1.0 + 5.0 * __I__);
  conversions(3.0 * __I__, 2.0 * __I__, 4, 1.0 + 5.0 * __I__);
  assignments(3.0 * __I__, 2.0 * __I__, 4, 1.0 + 5.0 * __I__);
  printf("all %d hold\n", right);
  return 0;
}
#endif
