// proves: what two declarations of functions and names of namespaces may not say
int f(int);
double f(int); // expect: error return_type_cannot_distinguish_functions
int g(int a, int b = 1);
int g(int a, int b = 2); // expect: error default_arg_already_defined
int h(int a = 1, int b); // expect: error default_arg_not_at_end
extern "C" int c(int);
extern "C" int c(double); // expect: error overloaded_function_linkage
namespace N { int a; int f(int); int f(char); }
int N::b; // expect: error not_a_member
int N::f(double) { return 0; } // expect: error not_compatible_with_previous_decl
namespace N { int ::q; } // expect: error name_not_found_in_file_scope
int use() { return a; } // expect: error undefined_identifier
