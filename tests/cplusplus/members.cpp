// proves: members through this, by qualified names and through objects and pointers; overloaded members with static
// ones among them; operator(), operator[] and chains of operator->; objects whose member is static are still
// evaluated; destructors of types that have none
extern "C" int printf(const char *, ...);
struct A {
  int x;
  static int shared;
  enum { limit = 40 };
  int over(int n) { return x + n; }
  int over(double) { return -1; }
  static int over(int a, int b) { return a * b; }
  int get() const { return x; }
  int all() { return (get)() + this->over(2) + A::over(3) + A::x + over(2, 5) + (*this).x; }
};
int A::shared = 9;
struct Fun {
  int scale;
  int operator()(int a, int b) const { return scale * a + b; }
  int operator()(const char *s) { return s[0]; }
  int &operator[](int i) { return i ? scale : spare; }
  int spare;
};
struct Handle { A *p; A *operator->() const { return p; } };
struct Holder { Handle h; Handle &operator->() { return h; } };
int touched;
A *touch(A *p) { touched++; return p; }
union U { int i; struct { short lo, hi; } half; };
struct Outer {
  int before;
  union { int word; float real; };
  int sum() { return before + word; }
};
int main()
{
  A a; A *p = &a;
  a.x = 10;
  printf("%d %d %d %d\n", a.over(1), p->over(1.5), a.over(3, 4), A::over(5, 6));
  printf("%d %d\n", a.all(), p->A::over(7));
  Fun f; f.scale = 3; f.spare = 70;
  const Fun &cf = f;
  f[0] += 5; f[1]++;
  printf("%d %d %d %d\n", f(10, 2), f("A"), cf(1, 1), f[0]);
  Handle h; h.p = p;
  Holder v; v.h = h;
  printf("%d %d %d\n", h->x, v->x, v->over(1));
  printf("%d %d %d\n", touch(p)->shared, touch(p)->over(2, 3), touch(p)->limit);
  printf("%d\n", touched);
  typedef int I;
  I i = 3, *q = &i;
  i.~I(); q->~I(); p->~A(); a.A::~A();
  Outer o; o.before = 1; o.word = 41;
  printf("%d\n", o.sum());
  return 0;
}
