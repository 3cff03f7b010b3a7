# 1 "header_names.c"


# 1 "Inputs/plain.h"
plain
# 8 "header_names.c"
# 1 "Inputs/plain.h"
plain
# 9 "header_names.c"
# 1 "Inputs/plain.h"
plain
# 10 "header_names.c"
# 1 "Inputs/plain.h"
plain
# 12 "header_names.c"
