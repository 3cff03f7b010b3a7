// proves: objects made by constructors in expressions: member initializers, default arguments, early returns, operators
// of classes, references to temporaries, conditions between class values
extern "C" int printf(const char *, ...);
struct Pair {
  int v, w;
  Pair(int a, int b = 4) : v(a), w(b)
  {
    if (a > 3) return;
    v++;
  }
  int sum() const { return v + w; }
  Pair *self() { return this; }
};
struct Num {
  int v;
  Num(int a) : v(a) {}
  Num operator+(const Num &other) const { return Num(v + other.v); }
  Num &operator+=(int a) { v += a; return *this; }
  bool operator==(const Num &other) const { return v == other.v; }
  operator int() const { return v; }
};
int by_reference(const Pair &p) { return p.sum(); }
int by_value(Pair p) { p.v *= 2; return p.sum(); }
Pair choose(bool first) { return first ? Pair(10) : Pair(20, 1); }
Num twice(Num n) { return n + n; }
int main()
{
  printf("%d %d %d\n", Pair(1).sum(), Pair(5, 6).sum(), by_reference(Pair(2)));
  Pair p = Pair(3);
  printf("%d %d %d\n", by_value(p), p.self()->v, by_value(Pair(7)));
  printf("%d %d\n", choose(true).sum(), choose(false).self()->sum());
  Num a = Num(1), b = Num(2);
  Num c = a + b;
  c += 5;
  (c += 1) += 1;
  printf("%d %d %d %d\n", c.v, c == Num(10), (int)(a + b + c), twice(twice(b)).v);
  return 0;
}
