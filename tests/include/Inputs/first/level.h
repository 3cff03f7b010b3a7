first
#include_next <level.h>
