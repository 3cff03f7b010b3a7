// options: -n
// proves: a zero bound is a size of its own in GNU C; qualifiers of the outermost brackets go to the pointer
int zero[0];
typedef char check_1[sizeof(zero) + 1];
typedef char check_2[sizeof(check_1) == 1 ? 1 : -1];
void f(int a[const 3], int b[static 2]) { b++; *a = 1; }
int composite[], later[2 + 3];
int composite[7];
typedef char check_3[sizeof(composite) == 7 * sizeof(int) ? 1 : -1];
