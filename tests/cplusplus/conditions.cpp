// proves: declarations as conditions of if, while, for and switch; loops evaluate them again
extern "C" int printf(const char *, ...);
int left = 4;
int next() { return left--; }
int *find(int *list, int count, int what)
{
  for (int i = 0; i < count; i++)
    if (list[i] == what) return list + i;
  return 0;
}
enum Color { red, green, blue };
Color pick(int n) { return Color(n); }
int main()
{
  int list[3] = { 5, 6, 7 };
  if (int *p = find(list, 3, 6)) printf("found %d\n", (int)(p - list));
  else printf("missing %d\n", p == 0);
  if (int *p = find(list, 3, 9)) printf("found %d\n", *p);
  else printf("missing %d\n", p == 0);
  while (const int n = next()) {
    if (n == 3) continue;
    printf("while %d\n", n);
  }
  left = 3;
  for (int i = 0; int n = next(); i++) {
    if (n == 2) continue;
    printf("for %d %d\n", i, n);
  }
  switch (Color c = pick(1)) {
  case red: printf("red\n"); break;
  case green: printf("green %d\n", c);
  default: printf("through\n");
  }
  if (double d = 0.5) printf("%d\n", (int)(d * 4));
  if (int a = 1) { int b = 2; printf("%d\n", a + b); }
  return 0;
}
