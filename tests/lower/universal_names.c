// options: --c99 --gcc --no_warnings
// proves: names with universal characters are names in the generated C, whatever they name
int printf(const char *, ...);
int \u00C1x = 5;
struct \u00e9t {
  int \u00e8;
};
enum \u00fb { \u00fc = 4 };
typedef int \u00c0t;
#define STR(x) #x
static int f\u00e7(int \u00e0)
{
  static int \u00ea = 3;
  struct \u00ee {
    int \u00ef;
    union {
      int \u00f4, \u00f6;
    };
  } s = {.\u00f6 = 6};
  enum \u00f9 { a\u00f9 = 9 };
  printf("%s %s %d\n", __func__, __FUNCTION__, (int)sizeof __func__);
  if (\u00e0)
    goto \u00e8;
  return -1;
\u00e8:
  return \u00e0 + \u00ea + s.\u00f4 + a\u00f9;
}
int main(void)
{
  struct \u00e9t s = {.\u00e8 = 3};
  \u00c0t b = 1;
  int n = f\u00e7(2);
  printf("%s %d %d %d %d %d\n", STR(\u00e7), \u00C1x, s.\u00e8, \u00fc, b, n);
  return ({
    __label__ \u00e8;
    goto \u00e8;
    n = 7;
  \u00e8:
    n - 20;
  });
}
