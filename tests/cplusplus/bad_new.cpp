// proves: messages about what may not be made by new or given to delete
struct A { A(int); };
struct Incomplete;
struct NoDelete { static void *operator new(unsigned, int); static void operator delete(void *, int); };
struct Hidden { private: static void *operator new(unsigned); static void operator delete(void *); };
struct Two { operator int *(); operator char *(); };
struct Convertible { operator int *(); };
typedef int &Ref;
typedef void Function();
void f(int n, Incomplete *p, Function *pf, A *a, NoDelete *nd, Hidden *h, Two t, Convertible c)
{
  new int[-1]; // expect: error new_array_size_must_be_nonnegative
  new int[2](1); // expect: error initializer_not_allowed_on_array_new
  new A; // expect: error no_default_constructor
  new A(1, 2);                            // expect: error no_matching_constructor
  new A[n]; // expect: error no_default_constructor
  new int(1, 2); // expect: error too_many_initializer_values
  new int("x"); // expect: error bad_initializer_type
  new Incomplete; // expect: error incomplete_type_not_allowed
  new (Ref); // expect: error pointer_to_reference
  new (Function); // expect: error function_type_not_allowed
  new NoDelete; // expect: error function_does_not_match_arguments
  new Hidden; // expect: error no_access_to_name
  new (1, 2) int; // expect: error function_does_not_match_arguments
  delete p; // expect: warning delete_of_incomplete_class
  delete pf; // expect: error delete_of_function_pointer
  delete n; // expect: error expr_not_pointer
  delete nd; // expect: error no_appropriate_delete
  delete h; // expect: error no_access_to_name
  delete t; // expect: error ambiguous_conversion_to_builtin
  delete c;
  delete a;
}
enum { e = new int }; // expect: error bad_integral_operator
