before 10
#include "deep9.h"
behind 10 __LINE__
