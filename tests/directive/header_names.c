// options: -IInputs
// proves: the operand of #include may come out of macros, in both forms
#define QUOTED "Inputs/plain.h"
#define ANGLED <plain.h>
#define NAME plain
#define EXT h
#include QUOTED
#include ANGLED
#include <plain.h> /* comment */ // comment
#define EMPTY
#include EMPTY "Inputs/plain.h"
