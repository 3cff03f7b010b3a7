int before7;
#include "deep8.h"
int after7 = __LINE__;
