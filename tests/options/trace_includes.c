// options: -H --include_directory Inputs
// proves: the included files, indented by depth
#include "pre.h"
