// options: -P
// proves: files above the eighth are closed and read on at the right place
#define LEVEL 0
#include "Inputs/deep.h"
int last;
