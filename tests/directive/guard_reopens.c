// options: --c99
// proves: a guarded file is read once; a file with text outside its guard is read again
#include "Inputs/guarded.h"
#include "Inputs/guarded.h"
#include "Inputs/open_guard.h"
#include "Inputs/open_guard.h"
#include "Inputs/once.h"
#include "Inputs/once.h"
#undef GUARDED_H
#include "Inputs/guarded.h"
