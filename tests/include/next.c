// options: -IInputs/first -IInputs/second
// proves: #include_next goes on behind the folder in which the current file was found
#include <level.h>
