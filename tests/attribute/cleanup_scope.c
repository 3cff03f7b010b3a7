// options: --c99 --gcc --no_warnings
// proves: a cleanup runs for the objects whose declaration was reached, in reverse order
int printf(const char *, ...);
static void done(int *p)
{
  printf(" done %d", *p);
}
static int leave(int how)
{
  int a __attribute__((cleanup(done))) = 1;
  if (how == 0) return 10;
  int b __attribute__((cleanup(done))) = 2;
  {
    if (how == 1) goto out;
    int c __attribute__((cleanup(done))) = 3;
    if (how == 2) goto out;
    int d __attribute__((cleanup(done))) = c + 1;
  }
  for (int i = 0; i < 3; i++) {
    if (how == 3) break;
    int e __attribute__((cleanup(done))) = 100 + i;
    if (i == 1) continue;
    if (how == 4) return e;
  }
  int value = ({
    int f __attribute__((cleanup(done))) = 50;
    f + 1;
  });
  printf(" value %d", value);
out:
  printf(" out");
  int g __attribute__((cleanup(done))) = 9;
  return g;
}
int main(void)
{
  for (int how = 0; how < 6; how++)
    printf(" = %d\n", leave(how));
  return 0;
}
