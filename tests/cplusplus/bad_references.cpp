// options: --remarks --no_anachronisms
// proves: references bind only to what they may; temporaries and lost qualifiers are reported
struct S { int x; };
int ops(const volatile int &);
typedef int F(int);
int set(int);
int set(long);
void refs(long l, const volatile int cv, int i, S s)
{
  const int &temporary = l;          // expect: remark temp_used_for_ref_init
  const volatile int &a = 3;         // expect: error const_volatile_ref_init_from_rvalue
  const volatile int &b = l;         // expect: error bad_const_volatile_ref_init
  int &c = cv;                       // expect: error qualifier_dropped_in_ref_init
  F &chosen = set;
  (void)temporary; (void)a; (void)cv; (void)b; (void)c; (void)chosen; (void)i; (void)s;
}
const long &returns_temporary(int i)
{
  // expect+1: remark temp_used_for_ref_init
  return i;                          // expect: warning return_ref_init_requires_temp
}
