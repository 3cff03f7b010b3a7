// options: --gcc
// proves: words of the C compiler get a prefix, external names stay
struct s { int fortran, pascal; };
static int pascal, regular;
int use(struct s *p) { return p->fortran + p->pascal + pascal + regular; }
