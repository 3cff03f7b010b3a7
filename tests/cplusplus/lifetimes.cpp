// proves: objects die at the end of their blocks, at return, break, continue and goto, in the reverse order of their
// construction; temporaries at the end of the full expression; arrays, members, statics and objects of the file scope
extern "C" int printf(const char *, ...);
struct S {
  int v;
  S(int a) : v(a) { printf("+%d ", v); }
  S(const S &other) : v(other.v + 100) { printf("c%d ", v); }
  ~S() { printf("-%d ", v); }
  int value() const { return v; }
};
struct Holder {
  S first;
  int plain;
  S second;
  Holder(int a) : first(a), plain(7), second(a + 1) { printf("holder "); if (a > 1000) return; plain++; }
  ~Holder() { printf("end%d ", plain); if (plain == 9) return; plain = 0; }
};
S global(1);
Holder holder(2);
int use(const S &s) { return s.v; }
S make(int a) { return S(a); }
void line(const char *name) { printf("\n%s: ", name); }
int leave(int n)
{
  S a(10);
  for (int i = 0; i < 3; i++) {
    S l(20 + i);
    if (i == n) continue;
    if (n == 5 && i == 1) break;
    if (n == 6 && i == 1) goto out;
    if (n == 7 && i == 1) return l.value();
    S inner(30 + i);
  }
  {
    S b(40);
    while (n == 8) { S w(50); n = 9; }
    do { S d(60); if (n == 9) { n = 0; continue; } } while (0);
  }
out:
  line("out");
  return a.value();
}
int counted(int a)
{
  static S kept(a);
  return kept.v;
}
int main()
{
  static const int ways[] = {0, 5, 6, 7, 8};
  for (int i = 0; i < 5; i++) {
    line("leave");
    printf("=%d ", leave(ways[i]));
  }
  line("temporaries");
  int sum = use(S(70)) + use(S(71));
  printf("=%d ", sum);
  line("conditional");
  sum = sum > 0 ? use(S(72)) : use(S(73));
  sum > 0 && use(S(74));
  sum < 0 && use(S(75));
  line("made");
  S m = make(80);
  use(make(81));
  line("array");
  {
    S array[3] = {S(90), S(91), S(92)};
    array[1].v = 99;
  }
  line("statics");
  printf("%d %d ", counted(95), counted(96));
  const S &bound = S(97);
  line("end");
  return bound.v == 97 ? 0 : 1;
}
