// proves: pure and overridden functions are called through references and pointers to bases, members of several bases are found,
// empty bases take no space
extern "C" int printf(const char *, ...);
struct Shape {
  virtual int area() const = 0;
  virtual const char *name() const { return "shape"; }
  int tag;
};
struct Named { char letter; char get() const { return letter; } };
struct Square : Shape, Named {
  int side;
  int area() const { return side * side; }
  const char *name() const { return "square"; }
};
struct Cube : Square { int area() const { return 6 * Square::area(); } };
struct V { int v; };
struct L : V { int l; };
struct R { int r; };
struct D : L, R { int d; int sum() { return v + l + r + d; } };
struct E {}; struct E2 : E {}; struct F : E, E2 { int x; };
int measure(const Shape &s) { return s.area() + s.tag; }
int main()
{
  Square q; q.side = 5; q.tag = 100; q.letter = 'q';
  Cube c; c.side = 2; c.tag = 1000; c.letter = 'c';
  Shape *p = &c;
  Named *n = &q;
  printf("%d %d %s %s %c %c\n", measure(q), measure(c), p->name(), ((Shape&)q).name(), n->get(), c.get());
  D d; d.v = 1; d.l = 2; d.r = 3; d.d = 4;
  V *v = &d;
  printf("%d %d %d\n", d.sum(), v->v, (int)sizeof(D));
  printf("%d %d\n", q.area(), (int)sizeof(F));
  return 0;
}
