before 9
#include "deep8.h"
behind 9 __LINE__
