before 7
#include "deep6.h"
behind 7 __LINE__
