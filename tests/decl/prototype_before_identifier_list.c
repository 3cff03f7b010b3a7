// proves: a definition with an identifier list keeps the types of an earlier prototype (GNU)
int printf(const char *, ...);
int f(short); int g(float, char);
int early(void) { return f(7000) + g(2.5, 30); }
int f(x) short x; { return x; }
int g(a,b) float a; char b; { return a * 10 + b; }
int (*fp)(short) = f;
double h(double);
double h(x) float x; { return x; }
int main(void) { printf("%d %d %d %d %d\n", early(), f(7000), g(1.5, 25), fp(65), (int)(h(0.1) * 1e9)); return 0; }
