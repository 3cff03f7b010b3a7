before 11
#include "deep10.h"
behind 11 __LINE__
