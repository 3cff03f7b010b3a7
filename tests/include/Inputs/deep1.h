before 1
#include "deep0.h"
behind 1 __LINE__
