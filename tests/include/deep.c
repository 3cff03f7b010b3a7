// proves: files nested deeper than the descriptors kept open come back where they were left
#include "Inputs/deep12.h"
after
