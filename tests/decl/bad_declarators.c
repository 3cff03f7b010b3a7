// options: -n
// proves: derived types that can't be are reported at the part that makes them
int a[3](void);            // expect: error array_of_function
void b[2];                 // expect: error array_of_void
int c(void)(void);         // expect: error function_returning_function
int d(void)[3];            // expect: error function_returning_array
int e[][];                 // expect: error bad_array_element_type
int f[-1];                 // expect: error array_size_must_be_positive
int g[1.5];                // expect: error expr_not_integral_constant
int h(int, void);          // expect: error void_param_not_allowed
int i(const void);         // expect: error void_param_not_allowed
int j(int x, int x);       // expect: error dupl_param_name
int *restrict_;
int *__restrict k;
int __restrict l;          // expect: error restrict_not_allowed
int (*__restrict m)(void); // expect: error restrict_pointer_to_function
int n(int x = 1);          // expect: error initializer_in_param
int o[*];                  // expect: error vla_with_unspecified_bound_not_allowed
int p[const 3];            // expect: error type_qualifier_not_allowed
