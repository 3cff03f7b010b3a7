// proves: the example of pragmas runs, and its pragmas and sections reach the generated file
#include "Inputs/pragmas.c"
