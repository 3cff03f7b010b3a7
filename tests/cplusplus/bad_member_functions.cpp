// proves: what a class may not declare among its functions
struct S {
  void f(int);
  int f(int); // expect: error return_type_cannot_distinguish_functions
  void f(int); // expect: error member_function_redeclaration
  static void f(char);
  void f(char); // expect: error static_nonstatic_with_same_param_types
  virtual static void g(); // expect: error virtual_static_not_allowed
  static int h() const; // expect: error function_qualifier_on_static_member
  void p() = 0; // expect: error pure_specifier_on_nonvirtual_function
  virtual void q() = 1; // expect: error bad_pure_specifier
  struct T { } t(); // expect: error type_def_not_allowed_in_func_type_decl
  int S(); // expect: error return_type_on_constructor
  void ~S(); // expect: error return_type_on_destructor
  int operator long(); // expect: error return_type_on_conversion_function
  static operator char(); // expect: error bad_conversion_function_decl
  operator void(); // expect: warning conversion_function_not_usable
  operator S(); // expect: warning conversion_function_not_usable
  static S operator+(S); // expect: error static_member_operator_not_allowed
  void k(void (*)(int = 3)); // expect: error default_arg_expr_not_allowed
  void d(int = 1 2); // expect: error unexpected_end_of_default_arg
  typedef void F();
  F body { } // expect: error function_type_must_come_from_declarator
};
struct V {
  V(V); // expect: error bad_constructor_param
  ~V(int); // expect: error too_many_params_for_destructor
};
struct W { ~S(); }; // expect: error bad_destructor_decl
struct C { int operator; }; // expect: error exp_operator
struct I {
  int value;
  int set(int v) { value = v; return this->value; }
  I(int v) : value(v), missing(v) { } // expect: error not_a_field_or_base_class
  I() : 5 { } // expect: error missing_base_class_or_member_name
};
int loose() { return this->value; } // expect: error this_used_incorrectly
void call(const I *i) { i->set(1); } // expect: error unqual_function_with_qual_object
