// proves: references as parameters, results and objects, default arguments, functions of a namespace
// defined outside of it, and a program that runs
extern "C" int printf(const char *, ...);
void set(int &a) { a = 3; }
int sum(int a, int b = 4) { return a + b; }
int sum(int, int);
int &same(int &q) { return q; }
namespace N {
int half(int);
int v;
const int six = 6;
namespace M { int w; }
}
int N::half(int a) { return a / 2 + six + v; }
using namespace N;
int main()
{
  int z = 1;
  set(z);
  same(z) += 10;
  int k = 0;
  int &r = k;
  r = 7;
  N::v = 2;
  v++;
  M::w = 4;
  const int &cr = 5;
  printf("%d %d %d %d %d %d\n", z, sum(z), k, N::v, N::M::w + cr, half(8));
  return 0;
}
