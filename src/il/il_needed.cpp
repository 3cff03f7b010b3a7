// il_needed.cpp - what the output needs: marks on entities, their definitions and all that they
// reach.
// Owns:    the needed flags and keep_in_il, the queue of routine bodies that wait for their walk,
//          the stack of entries whose fields marking has still to follow.
// Rule:    an entity that nothing needed refers to is not needed; bodies are walked from a queue,
//          since chains of calls may be of any length.
// Entry:   set_needed_flags_at_end_of_file_scope, mark_as_needed, set_routine_definition_needed.
#include <cstring>
#include "driver/flags.h"
#include "il/il_field_table.h"
#include "il/il_walk.h"

bool (*is_hook_function_hook)(const a_routine *routine);

// --- Routine bodies that wait --------------------------------------------------------------------

static a_routine **waiting_routines;
static size_t size_of_waiting_routines;
static size_t num_waiting_routines;
static bool draining;

static void queue_routine_body(a_routine *routine)
{
  if (num_waiting_routines == size_of_waiting_routines) {
    size_t new_size = size_of_waiting_routines == 0 ? 128 : size_of_waiting_routines * 2;
    waiting_routines = (a_routine **)realloc_buffer((char *)waiting_routines,
                                                    size_of_waiting_routines * sizeof(a_routine *),
                                                    new_size * sizeof(a_routine *));
    size_of_waiting_routines = new_size;
  }
  waiting_routines[num_waiting_routines++] = routine;
}

static bool has_kept_body(const a_routine *routine)
{
  return routine->is_defined && scope_for_routine(routine) != nullptr;
}

// The definition is needed: its body waits for its walk.
static void note_definition_needed(a_routine *routine)
{
  if (routine->definition_needed) return;
  routine->definition_needed = true;
  routine->keep_definition_in_il = true;
  if (has_kept_body(routine)) queue_routine_body(routine);
}

// --- The walk ------------------------------------------------------------------------------------

// A kept entry whose fields have not been followed yet.
struct an_unfollowed_entry {
  void *entry;
  an_il_entry_kind kind;
};

static an_unfollowed_entry *unfollowed_entries;
static size_t size_of_unfollowed_entries;
static size_t num_unfollowed_entries;

static void grow_unfollowed_entries()
{
  size_t new_size = size_of_unfollowed_entries == 0 ? 1024 : size_of_unfollowed_entries * 2;
  unfollowed_entries = (an_unfollowed_entry *)realloc_buffer(
      (char *)unfollowed_entries, size_of_unfollowed_entries * sizeof(an_unfollowed_entry),
      new_size * sizeof(an_unfollowed_entry));
  size_of_unfollowed_entries = new_size;
}

static void note_needed_definition(void *entry, an_il_entry_kind kind)
{
  if (kind == iek_routine) {
    a_routine *routine = (a_routine *)entry;
    if (routine->is_defined) note_definition_needed(routine);
  } else if (kind == iek_type && kind_has_class_part(((a_type *)entry)->kind)) {
    a_class_type_supplement *supplement = class_supplement_of((a_type *)entry);
    supplement->definition_needed = true;
    supplement->keep_definition_in_il = true;
  }
}

// Keeps the entry, unless it is kept already, and puts its fields off.
static inline void keep_entry(void *entry, an_il_entry_kind kind)
{
  an_il_entry_flags &flags = entry_flags_of(entry);
  if (flags.keep_in_il) return;
  flags.keep_in_il = true;
  a_source_correspondence *corresp = source_corresp_for_il_entry(entry, kind);
  if (corresp != nullptr) {
    corresp->needed = true;
    note_needed_definition(entry, kind);
  }
  if (num_unfollowed_entries == size_of_unfollowed_entries) grow_unfollowed_entries();
  unfollowed_entries[num_unfollowed_entries++] = {entry, kind};
}

static bool is_needed_declaration(void *entry, an_il_entry_kind kind)
{
  const a_source_correspondence *corresp = source_corresp_for_il_entry(entry, kind);
  return corresp == nullptr || corresp->needed;
}

