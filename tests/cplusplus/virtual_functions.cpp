// proves: virtual functions through pointers and references, over several bases whose tables need thunks, pure functions,
// calls by the class's name, virtual destructors, conversions to bases and back
extern "C" int printf(const char *, ...);
struct A {
  int a;
  A(int x) : a(x) {}
  virtual int f() { return a; }
  virtual ~A() { printf("~A%d ", a); }
  int call() { return f(); }
};
struct B {
  int b;
  B() : b(2) {}
  virtual int g() { return b; }
  virtual void h(int k, int *result) { *result = k + b; }
  virtual ~B() { printf("~B%d ", b); }
};
struct C : A, B {
  int c;
  C(int x) : A(x), c(x + 300) { b = 20; }
  int g() { return b + c; }
  int f() { return A::f() + c; }
  ~C() { printf("~C%d ", c); }
};
struct D : C {
  int d;
  D() : C(5), d(4000) {}
  int g() { return d + C::g(); }
  void h(int k, int *result) { *result = d + k; }
};
struct Shape {
  virtual int area() const = 0;
  virtual ~Shape() {}
};
struct Square : Shape {
  int side;
  Square(int s) : side(s) {}
  int area() const;
};
int Square::area() const { return side * side; }
struct Box : Square {
  int depth;
  Box(int s, int d) : Square(s), depth(d) {}
  int area() const { return Square::area() * depth; }
};
int use(B *b)
{
  int result;
  b->h(5, &result);
  return b->g() * 10 + result;
}
int use(A &a) { return a.f() + a.call(); }
int main()
{
  B b;
  C c(1);
  D d;
  B *as_b = &d;
  C *as_c = &d;
  printf("%d %d %d\n", use(&b), use(&c), use(as_b));
  printf("%d %d %d\n", use(c), use(d), use(as_c));
  C *back = static_cast<C *>(as_b);
  B *none = (C *)0;
  printf("%d %d %d %d\n", back == as_c, back->a, as_b->b, none == 0);
  Square square(3);
  Box box(2, 10);
  const Shape *shapes[2] = {&square, &box};
  int sum = 0;
  for (int i = 0; i < 2; i++) sum += shapes[i]->area();
  printf("%d\n", sum);
  return 0;
}
