// proves: names of functions, operators, members, namespaces and types are those of the IA-64 ABI; each is called by
// its external name
extern "C" int printf(const char *, ...);
struct A {
  int v;
  int plain(int, A *, A &) const;
  int operator[](int) volatile;
  int operator&();
  int operator&(int);
  int operator()(short, ...);
  operator int() const;
  operator const A *&();
  static int common(A *, A **);
  enum E { e1 };
  struct In { int x; int f(In *, A *, E *); };
};
const A *last;
int A::plain(int, A *, A &) const { return v + 1; }
int A::operator[](int) volatile { return v + 2; }
int A::operator&() { return v + 3; }
int A::operator&(int) { return v + 4; }
int A::operator()(short, ...) { return v + 5; }
A::operator int() const { return v + 6; }
A::operator const A *&() { last = this; return last; }
int A::common(A *, A **) { return 8; }
int A::In::f(In *, A *, E *) { return x + 1; }
namespace N {
struct S { int v; };
int operator+(const S &a, const S &) { return a.v + 1; }
int operator-(const S &a) { return a.v + 2; }
void operator*=(S &a, int *const *) { a.v = 99; }
namespace M { enum E { x, y }; int f(E, E *, E *, S s) { return s.v + 3; } }
int g(int (*p)(S, S &), int[3], int (&b)[4], const char *const *, const volatile int *) { return b[0]; }
int h(const S *, const S *, S *p, const S &) { return p->v; }
}
namespace std { struct Q { int a; }; int qq(Q q, Q *, Q *) { return q.a; } namespace in { int r(Q q) { return q.a; } } }
typedef void (*FP)(int, char);
typedef struct { int a; } TD;
int f(unsigned char, signed char, char, short, unsigned short, unsigned, long, unsigned long) { return 1; }
int f(long long, unsigned long long, float, double, long double, bool, wchar_t) { return 2; }
int f(int, ...) { return 3; }
int t(FP, FP, FP *) { return 4; }
int u(void (*)(FP), int *, int *, int **) { return 5; }
int td(TD *, TD t) { return t.a; }
int z(const char (&a)[7]) { return a[0]; }
int many(int *, int **, int ***, char *, char **, short *, short **, long *, long **, float *, float **, double *,
         double **, double **, bool *, bool *) { return 6; }
int local(int n)
{
  struct L { int f(L *) { return 7; } struct M { int g(L *, M *) { return 8; } }; };
  L l;
  L::M m;
  if (n) { struct L { int f() { return 9; } }; L other; n = other.f(); }
  return l.f(&l) * 100 + m.g(&l, &m) * 10 + n;
}
extern "C" {
int _ZNK1A5plainEiPS_RS_(const A *, int, A *, A &);
int _ZNV1AixEi(volatile A *, int);
int _ZN1AadEv(A *);
int _ZN1AanEi(A *, int);
int _ZN1AclEsz(A *, short, ...);
int _ZNK1AcviEv(const A *);
const A *&_ZN1AcvRPKS_Ev(A *);
int _ZN1A6commonEPS_PS0_(A *, A **);
int _ZN1A2In1fEPS0_PS_PNS_1EE(A::In *, A::In *, A *, A::E *);
int _ZN1NplERKNS_1SES2_(const N::S &, const N::S &);
int _ZN1NngERKNS_1SE(const N::S &);
void _ZN1NmLERNS_1SEPKPi(N::S &, int *const *);
int _ZN1N1M1fENS0_1EEPS1_S2_NS_1SE(N::M::E, N::M::E *, N::M::E *, N::S);
int _ZN1N1gEPFiNS_1SERS0_EPiRA4_iPKPKcPVKi(int (*)(N::S, N::S &), int *, int (&)[4], const char *const *,
                                           const volatile int *);
int _ZN1N1hEPKNS_1SES2_PS0_RS1_(const N::S *, const N::S *, N::S *, const N::S &);
int _ZSt2qqSt1QPS_S0_(std::Q, std::Q *, std::Q *);
int _ZNSt2in1rESt1Q(std::Q);
int _Z1fhacstjlm(unsigned char, signed char, char, short, unsigned short, unsigned, long, unsigned long);
int _Z1fxyfdebw(long long, unsigned long long, float, double, long double, bool, wchar_t);
int _Z1fiz(int, ...);
int _Z1tPFvicES0_PS0_(FP, FP, FP *);
int _Z1uPFvPFvicEEPiS3_PS3_(void (*)(FP), int *, int *, int **);
int _Z2tdP2TDS_(TD *, TD);
int _Z1zRA7_Kc(const char (&)[7]);
int _Z4manyPiPS_PS0_PcPS2_PsPS4_PlPS6_PfPS8_PdPSA_SB_PbSC_(int *, int **, int ***, char *, char **, short *, short **,
                                                          long *, long **, float *, float **, double *, double **,
                                                          double **, bool *, bool *);
int _ZZ5localiEN1L1fEPS_(void *, void *);
int _ZZ5localiEN1L1M1gEPS_PS0_(void *, void *, void *);
int _ZZ5localiEN1L1fE_0v(void *);
}
int main()
{
  A a = {10};
  A *pa = (A *)(void *)&reinterpret_cast<char &>(a);
  A::In in = {20};
  N::S s = {30};
  std::Q q = {40};
  TD d = {50};
  int four[4] = {60};
  printf("%d %d %d %d %d\n", _ZNK1A5plainEiPS_RS_(pa, 1, pa, a), _ZNV1AixEi(pa, 1), _ZN1AadEv(pa), _ZN1AanEi(pa, 1),
         _ZN1AclEsz(pa, 1));
  printf("%d %d %d %d\n", _ZNK1AcviEv(pa), _ZN1AcvRPKS_Ev(pa) == pa, _ZN1A6commonEPS_PS0_(pa, &pa),
         _ZN1A2In1fEPS0_PS_PNS_1EE(&in, &in, pa, 0));
  _ZN1NmLERNS_1SEPKPi(s, 0);
  printf("%d %d %d %d %d\n", _ZN1NplERKNS_1SES2_(s, s), _ZN1NngERKNS_1SE(s),
         _ZN1N1M1fENS0_1EEPS1_S2_NS_1SE(N::M::x, 0, 0, s), _ZN1N1gEPFiNS_1SERS0_EPiRA4_iPKPKcPVKi(0, 0, four, 0, 0),
         _ZN1N1hEPKNS_1SES2_PS0_RS1_(&s, &s, &s, s));
  printf("%d %d\n", _ZSt2qqSt1QPS_S0_(q, &q, &q), _ZNSt2in1rESt1Q(q));
  printf("%d %d %d\n", _Z1fhacstjlm(1, 2, 3, 4, 5, 6, 7, 8), _Z1fxyfdebw(1, 2, 3, 4, 5, true, L'x'), _Z1fiz(1));
  printf("%d %d %d %d\n", _Z1tPFvicES0_PS0_(0, 0, 0), _Z1uPFvPFvicEEPiS3_PS3_(0, 0, 0, 0), _Z2tdP2TDS_(&d, d),
         _Z1zRA7_Kc("abcdef"));
  printf("%d\n", _Z4manyPiPS_PS0_PcPS2_PsPS4_PlPS6_PfPS8_PdPSA_SB_PbSC_(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
  printf("%d %d\n", local(0), local(1));
  return 0;
}
