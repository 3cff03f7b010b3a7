// options: -n
// proves: typedefs share the name space of objects, redeclare in inner scopes, name tags
typedef struct s s;
struct s { int m; };
typedef enum { one = 1 } number, *number_ptr;
typedef int T;
int f(T T) { return T; }
int g(void)
{
  T T = 3;
  if (T) return T;
  { typedef char T; T c = 1; return c + sizeof(T); }
}
int h(void) { s v; number n = one; number_ptr p = &n; v.m = *p; return v.m; }
typedef int function(int);
function declared;
int declared(int a) { return a; }
