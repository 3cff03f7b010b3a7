// options: -E
// proves: the raw listing has the lines as read, expanded, skipped, and the changes of file
#include "Inputs/two.h"
int a = TWICE(3);
#if 0
skipped
#endif
spl\
iced TWO
/* comment */ int b;
