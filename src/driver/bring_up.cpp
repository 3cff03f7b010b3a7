// bring_up.cpp - stands in for routines of modules that are still being written, so that runs that don't
// need them complete.  The real ones replace these when they are linked.
#include "parse/attribute.h"

__attribute__((weak)) void process_alias_fixup_list()
{
}
