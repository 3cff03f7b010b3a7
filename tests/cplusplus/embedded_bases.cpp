// proves: one base that isn't virtual is all that Embedded C++ allows
// options: --embedded_c++
class A { public: int a; };
class B { public: int b; };
class C : public A { };
class D : public A, public B { };         // expect: error multiple_inheritance_in_embedded_cplusplus
class E : public virtual A { };           // expect: error multiple_inheritance_in_embedded_cplusplus
