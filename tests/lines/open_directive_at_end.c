// proves: a directive may be cut off by the end of the file
int a;
#define g(x