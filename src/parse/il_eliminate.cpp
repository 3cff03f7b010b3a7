// il_eliminate.cpp - removal of IL entries that the output doesn't need; the last step before the
// back end.
// Rule:    what is not marked keep_in_il leaves its list; the tails that the scope stack keeps
//          follow.
// Entry:   eliminate_unneeded_il_entries, eliminate_bodies_of_unneeded_functions.
#include "driver/flags.h"
#include "il/il_walk.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

static bool is_kept(const void *entry)
{
  return entry_flags_of(entry).keep_in_il;
}

// Unlinks the entries without the mark; returns the last one that stays.  What leaves keeps its
// link: the list of a function's scope may start there, too, after that of its orphans was cleaned.
template <class an_entry> static an_entry *drop_unmarked(an_entry **head)
{
  an_entry *last = nullptr;
  an_entry **link = head;
  while (*link != nullptr) {
    an_entry *entry = *link;
    if (is_kept(entry)) {
      last = entry;
      link = &entry->next;
    } else {
      *link = entry->next;
    }
  }
  return last;
}

template <class an_entry> static an_entry *last_of(an_entry *list)
{
  while (list != nullptr && list->next != nullptr)
    list = list->next;
  return list;
}

static void drop_unmarked_using_decls(a_scope *scope)
{
  a_using_decl **link = &scope->using_decls;
  while (*link != nullptr) {
    a_using_decl *using_decl = *link;
    bool keep = using_decl->is_using_directive || using_decl->entity == nullptr ||
                is_kept(using_decl->entity);
    if (keep) {
      link = &using_decl->next;
    } else {
      *link = using_decl->next;
    }
  }
}

void eliminate_unneeded_il_entries(a_scope *scope)
{
  if (!okay_to_eliminate_unneeded_il_entries) return;
  a_variable *last_variable = drop_unmarked(&scope->variables);
  drop_unmarked(&scope->local_variables);
  a_routine *last_routine = drop_unmarked(&scope->routines);
  a_type *last_type = keep_unneeded_types ? last_of(scope->types) : drop_unmarked(&scope->types);
  a_constant *last_constant = drop_unmarked(&scope->constants);
  for (a_namespace *space = scope->namespaces; space != nullptr; space = space->next) {
    if (!space->is_alias) eliminate_unneeded_il_entries(space->variant.scope);
  }
  drop_unmarked_using_decls(scope);
  for (a_scope *sub = scope->subscopes; sub != nullptr; sub = sub->next) {
    eliminate_unneeded_il_entries(sub);
  }
  bool has_tails = scope->kind == sck_file || scope->kind == sck_namespace;
  if (!has_tails) return;
  a_scope_pointers_block *block = get_pointers_block_for_scope(scope);
  block->last_variable = last_variable;
  block->last_routine = last_routine;
  block->last_type = last_type;
  block->last_constant = last_constant;
  if (scope->kind != sck_file) return;
  eliminate_unneeded_scope_orphaned_list_entries();
  eliminate_pragmas_for_file_scope_entities(scope);
  for (int region = 2; region <= highest_used_region_number; region++) {
    a_scope *root = region_scope_table[region];
    if (root != nullptr && root != scope) eliminate_unneeded_il_entries(root);
  }
  if (il_header.main_routine != nullptr && !is_kept(il_header.main_routine)) {
    il_header.main_routine = nullptr;
  }
}

void eliminate_unneeded_scope_orphaned_list_entries()
{
  for (a_scope_orphaned_list_header *header = il_header.scope_orphaned_lists; header != nullptr;
       header = header->next) {
    if (!keep_unneeded_types) drop_unmarked(&header->types);
    drop_unmarked(&header->variables);
  }
}

// A pragma that hangs on an entity goes with it.
void eliminate_pragmas_for_file_scope_entities(a_scope *scope)
{
  a_pragma **link = &scope->pragmas;
  while (*link != nullptr) {
    a_pragma *pragma = *link;
    bool hangs_on_entity = pragma->entity != nullptr && pragma->entity_kind != iek_none;
    if (hangs_on_entity && !is_kept(pragma->entity)) {
      *link = pragma->next;
    } else {
      link = &pragma->next;
    }
  }
  get_pointers_block_for_scope(scope)->last_pragma = last_of(scope->pragmas);
}

void eliminate_bodies_of_unneeded_functions()
{
  for (int region = 2; region <= highest_used_region_number; region++) {
    a_scope *scope = region_scope_table[region];
    if (scope == nullptr || scope->kind != sck_function) continue;
    a_routine *routine = routine_of_scope(scope);
    if (entry_flags_of(routine).is_secondary_entry) continue;
    // A region that its routine has left holds a body that was dropped.
    bool is_current = routine->region_number == region;
    if (is_current && routine->keep_definition_in_il) continue;
    for (a_vla_dimension *dimension = scope->vla_dimensions; dimension != nullptr;
         dimension = dimension->next) {
      if (dimension->type != nullptr) dimension->type->has_vla_bound_ref = false;
    }
    if (is_current) {
      routine->is_defined = false;
      routine->region_number = 0;
      routine->definition_needed = false;
      routine->inline_linkage_state = 0;
    }
    region_scope_table[region] = nullptr;
    free_memory_region(region);
  }
}
