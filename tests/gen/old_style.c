// options: --gcc
// proves: definitions with identifier lists, calls without prototype, promotion of their arguments
int printf(const char *, ...);
int narrow(c, s, f, p) char c; short s; float f; char *p; { return c + s + (int)(f * 2) + *p; }
double late();
static twice(x) { return x + x; }
int main(argc, argv) int argc; char **argv;
{
  char c = 'A';
  float f = 1.25f;
  printf("%d %g %d\n", narrow(c, 300, f, &c), late(f, 3), twice(21));
  return 0;
}
double late(f, n) float f; int n; { return f * n; }
