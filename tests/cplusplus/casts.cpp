// proves: casts by keyword, in functional notation and to references give the values that they name
extern "C" int printf(const char *, ...);
struct Base { int b; };
struct Other { int o; };
enum Color { red, green, blue };
typedef unsigned char byte;
int f(int) { return 10; }
int f(char) { return 20; }
int main()
{
  double d = 3.75;
  int i = static_cast<int>(d), j = int(d * 2), k = int();
  printf("%d %d %d %d\n", i, j, k, byte(300));
  Color c = static_cast<Color>(2);
  printf("%d %d\n", c, Color(1));
  const int fixed = 5;
  int *p = const_cast<int *>(&fixed);
  printf("%d\n", *p);
  unsigned char *bytes = reinterpret_cast<unsigned char *>(&i);
  printf("%d\n", bytes[0]);
  void *v = &i;
  printf("%d\n", *static_cast<int *>(v));
  int &r = static_cast<int &>(i);
  r = 8;
  (int &)d = 0;
  printf("%d %d\n", i, reinterpret_cast<int &>(d));
  printf("%d %d\n", static_cast<int (*)(char)>(f)('x'), ((int (*)(int))f)(1));
  Base base = {4};
  const Base &view = const_cast<const Base &>(base);
  printf("%d\n", view.b);
  static_cast<void>(i);
  long address = reinterpret_cast<long>(&i);
  printf("%d\n", *reinterpret_cast<int *>(address));
  printf("%d\n", (bool)7 + bool(0));
  return 0;
}
