// proves: new and delete of scalars, objects and arrays, with values, placement and functions of the class; the
// number of elements is kept for destructors; deleting a null pointer does nothing; delete through a base class
extern "C" int printf(const char *, ...);
extern "C" void *malloc(unsigned);
extern "C" void free(void *);
struct A {
  int x;
  A() : x(5) { printf("A()\n"); }
  A(int v, int w = 2) : x(v * w) { printf("A %d\n", x); }
  ~A() { printf("~A %d\n", x); }
};
struct Def { int v; Def(int a = 9) : v(a) {} };
struct Own {
  int v;
  Own(int a) : v(a) {}
  static void *operator new(unsigned size) { printf("own new %u\n", size); return malloc(size); }
  static void operator delete(void *p, unsigned size) { printf("own delete %u\n", size); free(p); }
  static void *operator new[](unsigned size) { printf("own new[] %u\n", size); return malloc(size); }
  static void operator delete[](void *p) { printf("own delete[]\n"); free(p); }
  Own() : v(3) {}
};
struct Kept {
  int v;
  Kept() : v(4) {}
  ~Kept() { printf("~Kept %d\n", v); }
  static void *operator new[](unsigned size) { printf("kept new[] %u\n", size); return malloc(size); }
  static void operator delete[](void *p) { printf("kept delete[]\n"); free(p); }
};
struct Plain { int a, b; };
inline void *operator new(unsigned, void *p) { return p; }
int calls;
int number() { return ++calls + 2; }
char room[64];
int main()
{
  int *i = new int, *j = new int(7), *k = new int();
  *i = 3;
  printf("%d %d %d\n", *i, *j, *k);
  delete i; delete j; delete k;
  A *a = new A, *b = new A(4), *c = new A(6, 7);
  printf("%d %d %d\n", a->x, b->x, c->x);
  delete b; delete a; delete c;
  A *list = new A[3];
  for (int n = 0; n < 3; n++) list[n].x = 20 + n;
  delete[] list;
  A *some = new A[number()];
  printf("calls %d\n", calls);
  delete[] some;
  int *ints = new int[number()];
  ints[3] = 11;
  printf("%d %d\n", ints[3], calls);
  delete[] ints;
  int (*rows)[4] = new int[number()][4];
  rows[2][3] = 8;
  printf("%d\n", rows[2][3]);
  delete[] rows;
  Def *defs = new Def[3];
  printf("%d %d\n", defs[0].v, defs[2].v);
  delete[] defs;
  Own *o = new Own(8), *os = new Own[2];
  printf("%d %d\n", o->v, os[1].v);
  delete o; delete[] os;
  Kept *kept = new Kept[2];
  kept[1].v = 6;
  delete[] kept;
  Plain *p = new Plain(), *q = new (room) Plain;
  printf("%d %d\n", p->a, (char *)q == room);
  A *placed = new (room) A(50, 1);
  placed->~A();
  delete p;
  A *none = 0;
  delete none;
  delete[] none;
  int zero = 0;
  for (int n = 0; n < 3; n++) zero += (new int[4]())[n];
  printf("%d %d\n", zero, (*new Def).v + (new Def(1))->v);
  int **pp = new int *(new int(12));
  printf("%d\n", **pp);
  delete *pp;
  ::delete pp;
  Own *global = ::new Own(77);
  printf("%d\n", global->v);
  ::delete global;
  return 0;
}
