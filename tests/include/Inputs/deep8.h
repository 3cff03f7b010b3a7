before 8
#include "deep7.h"
behind 8 __LINE__
