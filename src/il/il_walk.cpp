// il_walk.cpp - the generic walk over the IL, remapping and the dump, all driven by the field
// table.
// Owns:    the walk state and the stack of open entries.
// Rule:    lists are looped over and nesting is kept on a stack of our own, so that neither a long
//          file scope nor a deep expression costs machine stack.
// Entry:   walk_file_scope_il, walk_routine_scope_il, walk_il_subtree, remap_pointers_in_il_entry.
#include "il/il_walk.h"

#include <cstdio>

#include "il/il_field_table.h"

namespace {

// An entry whose fields are being walked.
struct an_open_entry {
  void *entry;
  const an_il_field *field; // next field
  const an_il_field *end;
  void *list_entry; // next entry of the list of the previous field, or null
  an_il_entry_kind kind;
  an_il_entry_kind list_kind;
  uint16_t list_link;
};

// Replaced as a whole by each entry into the walker, so that walks can nest.
struct a_walk_state {
  an_il_walk_callbacks callbacks;
  bool walking_file_scope;
};

} // namespace

static a_walk_state walk;
static an_open_entry *open_entries;
static size_t size_of_open_entries;
static size_t num_open_entries;

static an_open_entry *push_open_entry()
{
  if (num_open_entries == size_of_open_entries) {
    size_t new_size = size_of_open_entries == 0 ? 256 : size_of_open_entries * 2;
    open_entries = (an_open_entry *)realloc_buffer((char *)open_entries,
                                                   size_of_open_entries * sizeof(an_open_entry),
                                                   new_size * sizeof(an_open_entry));
    size_of_open_entries = new_size;
  }
  return &open_entries[num_open_entries++];
}

// True: the entry is left out.
static bool is_filtered_out(void *entry, an_il_entry_kind kind)
{
  if (walk.callbacks.entry_filter != nullptr) return walk.callbacks.entry_filter(entry, kind);
  an_il_entry_flags &flags = entry_flags_of(entry);
  if (flags.visited == flag_value_meaning_visited) return true;
  flags.visited = flag_value_meaning_visited;
  return false;
}

static void enter(void *entry, an_il_entry_kind kind)
{
  if (is_filtered_out(entry, kind)) return;
  if (walk.callbacks.entry_callback != nullptr) walk.callbacks.entry_callback(entry, kind);
  const an_il_kind_description &description = il_kind_table[kind];
  an_open_entry *open = push_open_entry();
  open->entry = entry;
  open->field = description.fields;
  open->end = description.fields + description.field_count;
  open->list_entry = nullptr;
  open->kind = kind;
}

// A walk of the file scope stays out of functions, and one of a function stays inside it.
static bool may_be_followed(void *entry)
{
  return is_file_scope_entry(entry) == walk.walking_file_scope;
}

static void remap(void *&pointer, an_il_entry_kind kind)
{
  if (pointer != nullptr && walk.callbacks.pointer_remap != nullptr) {
    pointer = walk.callbacks.pointer_remap(pointer, kind);
  }
}

static void remap_list(void *&pointer, an_il_entry_kind kind)
{
  if (pointer != nullptr && walk.callbacks.list_remap != nullptr) {
    pointer = walk.callbacks.list_remap(pointer, kind);
  }
}

static void walk_text(const an_il_field *field, void *entry, void *&pointer)
{
  const char *text = (const char *)pointer;
  if (text == nullptr) return;
  if (walk.callbacks.string_callback != nullptr) {
    size_t length = field->action == ifa_counted_text
                        ? *(uint64_t *)((char *)entry + field->length_offset)
                        : strlen(text) + 1;
    walk.callbacks.string_callback(text, field->target, length);
  }
  remap(pointer, field->target);
}

// Handles one field of the innermost open entry; may open another entry.
static void walk_field(an_open_entry *open, const an_il_field *field)
{
  void *entry = open->entry;
  if (!field_holds(field, entry)) return;
  an_il_entry_kind target = target_of_field(field, entry);
  if (target == iek_none) return;
  void *&pointer = pointer_in_field(field, entry);
  void *followed = pointer;
  if (followed == nullptr) return;
  switch (field->action) {
  case ifa_link:
  case ifa_back: remap(pointer, target); break;
  case ifa_text:
  case ifa_counted_text: walk_text(field, entry, pointer); break;
  case ifa_pointer:
    remap(pointer, target);
    if (may_be_followed(followed)) enter(followed, target);
    break;
  case ifa_list:
  case ifa_declarations:
    open->list_entry = followed;
    open->list_kind = target;
    open->list_link = il_kind_table[target].link_offset;
    remap_list(pointer, target);
    break;
  case ifa_data: break;
  }
}

// The link is read before the entry is walked, since the walk may remap it.
static void walk_next_list_entry(an_open_entry *open)
{
  void *entry = open->list_entry;
  an_il_entry_kind kind = open->list_kind;
  open->list_entry = *(void **)((char *)entry + open->list_link);
  if (may_be_followed(entry)) enter(entry, kind);
}

static void walk_from(void *entry, an_il_entry_kind kind)
{
  size_t base = num_open_entries;
  enter(entry, kind);
  while (num_open_entries > base) {
    an_open_entry *open = &open_entries[num_open_entries - 1];
    if (open->list_entry != nullptr) {
      walk_next_list_entry(open);
    } else if (open->field != open->end) {
      walk_field(open, open->field++);
    } else {
      num_open_entries--;
      if (walk.callbacks.end_callback != nullptr) {
        walk.callbacks.end_callback(open->entry, open->kind);
      }
    }
  }
}