static void keep_list(void *entry, an_il_entry_kind kind, bool needed_only)
{
  size_t link_offset = il_kind_table[kind].link_offset;
  for (; entry != nullptr; entry = *(void **)((char *)entry + link_offset)) {
    if (!needed_only || is_needed_declaration(entry, kind)) keep_entry(entry, kind);
  }
}

static void follow_fields(void *entry, an_il_entry_kind kind)
{
  const a_followed_field_table &table = followed_field_tables[kind];
  bool has_groups = table.discriminator != no_link;
  unsigned group = has_groups ? ((unsigned char *)entry)[table.discriminator] : 0;
  const a_followed_field *end = table.fields + table.group_begin[group + 1];
  for (const a_followed_field *field = table.fields + table.group_begin[group]; field != end;
       field++) {
    void *followed = *(void **)((char *)entry + field->offset);
    if (followed == nullptr) continue;
    an_il_entry_kind target = field->selector == nullptr ? field->target : field->selector(entry);
    if (target == iek_none) continue;
    if (field->is_list) {
      keep_list(followed, target, field->needed_only);
    } else {
      keep_entry(followed, target);
    }
  }
}

// Keeps the entry and all that can be reached from it: file-scope entries from functions too, but
// of a scope's declarations only those with `needed`.
static void keep_reachable_entries(void *entry, an_il_entry_kind kind)
{
  size_t base = num_unfollowed_entries;
  keep_entry(entry, kind);
  while (num_unfollowed_entries > base) {
    an_unfollowed_entry next = unfollowed_entries[--num_unfollowed_entries];
    follow_fields(next.entry, next.kind);
  }
}

static void walk_waiting_bodies()
{
  if (draining) return;
  draining = true;
  while (num_waiting_routines > 0) {
    a_routine *routine = waiting_routines[--num_waiting_routines];
    a_scope *scope = scope_for_routine(routine);
    if (scope == nullptr) continue;
    a_scope *saved_scope = innermost_function_scope;
    int saved_region = curr_il_region_number;
    innermost_function_scope = scope;
    switch_il_region(routine->region_number);
    keep_reachable_entries(scope, iek_scope);
    switch_il_region(saved_region);
    innermost_function_scope = saved_scope;
  }
  draining = false;
}

// --- Marks of one entry --------------------------------------------------------------------------

static a_per_instantiation_needed_flags_entry *
needed_flags_entry_for(a_source_correspondence *corresp, unsigned number, bool create)
{
  unsigned first = number & ~63u;
  a_per_instantiation_needed_flags_entry **link = &corresp->per_instantiation_needed_flags;
  while (*link != nullptr && (*link)->number != first)
    link = &(*link)->next;
  if (*link == nullptr && create) {
    *link = alloc_per_instantiation_needed_flags_entry(is_file_scope_entry(corresp));
    (*link)->number = first;
  }
  return *link;
}

void set_per_instantiation_needed_flag(void *entry, an_il_entry_kind kind, unsigned number)
{
  a_source_correspondence *corresp = source_corresp_for_il_entry(entry, kind);
  if (corresp == nullptr) return;
  a_per_instantiation_needed_flags_entry *flags = needed_flags_entry_for(corresp, number, true);
  flags->bits[number >> 5 & 1] |= 1u << (number & 31);
}

bool instantiation_needed_flag_is_set(const a_source_correspondence *corresp, unsigned number)
{
  a_per_instantiation_needed_flags_entry *flags =
      needed_flags_entry_for((a_source_correspondence *)corresp, number, false);
  return flags != nullptr && (flags->bits[number >> 5 & 1] >> (number & 31) & 1) != 0;
}

// Odd numbers are the bits of definitions, even ones those of mere needs.
unsigned assign_instantiation_needed_bit_number()
{
  return 2 * ++il_header.instantiation_needed_bit_count + 1;
}

void set_variable_instantiation_needed_bit_number(a_variable *variable)
{
  if (variable->instantiation_bit == 0) {
    variable->instantiation_bit = assign_instantiation_needed_bit_number();
  }
}

