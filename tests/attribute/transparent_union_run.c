// options: --gcc
// proves: a function that takes a transparent union may be defined with a member's type, behind its calls too
int printf(const char *, ...);
typedef union { int *i; const char *c; } either __attribute__((transparent_union));
int first(either);
int both(void)
{
  int one = 1;
  return first(&one) + first("\2");
}
int first(const char *p) { return *p; }
int again(void) { return first("\3") + first("\4"); }
int set(either e) { return *e.c; }
int second(const char *p) { return *p + 10; }
int second(either);
int main(void)
{
  int five = 5;
  either named;
  int (*pointer)(either) = first;
  named.c = "\7";
  printf("%d %d %d %d\n", both(), again(), second("\5"), pointer(&five));
  printf("%d %d\n", set(named), set((named.i = &five, named)));
  printf("%d\n", *named.i);
  return 0;
}
