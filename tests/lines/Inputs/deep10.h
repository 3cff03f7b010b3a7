int before10;
#include "deep11.h"
int after10 = __LINE__;
