// options: --dependencies --object_file=out/x.o --include_directory=Inputs
// proves: the object file's name comes from its option
#include "pre.h"
