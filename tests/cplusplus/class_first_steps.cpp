// proves: data members, member functions with bodies that use later members, static members, nested types and
// enumerators, access labels, definitions outside of the class
extern "C" int printf(const char *, ...);
class Counter {
public:
  typedef int value_type;
  enum Mode { up, down = 7 };
  struct Step { int by; };
  void set(value_type v) { value = v; total++; }
  int get() const { return value + offset; }
  int add(int a, int b = later) { return bump(a + b); }
  static int count() { return total; }
  int bump(int by);
  int value, offset;
  static const int later = 5;
  Step step;
private:
  static int total;
};
int Counter::total = 0;
int Counter::bump(int by) { value += by; return value + step.by; }
int main()
{
  Counter c, *p = &c;
  c.offset = 100;
  c.step.by = 1000;
  c.set(3);
  p->set(4);
  Counter::Step s; s.by = Counter::down;
  printf("%d\n", c.get());
  printf("%d %d %d\n", p->add(1), Counter::count(), s.by);
  return 0;
}
