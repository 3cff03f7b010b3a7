// options: -IInputs --incl_suffixes=:inc --sys_include=Inputs/dir -P
// proves: names are found in the options' directories, with a suffix of the list where they have none
#include <plain>
#include <named>
#include "pre.h"
