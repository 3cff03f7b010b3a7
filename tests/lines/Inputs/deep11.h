int before11;
#include "deep12.h"
int after11 = __LINE__;
