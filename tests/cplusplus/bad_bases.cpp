// proves: the words and names of a base clause, and classes that can't be bases
// options: --strict
struct A { int a; };
union U { int u; };
class Later;
enum E { one };
struct B1 : virtual virtual A { };        // expect: error dupl_decl_specifier
struct B2 : public private A { };         // expect: error access_already_specified
struct B5 : U { };                        // expect: error bad_base_class
struct B6 : one { };                      // expect: error not_a_class_or_struct_name
struct B7 : Later { int x; } b7;          // expect: error incomplete_type_not_allowed
struct B8 : A, A { };                     // expect: error dupl_base_class_name
union V : A { int v; };                   // expect: error base_class_not_allowed_for_union
struct B9 : A;                            // expect: error missing_class_definition
struct C1 : A { }; struct C2 : A { };
struct Both : public C1, public C2 { int get(); };
int Both::get() { return a; }             // expect: error ambiguous_name
int left = b7.x;
