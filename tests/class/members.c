// options: -n
// proves: members of structures and unions, anonymous ones reached by name (GNU)
struct s {
  int a, *b, c[3];
  struct { int d; union { int e; char f[4]; }; };
  union u { int g; double h; } i;
  struct s *self;
  enum in { first, second } j;
  void (*k)(struct s *);
} v;
struct flex { int n; char data[]; };
struct empty { };
typedef char check_1[sizeof(struct empty) == 0 ? 1 : -1];
typedef char check_2[sizeof(struct flex) == sizeof(int) ? 1 : -1];
union u outside;
enum in usable = second;
int use(struct s *p) { v.self = p; p->e = p->d; return p->f[0] + p->i.g + p->j + outside.g; }
