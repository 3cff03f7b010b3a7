// options: --c99 --gcc --no_warnings
// proves: const members, bit-fields among them, are initialized and assigned as wholes
int printf(const char *, ...);
static int calls;
static int f(void)
{
  return ++calls;
}
struct fixed {
  const int a;
  int b;
  const char c[3];
  const struct {
    int z;
  } in;
};
static struct fixed make(int x)
{
  struct fixed made = {x, x + 1, "ab", {x}};
  return made;
}
int main(void)
{
  struct fixed one = make(3), two = one, both[2] = {make(7), [1] = make(9)};
  printf("%d %d %s %d %d\n", two.a, two.b, two.c, both[0].in.z, both[1].a);
  struct {
    const struct {
      const unsigned bits : 3;
      const int c;
    } in;
  } deep = {{f(), f()}};
  struct {
    const unsigned bits : 3;
    unsigned more : 5;
  } flat = {f(), f()};
  printf("%d %d %d %d\n", deep.in.bits, deep.in.c, flat.bits, flat.more);
  struct fixed *literal = &(struct fixed){f(), .in = {f()}, .c = "zz"};
  union {
    const float number;
    int i;
  } u = {f()};
  printf("%d %d %s %g\n", literal->a, literal->in.z, literal->c, u.number);
  return 0;
}
