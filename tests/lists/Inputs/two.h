#ifndef TWO
#define TWO 2
#define TWICE(x) ((x) * TWO)
#endif
