// proves: each operator new has the operator delete that ends it when an initialization fails
// options: --remarks --exceptions
typedef unsigned size_t;
struct Pool { };
struct A { void *operator new(size_t); void *operator new(size_t, Pool &); void operator delete(void *); }; // expect: remark no_corresponding_member_delete
struct B { void *operator new(size_t, Pool &); void operator delete(void *, Pool &); };
struct C { void *operator new[](size_t); }; // expect: remark no_corresponding_member_delete
struct D { void *operator new[](size_t); void operator delete[](void *, size_t); };
