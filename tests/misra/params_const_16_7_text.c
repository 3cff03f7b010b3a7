// options: --gcc --check_misra=16.7
// proves: the message names the parameter and the type with const at each level that is not stored to
typedef char *STRING;
int plain(int *p) { return *p; }
int both(char *argv[]) { return argv[0][0]; }
void outer_only(char **v) { v[0][0] = 1; }
int of_array(int (*m)[3]) { return m[1][2]; }
int of_typedef(STRING s) { return *s; }
int qualified(volatile int *const p) { return *p; }
void unnamed(int *) {}
