# 1 "name_at_end_of_file.c"


# 1 "Inputs/ends_with_name.h"

int 
f
# 4 "name_at_end_of_file.c"
(1);
int last_name =

f
