// options: -n
// proves: a structure beyond the limit is reported once
struct big { char a[0x1fffffff]; char b[0x1fffffff]; int c; };  // expect: error struct_too_large
char array[0x7fffffff][4];  // expect: error array_size_too_large
