// proves: a comment ends with its file, and what follows the directive is read
#include "Inputs/open_comment.h"
int b; // */
