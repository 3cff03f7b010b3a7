# 1 "dash.c"


# 1 "Inputs/first/level.h"
first
# 1 "Inputs/second/level.h"
second
# 3 "Inputs/first/level.h"
# 4 "dash.c"
# 1 "Inputs/second/level.h"
second
# 5 "dash.c"
