#if LEVEL == 0
#undef LEVEL
#define LEVEL 1
#include "deep1.h"
int after0 = __LINE__;
#endif
