// options: --gcc
// proves: a member with the name of an anonymous one's member is told by name while it is being entered
struct s {
  struct { int d; union { int e; char f[4]; }; };
  int *e; // expect-1: warning hidden_anonymous_union_field
};
struct t { int a; struct { int a; }; }; // expect: warning hidden_anonymous_union_field
