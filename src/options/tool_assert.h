// tool_assert.h - assert in every build: a broken promise of the tables or a caller ends the tool.
// To be included last.
#undef NDEBUG
#include <cassert>
