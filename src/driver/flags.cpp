// flags.cpp - storage of the option flags, with their initial values.
// Owns:    every variable of flags.def.
// Entry:   none; cmd_line writes them, everybody reads them.
#include "driver/flags.h"

#define FLAG(type, name, initial, meaning) type name = initial;
#include "driver/flags.def"
