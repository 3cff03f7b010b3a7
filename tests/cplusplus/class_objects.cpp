// proves: objects of classes at file scope, local static ones, arrays and temporaries begin by their constructors
// and end in the reverse order; values are copied by copy constructors, and temporaries not copied once more;
// members are built in the order of the class
extern "C" int printf(const char *, ...);
int made, gone;
struct A {
  int x;
  A() : x(-1) { made++; printf("A()\n"); }
  A(int v) : x(v) { made++; printf("A %d\n", v); }
  A(int v, int w) : x(v * w) { made++; printf("A %d %d\n", v, w); }
  A(const A &o) : x(o.x + 100) { made++; printf("copy %d\n", o.x); }
  ~A() { gone++; printf("~A %d\n", x); }
  int get() const { return x; }
};
int start() { printf("start\n"); return 3; }
int first = start();
A global(first, 7);
A table[2];
struct Pod { int a, b; };
Pod plain = { start(), 2 };
int twice(int v) { return 2 * v; }
int chain = twice(first);
struct Members {
  int order;
  A second;
  A third;
  const int fixed;
  int &ref;
  int list[3];
  Members(int &r) : third(30), second(20), ref(r), fixed(4), list() { order = list[1]; }
  ~Members() { printf("~Members\n"); }
};
A make(int v) { return A(v); }
A either(int v) { return v > 5 ? A(v) : A(-v, 2); }
int take(A a) { return a.get(); }
int refer(const A &a) { return a.get(); }
int local_static(int v)
{
  static A kept(v);
  static int counter = twice(v);
  return kept.get() + counter++;
}
struct Holder { A parts[2]; int n; Holder() : n(9) { printf("Holder\n"); } ~Holder() { } };
int early(int v)
{
  A a(v);
  if (v == 1) return a.get();
  for (int i = 0; i < 2; i++) {
    A in_loop(50 + i);
    if (i == v) break;
    if (v == 4) continue;
    printf("loop %d\n", i);
  }
  return v;
}
int main()
{
  printf("main %d %d %d\n", first, plain.a, chain);
  A one(1), two = 2, three = A(3), four = one;
  A five(make(5)), six = either(6), seven = either(2);
  A from_parts(refer(A(31)), take(A(32)));
  printf("%d %d %d\n", take(7), refer(8), seven.get() + four.get() + from_parts.get());
  printf("%d\n", take(one));
  { A inner[2] = { 11, A(12) }; printf("%d\n", inner[1].get()); }
  int n = 77;
  Members m(n);
  printf("%d %d %d\n", m.fixed, m.ref, m.order);
  printf("%d %d\n", local_static(40), local_static(41));
  printf("%d %d %d\n", early(1), early(0), early(4));
  Holder h;
  const A &bound = A(60);
  printf("%d %d\n", bound.get(), A(61).get() + make(62).get());
  A *p = &one;
  *p = two;
  printf("%d %d\n", one.get(), (n ? one : two).get());
  printf("%d\n", made);
  return 0;
}
