/* options: --check_misra=19.1-3,19.15,20.8-9,20.12 --sys_include=Inputs/system */
/* proves: what stands before #include, names of headers, guards, headers of the library that are banned */
#define GUARDED "Inputs/guarded.h"
#pragma anything
#include GUARDED
#include "Inputs/guarded.h"
#include "Inputs/guarded_by_if.h"
#include "Inputs/once.h"
#include "Inputs/empty.h"
#include "Inputs/unguarded.h"
#include "Inputs/unguarded.h"
#include "Inputs/inner_guard.h"
#include "Inputs/inner_guard.h"
#include "Inputs/guard_of_other_kind.h"
#include "Inputs/directory\\guarded.h"
#include "Inputs/it's.h"
#include <math.h>
#include <stdio.h>
#include <signal.h>
#include <time.h>
int code;
#include "Inputs/guarded.h"
#include nothing
