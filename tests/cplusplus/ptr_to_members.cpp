// proves: pointers to data members and to member functions: as locals, in tables and members of objects, compared, tested,
// called through objects and pointers
extern "C" int printf(const char *, ...);
struct S {
  int a, b;
  int f(int x) { return a + x; }
  int g(int x) { return a - x; }
  S &self() { return *this; }
};
typedef int (S::*Function)(int);
typedef int S::*Data;
Function functions[2] = {&S::f, &S::g};
Data data[3] = {&S::b, 0, &S::a};
Data no_data = 0;
Function no_function = 0;
struct W { Function m; Data d; };
int run(S &s, const W &w) { return (s.*w.m)(s.*w.d); }
const char *truth(bool b) { return b ? "yes" : "no"; }
int main()
{
  S s = {3, 40};
  S *q = &s;
  Function p = &S::f;
  int first = (s.*p)(1);
  p = &S::g;
  printf("%d %d %d\n", first, (q->*p)(1), (s.self().*functions[1])(2));
  Data d = &S::b;
  s.*d += 2;
  q->*data[2] = 5;
  printf("%d %d %d\n", s.b, q->*d, s.a);
  W w = {&S::f, &S::a};
  static W kept = {&S::g, &S::b};
  printf("%d %d\n", run(s, w), run(s, kept));
  printf("%s %s %s %s\n", truth(p == &S::g), truth(p != functions[0]), truth(p == no_function), truth(!p));
  printf("%s %s %s %s\n", truth(d == data[0]), truth(no_data), truth(data[1] == 0), truth(data[2]));
  if (p) printf("set\n");
  if (!no_function && no_data == 0) printf("not set\n");
  p = 0;
  return p != 0 ? 1 : 0;
}
