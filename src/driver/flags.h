// flags.h - the option flags: data that every floor reads.  One row each in flags.def.
// Writers: cmd_line (options and their reconciliation); a few pragmas and the precompiled-header
// reader.
#pragma once
#include <cstdio>

#define FLAG(type, name, initial, meaning) extern type name;
#include "driver/flags.def"
