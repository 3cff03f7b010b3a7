// options: --strict
// proves: what a definition outside of a class or namespace may not say
struct B { void inherited(); };
struct A {
  void f();
  int field;
  static int object;
  struct Inner;
  struct Outer { void g(); };
  A();
};
struct Unfinished;
void A::missing() { } // expect: error not_a_member
void A::f(); // expect: error member_function_redecl_outside_class
void A::f(int) { } // expect: error not_compatible_with_previous_decl
int A::field; // expect: error nonstatic_member_def_not_allowed
static int A::object; // expect: error storage_class_not_allowed
double A::object = 1; // expect: error not_compatible_with_previous_decl
void Unfinished::f() { } // expect: error incomplete_type_not_allowed
void A::Outer::g() { }
struct A::Inner { int n; };
struct A::Nowhere { }; // expect: error not_a_tag_member
struct ::Global { }; // expect: error name_not_tag_in_file_scope
namespace N { void f(); struct S { void m(); }; namespace In { void q(); } }
namespace M {
void N::f() { } // expect: error bad_scope_for_definition
void N::In::q(); // expect: error bad_scope_for_redeclaration
}
void local()
{
  struct L { static int s; }; // expect: error static_data_member_not_allowed
}
