// class_implicit.cpp - members that the compiler declares, and those that the source asks it for.
// Entry:   check_defaulted_or_deleted_function.
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_private.h"
#include "parse/decls.h"

void check_defaulted_or_deleted_function(a_decl_parse_state *, a_func_info_block *func_info,
                                         a_symbol *symbol, a_source_position *)
{
  a_routine *routine = routine_of_symbol(symbol);
  if (func_info->is_deleted) routine->is_deleted = routine->is_inline = routine->is_defined = true;
  if (func_info->is_defaulted) routine->is_defaulted = true;
}
