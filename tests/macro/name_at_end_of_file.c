// options: -E
// proves: a function-like macro's name at the end of a file stays, without a call across the file's end
#include "Inputs/ends_with_name.h"
(1);
int last_name =
f
