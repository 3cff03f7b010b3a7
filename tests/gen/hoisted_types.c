// options: --gcc
// proves: types of functions keep their identity when they stand at file level
int printf(const char *, ...);
struct s { int a; };
typedef char word;
static int one(void) { struct s { char c[3]; } v; typedef double word; enum { K = 7 }; word w = K; return sizeof v + (int)w + sizeof(word); }
static int two(void) { struct s { struct s *next; long long l; } v; enum { K = 9 }; v.next = &v; return sizeof *v.next + K; }
static int three(struct s *p)
{
  word word = 'x';
  { struct s { short t; }; struct s v; return sizeof v + p->a + word; }
}
int main(void)
{
  struct s v = { 5 };
  printf("%d %d %d %d\n", one(), two(), three(&v), (int)sizeof(word));
  return 0;
}
