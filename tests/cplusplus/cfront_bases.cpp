// proves: the rule of old C++ that names of nested classes are known outside of them
// options: --cfront_3.0
struct Outer { struct Inner { int i; }; };
struct D : Inner { };                     // expect: warning nested_class_anachronism
