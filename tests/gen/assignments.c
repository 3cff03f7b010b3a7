// proves: assignments to parts that generated C can't name by a plain cast: volatile, packed, nested and returned objects
int printf(const char *, ...);
struct bits { unsigned a : 3; int b : 5; unsigned : 0; unsigned long long c : 17; signed char d : 4; };
struct pack { char c; int n; short s; double d; } __attribute__((packed));
volatile struct { int n; struct bits b; } port;
union view { float f; unsigned u; unsigned char bytes[4]; };
struct big { int v[20]; };
static struct big make(int n) { struct big b = {{n, n + 1}}; b.v[19] = n * 2; return b; }
static union view as_view(float f) { union view v; v.f = f; return v; }
static struct pack packs[3] = {{1, 2, 3, 4.5}, {.s = -1}};
static int bit_fields(int n)
{
  struct bits b = {5, -3, 70000, 2};
  b.a += n; b.b--; b.c <<= 1; b.d = -b.d; b.a ^= 6;
  b.b = b.a = n + 6;
  return b.a + b.b * 10 + (int)b.c * 100 + b.d + (b.a++ * 3) + --b.b;
}
static int ports(int n)
{
  port.n = n; port.b.a = n; port.b.c = port.n + port.b.a;
  struct { int n; struct bits b; } copy;
  copy.b = port.b;
  port.b.b |= 9;
  return port.n++ + copy.b.c * 10 + port.b.b * 1000 + port.n;
}
static int packed(int n)
{
  struct pack *p = &packs[1], q;
  p->n = n; p->d = n / 2.0; p->s *= n;
  q = *p;
  packs[2] = packs[0];
  packs[2].n += q.n++;
  return q.n + (int)(p->d * 10) + p->s + packs[2].n * 100 + (int)sizeof q * 10000 + (int)packs[2].d;
}
static int results(int n)
{
  struct big a, b[2];
  a = b[1] = make(n);
  b[0] = n ? make(3) : a;
  *(n > 2 ? &a : &b[1]) = make(8);
  return a.v[19] + b[0].v[1] * 10 + b[1].v[0] * 100 + make(5).v[19] * 1000 + (as_view(1.0f).u >> 23) + as_view(2).bytes[3] + (a = make(1)).v[1];
}
int main(void)
{
  printf("%d %d %d\n", bit_fields(1), bit_fields(2), ports(5));
  printf("%d %d %d\n", packed(6), results(1), results(4));
  return 0;
}
