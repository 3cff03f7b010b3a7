// proves: objects with copy constructors are passed by the address of a copy, through pointers and members too; arrays of
// objects are made and destroyed element by element, at the end of the block or of the program
extern "C" int printf(const char *, ...);
struct S {
  int v;
  S() : v(5) { printf("+5 "); }
  S(int a) : v(a) { printf("+%d ", v); }
  S(const S &other) : v(other.v + 100) { printf("c%d ", v); }
  ~S() { printf("-%d ", v); }
  S &operator=(const S &other) { v = other.v; printf("=%d ", v); return *this; }
};
struct K {
  int taken;
  K(S s) { s.v = 77; taken = s.v; }
  int m(S s, int k, S t) { t = s; s.v = 1; return t.v + k; }
};
S objects[2] = {S(1), S(2)};
S plain[2];
namespace N { struct Q { static S object; }; S Q::object(8); }
int one(S s) { s.v *= 2; return s.v; }
int two(S s, S t) { s.v++; return s.v + t.v; }
int (*pointer)(S) = one;
int (K::*member)(S, int, S) = &K::m;
int main()
{
  S a(1);
  printf("%d\n", two(a, S(2)));
  printf("%d\n", two(3, a));
  K k(a);
  printf("%d %d\n", pointer(a), k.taken);
  printf("%d\n", (k.*member)(a, 3, a));
  printf("%d\n", k.m(a, 2, S(6)));
  {
    S local[3], square[2][2];
    static S kept[2];
    S given[2] = {S(30), S(31)};
    printf("\n%d %d %d ", local[1].v, square[1][1].v, kept[1].v + given[1].v);
  }
  printf("\n");
  return 0;
}
