before 5
#include "deep4.h"
behind 5 __LINE__
