// proves: the conditional operator yields an object where both arms are one; arms of classes convert to each other
extern "C" int printf(const char *, ...);
struct S { int v; operator int() const { return v; } };
struct T { int w; operator S() const { S s; s.v = w + 1; return s; } };
int main()
{
  int a = 1, b = 2, c = 1;
  (c ? a : b) = 10;
  (c > 5 ? a : b) += 5;
  int &r = c ? b : a;
  r++;
  printf("%d %d\n", a, b);
  S s, s2; T t; s.v = 4; s2.v = 5; t.w = 8;
  (c ? s : s2).v = 40;
  printf("%d %d\n", s.v, (c ? s : t).v);
  printf("%d\n", c ? s : 3);
  const char *text = c ? "yes" : "no";
  printf("%s %d\n", text, c ? 1 : 2.5 > 1);
  c ? a : b = 77;
  !c ? a : b = 78;
  printf("%d %d\n", a, b);
  const S cs = s;
  printf("%d\n", (c ? s2 : cs).v);
  return 0;
}
