/* options: -n --strict --c89 --remarks */
/* proves: what C89 takes only once or first is told where strictness is asked for */
const const int one = 1;  /* expect: error dupl_type_qualifier */
typedef const int constant;
const constant two = 2;  /* expect: error dupl_type_qualifier */
int static three = 3;  /* expect: warning storage_class_not_first */
unsigned extern four;  /* expect: warning storage_class_not_first */
typedef int number;
typedef int number;  /* expect: error duplicate_typedef */
const void returns_void(void);  /* expect: warning qualified_void_return_type */
const void defined_void(void) { }  /* expect: error type_qualifier_on_void_return_type */
const int returns_number(void);  /* expect: remark useless_type_qualifier_on_return_type */
typedef void nothing;
void no_params(nothing);  /* expect: error nonstd_void_param_list */
struct later tentative[2];  /* expect: error array_of_incomplete_type */
struct later { int n; };
int sum(void) { return three; }