void mark_as_needed(void *entry, an_il_entry_kind kind)
{
  if (needed_flag_bit_number != 0) {
    set_per_instantiation_needed_flag(entry, kind, needed_flag_bit_number);
    return;
  }
  keep_reachable_entries(entry, kind);
  walk_waiting_bodies();
}

void remark_as_needed(void *entry, an_il_entry_kind kind)
{
  an_il_entry_flags &flags = entry_flags_of(entry);
  if (!flags.keep_in_il) return;
  flags.keep_in_il = false;
  mark_as_needed(entry, kind);
  flags.keep_in_il = true;
}

void mark_as_needed_like(void *entry, an_il_entry_kind kind, void *like, bool class_too)
{
  const a_source_correspondence *model = source_corresp_for_il_entry(like, kind);
  if (model == nullptr) return;
  for (a_per_instantiation_needed_flags_entry *flags = model->per_instantiation_needed_flags;
       flags != nullptr; flags = flags->next) {
    for (unsigned bit = 0; bit < 64; bit++) {
      bool is_set = (flags->bits[bit >> 5] >> (bit & 31) & 1) != 0;
      if (is_set) set_per_instantiation_needed_flag(entry, kind, flags->number + bit);
    }
  }
  if (!model->needed) return;
  mark_as_needed(entry, kind);
  bool is_class = kind == iek_type && kind_has_class_part(((a_type *)entry)->kind);
  if (class_too && is_class) set_class_definition_needed((a_type *)entry);
}

void set_routine_keep_definition_in_il(a_routine *routine)
{
  routine->keep_definition_in_il = true;
}

void set_routine_definition_needed(a_routine *routine)
{
  mark_as_needed(routine, iek_routine);
  note_definition_needed(routine);
  if (routine->generated_from != nullptr) set_routine_definition_needed(routine->generated_from);
  walk_waiting_bodies();
}

// The body changed after it was walked: by lowering, for instance.
void remark_routine_definition_needed(a_routine *routine)
{
  a_scope *scope = scope_for_routine(routine);
  if (!routine->definition_needed || scope == nullptr) return;
  entry_flags_of(scope).keep_in_il = false;
  queue_routine_body(routine);
  walk_waiting_bodies();
}

bool class_definition_needed(const a_type *class_type)
{
  return as_class(class_type).class_supplement->definition_needed;
}

void set_class_keep_definition_in_il(a_type *class_type)
{
  class_supplement_of(class_type)->keep_definition_in_il = true;
}

void set_class_definition_needed(a_type *class_type)
{
  class_type = skip_typerefs(class_type);
  if (class_definition_needed(class_type)) return;
  class_supplement_of(class_type)->definition_needed = true;
  set_class_keep_definition_in_il(class_type);
  mark_as_needed(class_type, iek_type);
}

// --- Roots of the file scope ---------------------------------------------------------------------

static bool is_defined_variable(const a_variable *variable)
{
  return variable->storage_class != sc_extern || variable->init_kind != initk_none ||
         variable->alias_target != nullptr;
}

static void set_needed_flags_of_variable(a_variable *variable)
{
  bool is_root = variable->is_used || variable->source_corresp.needed;
  if (is_defined_variable(variable) && variable->storage_class != sc_static) is_root = true;
  if (!is_root) return;
  if (entry_flags_of(variable).keep_in_il) {
    remark_as_needed(variable, iek_variable);
  } else {
    mark_as_needed(variable, iek_variable);
  }
}

// An inline definition without an external copy is written only when something uses it.
static bool defines_external_routine(const a_routine *routine)
{
  if (routine->storage_class == sc_static || routine->inline_definition_only) return false;
  bool may_be_left_out = C_dialect == 2 && routine->is_inline;
  return !may_be_left_out;
}

static bool is_wanted_by_attribute(const a_routine *routine)
{
  return routine->is_constructor_attr || routine->is_destructor_attr || routine->is_used ||
         routine->is_unused || (is_hook_function_hook != nullptr && is_hook_function_hook(routine));
}

