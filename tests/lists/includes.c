// options: -H
// proves: included files are listed with their depth
#include "Inputs/one.h"
#include "Inputs/two.h"
