int before3;
#include "deep4.h"
int after3 = __LINE__;
