// options: -n
// proves: K&R definitions: declarations in any order, int by default, prototypes beside them
int plus(a, b) int b; { return a + b; }
double mixed(c, f, p, r) char c; float f; int p[]; register int r; { return c + f + p[0] + r; }
int none() { return 0; }
int plus(int, int);
typedef int T;
int takes_typedef(T) ;
int calls(void) { int v[1]; v[0] = 1; return plus(1, 2) + (int)mixed(1, 2.0, v, 3) + none(); }
