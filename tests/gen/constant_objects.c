// options: --gcc
// proves: const objects take values that aren't constant, each time their declaration is passed
int printf(const char *, ...);
struct point { const int x, y; };
struct pair { struct point p[2]; const char *const name; };
static struct point make(int k) { struct point p = { k, -k }; return p; }
int main(int argc, char **argv)
{
  int i = 0;
again:
  {
    const int c = i * 2;
    const int list[3] = { i, 10, argc + i };
    const struct point p = make(i), q = { argc, i };
    const struct pair pair = { { { i, 1 }, make(4) }, "name" };
    const char *const words[] = { "a", i ? "b" : "c" };
    static const int fixed[2] = { 5, 6 };
    int counter = 1;
    counter += i;
    printf("%d %d %d %d %d %d\n", c, list[0], list[2], p.y, q.y, pair.p[1].x);
    printf("%s %s %d %d\n", pair.name, words[1], fixed[1], counter);
  }
  if (++i < 3) goto again;
  return 0;
}
