// options: -M -IInputs
// proves: a line for each file the source depends on, with the object file's name
#include "pre.h"
#include <dir/plain>
