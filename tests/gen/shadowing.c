// options: --gcc
// proves: no local name can capture a typedef, a routine or a global that the text needs inside it
int printf(const char *, ...);
typedef unsigned char byte;
struct big { byte b[40]; int n; };
static int count = 3;
static struct big source = { { 1, 2 }, 9 };
static int inner(struct big *p)
{
  int byte = 300, memcpy = 1, memset = 2, printf = 4;
  struct big copy, list[2] = { { { 7 } } };
  copy = *p;
  copy.b[1] = byte;
  { int count = copy.b[1]; { extern int count_of(int); int copy = count_of(count); return copy + list[0].b[0] + memcpy + memset + printf; } }
}
int count_of(int count) { return count + count; }
int main(void)
{
  printf("%d %d\n", inner(&source), count);
  return 0;
}
