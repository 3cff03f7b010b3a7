// proves: return types, exceptions and forms of functions that override, what they hide, and overriders that two
// classes give for one function
// options: --strict --exceptions
struct B { };
struct D : B { };
struct P : private B { };
struct Base {
  virtual int f();
  virtual B *pointer();
  virtual B &reference();
  virtual const B *constant();
  virtual void *any();
  virtual void narrow() throw(int);
  virtual void g(int);
  virtual void h(int);
  virtual void h(double);
  virtual ~Base() throw();
};
struct F1 : Base {
  long f();                               // expect: error bad_return_type_on_virtual_function_override
  D *pointer();
  D &reference();
  D *constant();
  const void *any();                      // expect: warning different_return_type_on_virtual_function_override
  void narrow();                          // expect: error exception_spec_override_incompat
};
struct F2 : Base { P *pointer(); };       // expect: error bad_return_type_on_virtual_function_override
struct F3 : Base { void narrow() throw(char); }; // expect: error exception_spec_override_incompat
struct F4 : Base { void narrow() throw(int); void g(char); }; // expect: warning virtual_function_decl_hidden
struct F5 : Base { void h(int); virtual void g(long); }; // expect: warning partial_override expect: warning partial_override
struct F6 : Base { static int f(); };     // expect: error virtual_static_not_allowed
struct Throws { ~Throws() throw(int); };
struct F8 : Base { Throws t; };           // expect: error generated_exception_spec_override_incompat
struct V { virtual void v(); };
struct L : virtual V { void v(); };
struct R : virtual V { void v(); };
struct J : L, R { };                      // expect: error ambiguous_virtual_function_override
struct K : L, R { void v(); };
struct { virtual void missing(); virtual void here() { } } unnamed; // expect: error unnamed_class_virtual_function_def_missing
