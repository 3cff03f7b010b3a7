# 1 "next.c"


# 1 "Inputs/first/level.h"
first
# 1 "Inputs/second/level.h"
second
# 3 "Inputs/first/level.h"
# 4 "next.c"
