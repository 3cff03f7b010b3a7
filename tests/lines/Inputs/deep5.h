int before5;
#include "deep6.h"
int after5 = __LINE__;
