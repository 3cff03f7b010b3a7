// options: --remarks --diag_suppress=179 --diag_suppress=552
// proves: messages about the initialization of class objects: constructors that don't fit or can't be used, objects
// that need a value, lists of member initializers
struct Y;
struct A { A(int); A(int, int); };
struct D { D(); int x; private: ~D(); };
struct P { P(); private: P(int); };
struct NoDefault { NoDefault(int); };
struct Twice { Twice(int = 1); Twice(long = 2); };
struct Plain { int a; const int c; int &r; }; // expect: warning no_ctor_but_const_or_ref_member
struct Abstract { virtual void f() = 0; };
struct Later;
int i;
A a1(1, 2, 3); // expect: error no_matching_constructor
A a2; // expect: error no_default_constructor
A a3[2]; // expect: error no_default_constructor
A a4 = "x"; // expect: error no_constructor_for_conversion
A a5 = { 1, 2 }; // expect: error brace_initialization_not_allowed
D d1; // expect: error no_access_to_name
P d2(1); // expect: error no_access_to_name
Twice t; // expect: error ambiguous_default_constructor
Later l; // expect: error incomplete_type_not_allowed
const int ci; // expect: error missing_initializer_on_const
int &ri; // expect: error missing_initializer_on_reference
struct Open { int x; };
const Open open; // expect: error missing_default_constructor_on_const
struct M {
  int first, second;
  const int fixed;
  int &ref;
  NoDefault inner;
  int list[2];
  static int shared;
  struct Nested { };
  M(int) : second(1), first(2), fixed(3), ref(i), inner(4) {} // expect: remark out_of_order_ctor_init
  M(char) : first(1), first(2), fixed(3), ref(i), inner(4) {} // expect: error member_already_initialized
  M(short) : fixed(3), ref(), inner(4) {} // expect: error default_init_of_reference
  M(long) : nothing(1), fixed(3), ref(i), inner(4) {} // expect: error not_a_field_or_base_class
  M(float) : shared(1), fixed(3), ref(i), inner(4) {} // expect: error not_a_field_or_base_class
  M(double) : fixed(3), ref(i), inner(4), list(1) {} // expect: error array_member_initialization
  M(int *) : inner(4) {} // expect: error missing_initializer_on_fields
  M(char *) : fixed(3), ref(i) {} // expect: error no_default_constructor
  M(short *) : M::first(1), fixed(3), ref(i), inner(4) {} // expect: error qualified_name_not_allowed
  M(long *) : first(1, 2), fixed(3), ref(i), inner(4) {} // expect: error too_many_initializer_values
  M(float *) : int(1), fixed(3), ref(i), inner(4) {} // expect: error missing_base_class_or_member_name
  M(double *) : (1), fixed(3), ref(i), inner(4) {} // expect: error missing_base_class_or_member_name
  int f() { return 1; }
};
union U { int a; long b; U() : a(1), b(2) {} }; // expect: error union_already_initialized
void g()
{
  A x(1), y = x, z; y = x; // expect: error no_default_constructor
  A w(x, x); // expect: error no_matching_constructor
  D d; // expect: error no_access_to_name
  extern A e(1); // expect: error cannot_initialize
  goto end; // expect: error branch_past_initialization
  A late(3); // expect: warning initialization_not_reachable
end:;
  A(1, 2, 3, 4); // expect: error no_matching_constructor
}
struct HasConst { const int c; };         // expect: warning no_ctor_but_const_or_ref_member
struct Around {
  HasConst part;
  int plain;
  Around() : plain(1) {} // expect: error missing_initializer_on_fields
};
struct Aggregate { int a; const int c; }; // expect: warning no_ctor_but_const_or_ref_member
Aggregate whole = { 1, 2 };
Aggregate part = { 1 }; // expect: error var_with_uninitialized_member
int count();
int dynamic_static() { return ({ static int s = count(); s; }); } // expect: error dyn_local_static_in_statement_expr
