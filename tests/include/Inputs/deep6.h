before 6
#include "deep5.h"
behind 6 __LINE__
