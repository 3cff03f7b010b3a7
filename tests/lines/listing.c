// proves: lines as read, skipped lines, expanded lines and changes of file
#define f(x) (x+1)
int a = f(2); /* c */ int b;
int d = 1 ? 2 \
  : 3;
#if 0
skipped line
#endif
#include "Inputs/listed.h"
int g = /* a
 b */ f(3);
#line 100 "other.c"
int plain;
