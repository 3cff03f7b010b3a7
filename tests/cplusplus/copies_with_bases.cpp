// proves: the generated copy of a class copies its bases by their own constructors, or as bytes
extern "C" int printf(const char *, ...);
struct Plain { int p; };
struct Counted {
  int c;
  Counted() : c(1) {}
  Counted(const Counted &other) : c(other.c + 100) {}
  virtual ~Counted() {}
};
struct Derived : Plain, Counted {
  int d;
  Derived() : d(3) { p = 2; }
};
struct Last : Derived {
  Counted member;
};
int main()
{
  Last one;
  one.p = 7;
  Last two = one;
  printf("%d %d %d %d\n", two.p, two.c, two.d, two.member.c);
  return 0;
}
