// options: -M
// proves: each opened file gives a dependency line
#include "Inputs/one.h"
#include "Inputs/two.h"
int x;
