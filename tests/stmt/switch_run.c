// proves: switch bodies with declarations, jumps into blocks, wide and mixed selectors
int printf(const char *, ...);
enum color { red, green = 5, blue };
static int duff(char *to, const char *from, int count)
{
  int n = (count + 7) / 8;
  switch (count % 8) {
  case 0: do { *to++ = *from++;
  case 7: *to++ = *from++;
  case 6: *to++ = *from++;
  case 5: *to++ = *from++;
  case 4: *to++ = *from++;
  case 3: *to++ = *from++;
  case 2: *to++ = *from++;
  case 1: *to++ = *from++;
          } while (--n > 0);
  }
  return n;
}
static int wide(long long n)
{
  switch (n) {
  case 0x100000001LL: return 1;
  case 1: return 2;
  case -1: return 3;
  case (long long)0x8000000000000000ULL: return 4;
  }
  return 0;
}
static int narrow(unsigned char c)
{
  switch (c) { case 200: return 1; case (unsigned char)-1: return 2; default: return c > 100; }
}
static int colors(enum color c)
{
  int result = 10;
  switch (c) {
    int hidden;
  case red: hidden = 1; result += hidden; /* falls through */
  case green: { int shown = 20; result += shown; break; }
  case blue: hidden = result; result = hidden * 2;
  }
  return result;
}
static int single(int n) { switch (n) case 3: return 30; return 4; }
static int empty(int n) { switch (n++) { } switch (n) { default: ; } return n; }
int main(void)
{
  char to[24] = "", from[] = "the quick brown fox jum";
  int left = duff(to, from, 23);
  printf("%s %d\n", to, left);
  printf("%d%d%d%d%d\n", wide(0x100000001LL), wide(1), wide(-1), wide(0x7fffffffffffffffLL + 0), wide(-0x7fffffffffffffffLL - 1));
  printf("%d%d%d%d\n", narrow(200), narrow(255), narrow(150), narrow(3));
  printf("%d %d %d %d %d %d\n", colors(red), colors(green), colors(blue), single(3), single(4), empty(6));
  return 0;
}
