// proves: a member without members of its own takes one value, which is one too many (GNU)
int printf(const char *, ...);
struct s0 { };
struct { struct s0 e; int a; } x = { 5 };  // expect: warning excess_initializers_ignored
struct { int z[0]; int a; int b; } y = { 5, 6 };  // expect: warning excess_initializers_ignored
struct { int n; struct s0 e[2]; int a; } w = { 1, 2 };  // expect: warning excess_initializers_ignored
int a3[1][0] = { 1, 2 };  // expect: warning excess_initializers_ignored
struct s0 b3[1][0] = { 1, 2 };  // expect: warning excess_initializers_ignored
struct s0 v; struct { struct s0 e; int a; } u[2];
int main(void) { struct { struct s0 e; int a; } l = { v, 7 }; printf("%d %d %d %d %d %d\n", x.a, y.a, y.b, w.n, w.a, l.a); return 0; }
