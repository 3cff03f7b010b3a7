/* options: -n --old_c */
/* proves: old C lets size and sign words bend a typedef, and has long float */
typedef int word;
typedef char byte;
typedef float real;
typedef struct { int n; } pack;
unsigned word a;
int check1[(unsigned word)-1 > 0 ? 1 : -1];
unsigned byte b;
int check2[sizeof(unsigned byte) == 1 ? 1 : -1];
long real c;
int check3[sizeof(long real) == sizeof(double) ? 1 : -1];
short word d;
int check4[sizeof(short word) == 2 ? 1 : -1];
unsigned pack e;  /* expect: error id_already_declared, expect: error exp_semicolon */
unsigned real f;  /* expect: error id_already_declared, expect: error exp_semicolon */
long float g;
long double h;
