int before4;
#include "deep5.h"
int after4 = __LINE__;
