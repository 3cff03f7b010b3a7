// proves: functions are chosen by rank of conversion, by the arguments' namespaces, and by the type that a context asks for
extern "C" int printf(const char *, ...);
namespace N {
struct S { int v; };
int get(const S &s) { return s.v; }
int operator+(const S &a, const S &b) { return a.v + b.v; }
int operator-(const S &a) { return -a.v; }
S operator++(S &s, int) { S old = s; s.v = s.v + 1; return old; }
enum E { first, second };
int operator*(E a, int b) { return 100 * a + b; }
}
int f(long) { return 1; }
int f(char) { return 2; }
int f(unsigned) { return 3; }
int f(double) { return 4; }
int from_pointer(const int *) { return 1; }
int from_pointer(int *) { return 2; }
int from_pointer(void *) { return 3; }
int by_reference(const int &) { return 1; }
int by_reference(int &) { return 2; }
int rest(int, ...) { return 1; }
int rest(double, double) { return 2; }
int (*chosen)(char) = f;
int takes(int (*function)(long)) { return function(1L); }
int sum(int a, int b = 5, int c = 7) { return a + b + c; }
void swap(int &a, int &b) { int t = a; a = b; b = t; }

int main()
{
  N::S s = {4}, t = {5};
  printf("%d %d %d %d\n", get(s), s + t, -t, N::second * 3);
  N::S old = s++;
  printf("%d %d\n", old.v, s.v);
  char c = 'x';
  short small = 1;
  printf("%d %d %d %d\n", f(c), f(3L), f(3u), f(2.5f));
  int i = 9;
  const int k = 3;
  printf("%d %d %d\n", from_pointer(&i), from_pointer(&k), from_pointer(&s));
  printf("%d %d %d %d\n", by_reference(i), by_reference(k), by_reference(7), by_reference(small));
  printf("%d %d %d\n", rest(1.0, 2.0), rest(1, 2, 3), chosen('a'));
  printf("%d %d %d %d\n", takes(f), sum(1), sum(1, 2), sum(1, 2, 3));
  int u = 1, v = 2;
  swap(u, v);
  printf("%d %d\n", u, v);
  return 0;
}
