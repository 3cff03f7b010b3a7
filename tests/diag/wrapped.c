// options: -E --no_brief_diagnostics
// status: 2
// proves: text breaks before column 80 and goes on 10 columns in; a long word breaks hard
#line 3 "a/rather/long/name/of/a/file.c"
#warning this warning has a text that is long enough to go over the end of the line, twice even, if one adds words
#warning xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx
#include "a name that is long/long/long/long/long.h"
