// class_friend.cpp - friends: functions and classes to which a class gives its rights.
// Entry:   decl_friend_function, decl_friend_class.
// See:     C++ 11.4.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/scope_stk.h"

//---------------------------------------------------------------------------------------------
// Functions.

static void add_friend_routine(a_type *class_type, a_symbol *symbol,
                               const a_source_position *position)
{
  if (symbol == nullptr || !is_routine_symbol(symbol)) return;
  a_routine *routine = routine_of_symbol(symbol);
  a_routine_list_entry **link = &class_supplement_of(class_type)->friend_routines;
  for (; *link != nullptr; link = &(*link)->next) {
    if ((*link)->routine != routine) continue;
    pos_warning(ec_duplicate_friend_decl, *position);
    return;
  }
  *link = alloc_list_entry_for_routine(routine);
}

void decl_friend_function(a_class_scan_state *scan, a_decl_parse_state *state,
                          a_symbol_locator *locator, a_func_info_block *func_info)
{
  int saved_level = decl_scope_level;
  decl_scope_level = depth_innermost_namespace_scope;
  func_info->is_friend = true;
  a_symbol_locator copy = *locator;
  uint32_t flags = rdf_declaration;
  if (func_info->has_body) flags |= rdf_definition;
  bool was_known = false;
  decl_routine(&copy, state, func_info, flags, nullptr, nullptr, nullptr);
  decl_scope_level = saved_level;
  (void)was_known;
  if (func_info->has_body && state->symbol != nullptr) {
    set_inline_flag(routine_of_symbol(state->symbol), true);
  }
  add_friend_routine(scan->class_type, state->symbol, &locator->position);
}

//---------------------------------------------------------------------------------------------
// Classes.

void decl_friend_class(a_type *type, a_type *class_type, const a_source_position *position)
{
  type = skip_typerefs(type);
  if (!is_class_struct_union_type(type)) return;
  if (identical_types(type, class_type)) {
    pos_warning(ec_self_friendship, *position);
    return;
  }
  a_class_list_entry **link = &class_supplement_of(class_type)->friend_classes;
  for (; *link != nullptr; link = &(*link)->next) {
    if (!identical_types((*link)->class_type, type)) continue;
    pos_warning(ec_duplicate_friend_decl, *position);
    return;
  }
  *link = alloc_list_entry_for_class(type);
}

// A friend class is named behind a class keyword (C++ 11.4p2); old compilers did without.
void friend_without_declarator(a_class_scan_state *scan, a_decl_parse_state *state)
{
  a_type *type = skip_typerefs(state->type_specifier);
  a_source_position position = state->start_position;
  if (is_error_type(type) || (state->specifier_flags & sf_is_in_error)) return;
  if (state->specifier_flags & sf_is_typename_declaration) {
    pos_error(ec_no_typename_in_friend_class_decl, position);
    return;
  }
  if ((state->specifier_flags & sf_defines_type) || !is_class_struct_union_type(type)) {
    pos_error(ec_bad_friend_decl, position);
    return;
  }
  bool has_keyword = state->tag_locator.header != nullptr;
  if (!has_keyword && !cpp11_mode) {
    an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_warning;
    pos_st_diagnostic(severity, ec_nonstd_friend_decl, position, "class");
  }
  decl_friend_class(type, scan->class_type, &position);
}
