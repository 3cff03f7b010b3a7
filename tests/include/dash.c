// options: -IInputs/first -I- -IInputs/second
// proves: a folder in front of -I- is searched for the quoted form only
#include "level.h"
#include <level.h>
