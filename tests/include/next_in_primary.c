// options: -E -IInputs/second
// proves: in the primary file #include_next is an #include with a warning
#include_next <level.h>   // expect: warning include_next_in_primary_source_file
