int before8;
#include "deep9.h"
int after8 = __LINE__;