static void walk_list(void *entry, an_il_entry_kind kind)
{
  while (entry != nullptr) {
    void *next = link_of_entry(entry, kind);
    walk_from(entry, kind);
    entry = next;
  }
}

// --- Entries into the walker ---------------------------------------------------------------------

static void walk_root(void *&root, an_il_entry_kind kind)
{
  void *entry = root;
  remap(root, kind);
  if (entry != nullptr) walk_from(entry, kind);
}

static void walk_root_list(void *&root, an_il_entry_kind kind)
{
  void *entry = root;
  remap_list(root, kind);
  walk_list(entry, kind);
}

static void walk_root_text(const char *&root)
{
  if (root == nullptr) return;
  if (walk.callbacks.string_callback != nullptr) {
    walk.callbacks.string_callback(root, iek_other_text, strlen(root) + 1);
  }
  remap((void *&)root, iek_other_text);
}

static void walk_orphans()
{
  for (int kind = 1; kind < iek_last; kind++) {
    an_orphaned_list &list = orphaned_file_scope_il_entries[kind];
    void *entry = list.head;
    remap_list(list.head, (an_il_entry_kind)kind);
    while (entry != nullptr) {
      void *next = next_orphan_of(entry);
      walk_from(entry, (an_il_entry_kind)kind);
      entry = next;
    }
  }
}

void walk_file_scope_il(const an_il_walk_callbacks *callbacks)
{
  a_walk_state saved = walk;
  bool saved_meaning = flag_value_meaning_visited;
  walk = {*callbacks, true};
  flag_value_meaning_visited = !entry_flags_of(il_header.primary_scope).visited;
  walk_root((void *&)il_header.primary_scope, iek_scope);
  walk_root_list((void *&)il_header.source_files, iek_source_file);
  walk_root((void *&)il_header.main_routine, iek_routine);
  walk_root_text(il_header.version_string);
  walk_root_text(il_header.compilation_date);
  walk_root_text(il_header.instantiation_dir_name);
  walk_root_list((void *&)il_header.scope_orphaned_lists, iek_scope_orphaned_list_header);
  walk_root_list((void *&)il_header.macros, iek_macro);
  walk_root_list((void *&)il_header.types_used_in_eh, iek_type);
  walk_root_list((void *&)il_header.seq_number_lookup_list, iek_seq_number_lookup_entry);
  walk_orphans();
  file_scope_visited_value = flag_value_meaning_visited;
  flag_value_meaning_visited = saved_meaning;
  walk = saved;
}

void walk_routine_scope_il(int region, const an_il_walk_callbacks *callbacks)
{
  a_scope *scope = region_scope_table[region];
  if (scope != nullptr) walk_il_subtree(callbacks, scope, iek_scope);
}

void walk_il_subtree(const an_il_walk_callbacks *callbacks, void *entry, an_il_entry_kind kind)
{
  a_walk_state saved = walk;
  bool saved_meaning = flag_value_meaning_visited;
  walk = {*callbacks, is_file_scope_entry(entry)};
  flag_value_meaning_visited = !entry_flags_of(entry).visited;
  walk_from(entry, kind);
  flag_value_meaning_visited = saved_meaning;
  walk = saved;
}

void remap_pointers_in_il_entry(void *entry, an_il_entry_kind kind,
                                void *(*pointer_remap)(void *pointer, an_il_entry_kind kind),
                                void *(*list_remap)(void *pointer, an_il_entry_kind kind))
{
  const an_il_kind_description &description = il_kind_table[kind];
  for (unsigned i = 0; i < description.field_count; i++) {
    const an_il_field *field = &description.fields[i];
    if (!field_holds(field, entry)) continue;
    an_il_entry_kind target = target_of_field(field, entry);
    void *&pointer = pointer_in_field(field, entry);
    if (target == iek_none || pointer == nullptr) continue;
    bool is_list = field->action == ifa_list || field->action == ifa_declarations;
    bool use_list_remap = is_list && list_remap != nullptr;
    pointer = use_list_remap ? list_remap(pointer, target) : pointer_remap(pointer, target);
  }
}

void remap_last_ptr_of_orphaned_file_scope_entry_array(
    void *(*pointer_remap)(void *pointer, an_il_entry_kind kind))
{
  for (int kind = 1; kind < iek_last; kind++) {
    void *&tail = orphaned_file_scope_il_entries[kind].tail;
    if (tail != nullptr) tail = pointer_remap(tail, (an_il_entry_kind)kind);
  }
}

void process_local_types(a_scope *scope, void (*callback)(a_type *type))
{
  for (a_type *type = scope->types; type != nullptr; type = type->next)
    callback(type);
  for (a_scope *sub = scope->subscopes; sub != nullptr; sub = sub->next) {
    process_local_types(sub, callback);
  }
}

size_t size_of_il_entry(an_il_entry_kind kind)
{
  return sizeof_il_entry[kind];
}

// --- Dump ----------------------------------------------------------------------------------------

void dump_il_entry(const void *entry, an_il_entry_kind kind)
{
  printf("%s %p\n", il_entry_kind_names[kind], entry);
  const an_il_kind_description &description = il_kind_table[kind];
  for (unsigned i = 0; i < description.field_count; i++) {
    const an_il_field *field = &description.fields[i];
    if (!field_holds(field, entry)) continue;
    an_il_entry_kind target = target_of_field(field, entry);
    void *pointer = pointer_in_field(field, entry);
    if (target == iek_none || pointer == nullptr) continue;
    if (field->action == ifa_text) {
      printf("  %s: \"%s\"\n", field->name, (const char *)pointer);
    } else {
      printf("  %s: %s %p\n", field->name, il_entry_kind_names[target], pointer);
    }
  }
}
