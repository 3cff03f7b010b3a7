int before9;
#include "deep10.h"
int after9 = __LINE__;
