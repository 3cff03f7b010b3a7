before 4
#include "deep3.h"
behind 4 __LINE__
