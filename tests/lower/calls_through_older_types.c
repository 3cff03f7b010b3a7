// proves: calls through older declarations of a function agree with its prototype
int printf(const char *, ...);
int table[2][3] = {{1, 2, 3}, {4, 5, 6}};
int sum();
int total(int (*)[]);
static int early(short s, char c)
{
  int first = total(table) + sum(s, c, 2.5f);
  {
    extern int total(int (*)[3]);
    extern int sum(int, int, double);
    first += total(table) + sum(s, c, 2);
  }
  return first + sum(1, 2, 3.0);
}
int sum(int a, int b, double c) { return a * 100 + b * 10 + (int)(c * 2); }
int total(int (*p)[3]) { return p[1][2] + sizeof *p; }
int (*through)() = sum;
int main(void)
{
  printf("%d %d %d\n", early(7, 3), through(1, 2, 4.5), (*(int (*)(int, int, double))sum)(3, 2, 1));
  return 0;
}
