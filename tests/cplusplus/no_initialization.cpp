// proves: const and reference members that nothing can initialize, or that can't be assigned; members of unions
// options: --strict
struct A { const int c; int &r; int x; }; // expect: warning no_ctor_but_const_or_ref_member
struct B { const int c; B(); };
struct Holder { static const int fixed; const char *p; };
struct Made { Made(); };
struct Ends { ~Ends(); };
struct Copies { Copies(const Copies &); Copies &operator=(const Copies &); };
union U { int i; Made m; Ends e; Copies c; int &r; Holder fine; }; // expect: error bad_union_field expect: error bad_union_field expect: error bad_union_field expect: error ref_not_allowed_in_union
struct Fixed { const int c; int &r; Fixed(int &x) : c(1), r(x) { } }; // expect: error bad_default_assignment
void assign(Fixed &a, Fixed &b) { a = b; }
