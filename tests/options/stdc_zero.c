// options: --stdc_zero_in_system_headers --sys_include=Inputs/system -P
// proves: __STDC__ is 0 in system headers only
user __STDC__
#include <stdc.h>
user __STDC__
