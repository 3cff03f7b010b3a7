// proves: messages about members that are named without an object, not found, not accessible, or not called
struct A {
  int x;
  int f();
  int g(int);
  static int s();
  static int t() { return x; } // expect: error member_ref_requires_object
  static A *u() { return this; } // expect: error this_used_incorrectly
  int bits : 3;
private:
  int hidden;
  void secret(int);
  void secret(double);
};
struct B { int y; B *operator->(); };
struct Loop { Loop operator->(); int z; };
struct Opaque;
int use(A a, A *p, B b, Loop l, Opaque *o, int i)
{
  int n = a.nothing; // expect: error not_a_member
  n += p->nothing; // expect: error not_a_member
  n += A::nothing; // expect: error not_a_member
  n += ::nothing; // expect: error name_not_found_in_file_scope
  n += a.hidden; // expect: error no_access_to_name
  a.secret(1); // expect: error no_access_to_name
  n += A::x; // expect: error member_ref_requires_object
  n += A::f(); // expect: error member_ref_requires_object
  a.f; // expect: error bound_function_must_be_called
  n += a.f + 1; // expect: error bound_function_must_be_called
  n += a.B::y; // expect: error name_not_member_of_class_or_base_classes
  n += b->y;
  n += l->z; // expect: error op_arrow_loop
  n += o->z; // expect: error ptr_to_incomplete_class_type_not_allowed
  n += i.z; // expect: error expr_not_class
  n += i->z; // expect: error expr_not_pointer
  n += a->x; // expect: error expr_not_pointer
  n += p.x; // expect: error expr_not_class
  a(1); // expect: error bad_call_of_class_object
  p->~B(); // expect: error destructor_type_mismatch
  p->~nothing(); // expect: error destructor_name_mismatch
  p->~int(); // expect: error invalid_destructor_name
  int A::*m = &A::bits; // expect: error address_of_bit_field
  n += a.*i; // expect: error expr_not_ptr_to_member
  m = &A::x;
  n += b.*m; // expect: error incompatible_ptr_to_member_selection_operands
  n += i.*m; // expect: error expr_not_class
  n += i->*m; // expect: error expr_not_pointer
  int (A::*pf)() = A::f; // expect: warning nonstd_member_function_address
  int (A::*pg)() = &(A::f); // expect: warning nonstd_member_function_address
  (a.*pf); // expect: error bound_function_must_be_called
  n += m == pf; // expect: error incompatible_operands
  return n + (m < m) + (pg == 0); // expect: error incompatible_operands
}
struct Y;
struct X { X(Y); };
struct Y { Y(X); };
void ambiguous(X x, Y y, int c) { c ? x : y; } // expect: error ambiguous_question_operator
struct Abstract {
  virtual void pure() = 0;
  void g() { pure(); Abstract::pure(); } // expect: warning call_of_pure_virtual
};
