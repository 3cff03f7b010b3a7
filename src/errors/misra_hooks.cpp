// misra_hooks.cpp - storage of the table through which the MISRA-C:2004 checker is called.
#include "errors/misra_hooks.h"

a_misra_hooks misra_hooks;
