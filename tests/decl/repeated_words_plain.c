// options: -n --no_gcc --remarks
// proves: the same is a warning or a remark where no strictness is asked for
const const int one = 1;  // expect: warning dupl_type_qualifier
typedef const int constant;
const constant two = 2;  // expect: remark dupl_type_qualifier
int static three = 3;  // expect: remark storage_class_not_first
typedef int number;
typedef int number;  // expect: warning duplicate_typedef
typedef int function();
typedef int function(int);  // expect: warning similar_typedef
long float wide;  // expect: warning nonstandard_long_float
int sum(void) { return three; }
