int before6;
#include "deep7.h"
int after6 = __LINE__;
