// options: -n --c99 --remarks
// proves: repeated qualifiers are a remark in C99, what a for loop's declaration may not say is an error
const const int one = 1;  // expect: remark dupl_type_qualifier
typedef const int constant;
const constant two = 2;
void loops(void)
{
  for (static int n = 0; n < 3; ++n) ;  // expect: error invalid_storage_class_in_for_init
  for (extern int e; ; ) break;  // expect: error invalid_storage_class_in_for_init, expect: warning declared_but_not_referenced
}
const int returns_number(void);  // expect: remark useless_type_qualifier_on_return_type
int * inline pointer;  // expect: warning inline_qualifier_ignored
enum { a b };  // expect: error exp_rbrace
