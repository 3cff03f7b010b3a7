// options: -P
// status: 4
// proves: a file that includes itself without end is stopped
#include "Inputs/self.h"
