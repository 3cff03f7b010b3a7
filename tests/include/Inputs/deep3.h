before 3
#include "deep2.h"
behind 3 __LINE__
