// options: --no_warnings
// needs: arm
// proves: a static local that nothing uses leaves without those declared behind it
int printf(const char *, ...);
static int count(int n)
{
  static int unused;
  static int calls = 4;
  if (n) {
    static const char version[] = "1", id[2];
    static int inner;
    return inner += n;
  }
  return ++calls;
}
int main(void)
{
  printf("%d", count(0));
  printf("%d", count(0));
  printf("%d", count(2));
  printf("%d\n", count(3));
  return 0;
}
