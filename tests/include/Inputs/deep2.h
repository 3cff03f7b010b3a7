before 2
#include "deep1.h"
behind 2 __LINE__
