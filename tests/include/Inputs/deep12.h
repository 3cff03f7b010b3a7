before 12
#include "deep11.h"
behind 12 __LINE__
