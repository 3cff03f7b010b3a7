// proves: local labels of blocks and ranges of case values (GNU)
int printf(const char *, ...);
#define FIRST_OF(array, n, wanted) ({          \
    __label__ found;                           \
    int i, result = -1;                        \
    for (i = 0; i < n; i++)                    \
      if (array[i] == wanted) { result = i; goto found; } \
    found:                                     \
    result; })
static int nested(int n)
{
  int a[5] = {4, 2, 9, 2, 7};
  int b[3] = {9, 9, n};
  int first = FIRST_OF(a, 5, n), second = FIRST_OF(b, 3, n);
  return first * 10 + second;
}
static int ranges(int n)
{
  switch (n) {
  case 1 ... 3: return 1;
  case -5 ... -2: return 2;
  case 'a' ... 'c': case 0x7ffffff0 ... 0x7fffffff: return 3;
  default: return 0;
  case 9: ;
  }
  return 9;
}
int main(void)
{
  int i;
  for (i = 0; i < 10; i++) printf("%d ", nested(i));
  printf("\n");
  for (i = -7; i < 12; i++) printf("%d", ranges(i));
  printf(" %d %d %d\n", ranges('b'), ranges(0x7fffffff), ranges(0x7fffffef));
  return 0;
}