static void set_needed_flags_of_routine(a_routine *routine)
{
  bool has_definition = routine->is_defined || routine->alias_target != nullptr;
  bool is_root = routine->source_corresp.needed;
  if (has_definition && (defines_external_routine(routine) || is_wanted_by_attribute(routine))) {
    is_root = true;
  }
  if (!is_root) return;
  mark_as_needed(routine, iek_routine);
  // It may have been reached before its body was there.
  if (routine->is_defined) set_routine_definition_needed(routine);
}

static void set_needed_flags_of_class(a_type *type)
{
  a_class_type_supplement *supplement = class_supplement_of(type);
  if (type->source_corresp.needed) remark_as_needed(type, iek_type);
  if (supplement->class_scope != nullptr) {
    set_needed_flags_at_end_of_file_scope(supplement->class_scope);
  }
}

// GNU: an asm name given to `memset` holds for what `__builtin_memset` calls, too: its declaration
// has to reach the output.
static void keep_asm_names_behind_builtins(a_scope *scope)
{
  static const char prefix[] = "__builtin_";
  constexpr size_t length = sizeof prefix - 1;
  for (a_routine *builtin = scope->routines; builtin != nullptr; builtin = builtin->next) {
    const char *name = builtin->source_corresp.name;
    if (!builtin->source_corresp.needed || name == nullptr) continue;
    if (strncmp(name, prefix, length) != 0) continue;
    for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
      if (routine->asm_name == nullptr || routine->source_corresp.name == nullptr) continue;
      if (strcmp(routine->source_corresp.name, name + length) == 0)
        mark_as_needed(routine, iek_routine);
    }
  }
}

void set_needed_flags_at_end_of_file_scope(a_scope *scope)
{
  bool saved_phase = end_of_file_scope_needed_flags_phase;
  end_of_file_scope_needed_flags_phase = true;
  for (a_namespace *space = scope->namespaces; space != nullptr; space = space->next) {
    if (!space->is_alias) set_needed_flags_at_end_of_file_scope(space->variant.scope);
  }
  if (C_dialect == 2) {
    for (a_type *type = scope->types; type != nullptr; type = type->next) {
      if (kind_has_class_part(type->kind)) set_needed_flags_of_class(type);
    }
  }
  for (a_variable *variable = scope->variables; variable != nullptr; variable = variable->next) {
    set_needed_flags_of_variable(variable);
  }
  for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
    set_needed_flags_of_routine(routine);
  }
  keep_asm_names_behind_builtins(scope);
  for (an_asm_entry *entry = scope->asm_entries; entry != nullptr; entry = entry->next) {
    mark_as_needed(entry, iek_asm_entry);
  }
  end_of_file_scope_needed_flags_phase = saved_phase;
}

// --- Marking to keep -----------------------------------------------------------------------------

// What is needed is kept already; this reaches the rest: roots of the header, orphans of kept
// entries.
void mark_to_keep_in_il(void *entry, an_il_entry_kind kind)
{
  if (entry == il_header.primary_scope) entry_flags_of(entry).keep_in_il = false;
  keep_reachable_entries(entry, kind);
  walk_waiting_bodies();
  if (entry != il_header.primary_scope) return;
  for (a_macro *macro = il_header.macros; macro != nullptr; macro = macro->next) {
    keep_reachable_entries(macro, iek_macro);
  }
}

// Local entities of file-scope kind (types, statics) that their function's walk did not reach
// through a pointer, but that are needed.
void walk_subtrees_of_local_entities(a_scope *scope)
{
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    if (type->source_corresp.needed) keep_reachable_entries(type, iek_type);
  }
  for (a_variable *variable = scope->variables; variable != nullptr; variable = variable->next) {
    if (variable->source_corresp.needed) keep_reachable_entries(variable, iek_variable);
  }
  for (a_scope *sub = scope->subscopes; sub != nullptr; sub = sub->next) {
    walk_subtrees_of_local_entities(sub);
  }
  walk_waiting_bodies();
}

void il_walk_init()
{
  num_waiting_routines = 0;
  num_unfollowed_entries = 0;
  draining = false;
  end_of_file_scope_needed_flags_phase = false;
}
