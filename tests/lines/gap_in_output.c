// options: -E
// proves: up to five lines that are left out leave blank lines, more a line marker
int a;
#define a1
#define a2
#define a3
#define a4
#define a5
int b;
#define b1
#define b2
#define b3
#define b4
#define b5
#define b6
int c;
