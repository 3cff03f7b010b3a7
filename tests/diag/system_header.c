// options: -E --sys_include=Inputs
// status: 2
// proves: warnings in a system header aren't shown, errors are
#include <sys.h>
#define B 1
#define B 2
