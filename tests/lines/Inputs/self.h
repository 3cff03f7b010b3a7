int a;
#include "self.h"
