# 1 "guard_reopens.c"


# 1 "Inputs/guarded.h"
 


guarded


# 4 "guard_reopens.c"
# 1 "Inputs/open_guard.h"


first time

every time
# 6 "guard_reopens.c"
# 1 "Inputs/open_guard.h"




every time
# 7 "guard_reopens.c"
# 1 "Inputs/once.h"
#pragma once
once
# 8 "guard_reopens.c"
# 1 "Inputs/guarded.h"
 


guarded


# 11 "guard_reopens.c"
