int before1;
#include "deep2.h"
int after1 = __LINE__;
