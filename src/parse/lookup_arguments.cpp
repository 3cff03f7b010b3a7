// lookup_arguments.cpp - functions that the types of a call's arguments bring along.
// Entry:   add_to_arg_dependent_lookup_list, argument_dependent_lookup.
// See:     C++98 3.4.2.
#include "driver/flags.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/lookup.h"
#include "parse/lookup_parts.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// The types

static a_type *interesting_type(a_type *type)
{
  for (;;) {
    type = skip_typerefs(type);
    if (type->kind == tk_pointer)
      type = type_pointed_to(type);
    else if (type->kind == tk_array)
      type = array_element_type(type);
    else
      return type;
  }
}

static bool add_once(a_type *type, an_arg_dependent_type_list **list)
{
  for (an_arg_dependent_type_list *entry = *list; entry != nullptr; entry = entry->next)
    if (identical_types(entry->type, type)) return false;
  an_arg_dependent_type_list *entry =
      (an_arg_dependent_type_list *)alloc_in_region(0, sizeof(an_arg_dependent_type_list));
  entry->type = type;
  entry->next = *list;
  *list = entry;
  return true;
}

void add_to_arg_dependent_lookup_list(a_type *type, an_arg_dependent_type_list **list)
{
  if (!arg_dependent_lookup_enabled) return;
  type = interesting_type(type);
  if (is_class_struct_union_type(type) || is_enum_type(type)) {
    add_once(type, list);
  } else if (is_ptr_to_member_type(type)) {
    add_to_arg_dependent_lookup_list(pm_class_type(type), list);
    add_to_arg_dependent_lookup_list(pm_member_type(type), list);
  } else if (is_function_type(type) && add_once(type, list)) {
    add_to_arg_dependent_lookup_list(return_type_of(type), list);
    for (a_param_type *param = param_types_of(type); param != nullptr; param = param->next)
      add_to_arg_dependent_lookup_list(param->type, list);
  }
}

// -------------------------------------------------------------------------------------------------
// Associated classes and namespaces

struct an_association {
  a_symbol_locator *locator;
  a_symbol *known;
  a_symbol *single; // the one function found so far
  a_symbol *set;    // the synthesized set of several
  an_arg_dependent_type_list *classes;
};

static void add_found_function(an_association *association, a_symbol *symbol)
{
  symbol = target_of_symbol(symbol);
  if (symbol->kind == sk_overloaded_function) {
    for (a_symbol *entry = overloads_of_symbol(symbol); entry != nullptr;
         entry = entry->next_same_name)
      add_found_function(association, entry);
    return;
  }
  if (!is_routine_symbol(symbol) && symbol->kind != sk_function_template) return;
  if (symbol->in_lookup_set) return;
  symbol->in_lookup_set = true;
  if (association->single == nullptr) {
    association->single = symbol;
    return;
  }
  if (association->set == nullptr) {
    association->set = alloc_symbol(sk_overloaded_function, symbol->header, symbol->position);
    association->set->is_synthesized_namespace_symbol = true;
    append_projection_to_set(association->set, association->single);
  }
  append_projection_to_set(association->set, symbol);
}

// A function that only a friend declaration names is seen through the class that befriends it.
static bool is_friend_of_associated_class(const an_association *association, a_symbol *symbol)
{
  if (!is_routine_symbol(symbol)) return true;
  for (an_arg_dependent_type_list *entry = association->classes; entry != nullptr;
       entry = entry->next) {
    if (!is_class_struct_union_type(entry->type)) continue;
    a_routine_list_entry *friend_entry = class_supplement_of(entry->type)->friend_routines;
    for (; friend_entry != nullptr; friend_entry = friend_entry->next)
      if (friend_entry->routine == routine_of_symbol(symbol)) return true;
  }
  return false;
}

static void add_visible_functions(an_association *association, a_symbol *symbol)
{
  a_symbol *target = target_of_symbol(symbol);
  if (target->kind == sk_overloaded_function) {
    for (a_symbol *entry = overloads_of_symbol(target); entry != nullptr;
         entry = entry->next_same_name)
      add_visible_functions(association, entry);
    return;
  }
  if (target->is_invisible && !is_friend_of_associated_class(association, target)) return;
  add_found_function(association, target);
}

static void search_scope_table(an_association *association, a_scope_pointers_block *block)
{
  a_symbol *symbol = find_symbol_list_in_table(block, association->locator->header);
  for (; symbol != nullptr; symbol = symbol->next_in_bucket)
    add_visible_functions(association, symbol);
}

static void search_namespace_of(an_association *association, a_symbol *type_symbol)
{
  a_namespace *name_space =
      type_symbol != nullptr ? parent_namespace_for_symbol(type_symbol) : nullptr;
  if (name_space == nullptr) {
    a_symbol_locator locator = cleared_locator;
    locator.header = association->locator->header;
    locator.position = association->locator->position;
    a_symbol *found = file_scope_id_lookup(il_header.primary_scope, &locator, lo_find_hidden);
    if (found != nullptr) add_visible_functions(association, found);
    return;
  }
  a_symbol *symbol = skip_namespace_aliases(name_space)->source_corresp.assoc_symbol;
  if (symbol == nullptr) return;
  search_scope_table(association, &symbol->variant.name_space.supplement->pointers_block);
}

// The symbol of the outermost class around a nested type: its namespace is the associated one.
static a_symbol *outermost_symbol(a_type *type)
{
  a_symbol *symbol = type->source_corresp.assoc_symbol;
  while (symbol != nullptr && symbol->is_class_member)
    symbol = symbol->parent.class_type->source_corresp.assoc_symbol;
  return symbol;
}

static void add_base_classes(an_association *association, a_type *class_type)
{
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next)
    add_once(skip_typerefs(base->type), &association->classes);
}

static bool turned_off_by(a_symbol *known)
{
  if (known == nullptr) return false;
  return known->is_class_member || (is_block_extern_symbol(known) && !gpp_mode);
}

static void clear_marks(a_symbol *set, a_symbol *single)
{
  if (single != nullptr) single->in_lookup_set = false;
  if (set == nullptr) return;
  for (a_symbol *entry = overloads_of_symbol(set); entry != nullptr; entry = entry->next_same_name)
    target_of_symbol(entry)->in_lookup_set = false;
}

a_symbol *argument_dependent_lookup(a_symbol *symbol, a_symbol_locator *locator,
                                    an_arg_dependent_type_list *types)
{
  if (!arg_dependent_lookup_enabled || types == nullptr || turned_off_by(symbol)) return symbol;
  an_association association = {};
  association.locator = locator;
  association.known = symbol;
  for (an_arg_dependent_type_list *entry = types; entry != nullptr; entry = entry->next)
    add_once(entry->type, &association.classes);
  for (an_arg_dependent_type_list *entry = types; entry != nullptr; entry = entry->next)
    if (is_class_struct_union_type(entry->type) && !is_incomplete_type(entry->type))
      add_base_classes(&association, entry->type);
  if (symbol != nullptr) add_found_function(&association, symbol);
  for (an_arg_dependent_type_list *entry = association.classes; entry != nullptr;
       entry = entry->next)
    if (!is_function_type(entry->type))
      search_namespace_of(&association, outermost_symbol(entry->type));
  clear_marks(association.set, association.single);
  a_symbol *known_target = symbol != nullptr ? target_of_symbol(symbol) : nullptr;
  if (association.set == nullptr)
    return association.single == known_target ? symbol : association.single;
  return association.set;
}
