// proves: remarks on a class: access that isn't written, destructors of bases, operators new and delete that don't
// go together
// options: --remarks --no_exceptions
typedef unsigned size_t;
struct A { int a; };
class B1 : A { public: int b; };          // expect: remark missing_access_specifier
struct B2 : A { int b; };                 // expect: remark missing_access_specifier
struct Virtual { virtual void f(); virtual ~Virtual(); };
struct Plain { virtual void f(); ~Plain(); };
struct C1 : public Virtual { void f(); };
struct C2 : public Plain { void f(); };   // expect: remark base_class_with_nonvirtual_dtor
struct News { void *operator new(size_t); }; // expect: remark class_with_op_new_but_no_op_delete
struct Deletes { void operator delete(void *); }; // expect: remark class_with_op_delete_but_no_op_new
struct Both { void *operator new(size_t); void operator delete(void *, size_t); };
