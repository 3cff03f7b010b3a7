// options: -E --c99 --strict
// status: 4
// proves: a missing file ends the run
#include "not_there.h"
