// options: -P --zok_base_dir=Inputs/base
// proves: lines of the predefined macro file count by their modes, and its macros behave as told
FIXED FREE ABSENT ABSENT2 __STDC__ [NOTHING]
#undef FREE
#define FREE 5
FREE
