// proves: what a block says about an object of the file doesn't complete it before its time
int printf(const char *, ...);
int x[];
struct late y;
static int z[3];
int f(void)
{
  extern int x[];
  extern struct late y;
  extern int z[];
  {
    extern int x[];
    int x2 = sizeof z;
    return x2 + (&y != 0) + (x != 0);
  }
}
int x[10];
struct late { int n[5]; };
int one[];
int main(void)
{
  extern int one[];
  printf("%d %d %d %d %d\n", (int)sizeof x, (int)sizeof y, (int)sizeof z, one[0], f());
  return 0;
}
