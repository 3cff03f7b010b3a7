// class_virtual.cpp - virtual functions.
// Entry:   settle_virtual.
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_private.h"

void settle_virtual(a_class_scan_state *scan, a_decl_parse_state *state, a_symbol *symbol)
{
  if (!(state->specifier_flags & sf_is_virtual)) return;
  routine_of_symbol(symbol)->is_virtual = true;
  as_class(scan->class_type).has_virtual_functions = true;
  scan->not_aggregate = true;
}
