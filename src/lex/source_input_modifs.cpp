// source_input_modifs.cpp - source line modifications: the scanner's way out of the line into
// replacement text and back.
// Owns:    source_line_modif_list, the hash table by location, the free list of records.
// Rule:    the list keeps the order of attaching, newest first, so that what an argument's expansion
//          attached is taken off again from the front.
// Rule:    texts are disjoint in memory, so the record of a text is known by address; the record found
//          last and those around it are tried first, since the scanner moves between neighbours.
// Entry:   add_source_line_modif, enter_source_line_modif, leave_source_line_modif.
#include <cstring>
#include "driver/flags.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/macro_internal.h"
#include "lex/source_input_internal.h"
#include "mem/check.h"
#include "mem/mem_manage.h"

a_source_line_modif *source_line_modif_list;
a_source_line_modif *line_start_source_line_modif;
bool no_modifs_in_curr_line;
a_source_line_modif *last_source_line_modif_exited_while_skipping_white_space;

// A power of two of chains, doubled when there are more records than chains: an expansion may need
// hundreds of thousands of them.
static constexpr unsigned long initial_modif_hash_size = 8192;
static a_source_line_modif **modif_hash_table;
static unsigned long modif_hash_size;
static unsigned long modif_count; // records in the table
static a_source_line_modif *avail_source_line_modifs;
static a_source_line_modif *last_found_modif; // the text that the scanner is in, most of the time
static unsigned last_sequence_id;             // sequence ids of this line's modifications

//---------------------------------------------------------------------------------------------
// The hash table.

static inline a_source_line_modif **hash_chain(const char *location)
{
  return &modif_hash_table[(unsigned long)location & (modif_hash_size - 1)];
}

static void resize_modif_hash_table(unsigned long size)
{
  a_source_line_modif **old_table = modif_hash_table;
  unsigned long old_size = modif_hash_size;
  modif_hash_table = (a_source_line_modif **)alloc_general(size * sizeof(*modif_hash_table));
  modif_hash_size = size;
  memset((void *)modif_hash_table, 0, size * sizeof(*modif_hash_table));
  for (unsigned long i = 0; i < old_size; ++i) {
    a_source_line_modif *next;
    for (a_source_line_modif *modif = old_table[i]; modif != nullptr; modif = next) {
      next = modif->next_in_hash;
      a_source_line_modif **chain = hash_chain(modif->location);
      modif->next_in_hash = *chain;
      *chain = modif;
    }
  }
  if (old_table != nullptr) free_general(old_table, old_size * sizeof(*old_table));
}

void add_source_line_modif_to_hash_table(a_source_line_modif *modif)
{
  if (++modif_count > modif_hash_size) resize_modif_hash_table(modif_hash_size * 2);
  a_source_line_modif **chain = hash_chain(modif->location);
  modif->next_in_hash = *chain;
  *chain = modif;
}

void rem_source_line_modif_from_hash_table(a_source_line_modif *modif)
{
  a_source_line_modif **link = hash_chain(modif->location);
  while (*link != modif) {
    check(*link != nullptr);
    link = &(*link)->next_in_hash;
  }
  *link = modif->next_in_hash;
  --modif_count;
}

a_source_line_modif *assoc_source_line_modif(const char *loc)
{
  a_source_line_modif *modif = *hash_chain(loc);
  while (modif->location != loc) {
    modif = modif->next_in_hash;
    check(modif != nullptr);
  }
  return modif;
}

//---------------------------------------------------------------------------------------------
// Which text holds a location.

static inline bool text_contains(const a_source_line_modif *modif, const char *location)
{
  return location >= modif->first_char && location <= modif->last_char + 1;
}

a_source_line_modif *nested_source_line_modif(const char *location)
{
  if (loc_is_in_curr_source_line(location)) return nullptr;
  a_source_line_modif *modif = last_found_modif;
  while (modif != nullptr) {
    if (text_contains(modif, location)) return last_found_modif = modif;
    modif = modif->parent_is_known ? modif->parent : nullptr;
  }
  for (modif = source_line_modif_list; modif != nullptr; modif = modif->next) {
    if (text_contains(modif, location)) return last_found_modif = modif;
  }
  return nullptr;
}

a_source_line_modif *f_parent_source_line_modif(a_source_line_modif *modif)
{
  a_source_line_modif *found = last_found_modif;
  modif->parent = modif->location == nullptr ? nullptr : nested_source_line_modif(modif->location);
  modif->parent_is_known = true;
  last_found_modif = found;
  return modif->parent;
}

//---------------------------------------------------------------------------------------------
// Attaching and detaching.

static a_source_line_modif *alloc_source_line_modif()
{
  a_source_line_modif *modif = avail_source_line_modifs;
  if (modif != nullptr) {
    avail_source_line_modifs = modif->next;
  } else {
    modif = (a_source_line_modif *)alloc_in_region(0, sizeof(a_source_line_modif));
  }
  memset((void *)modif, 0, sizeof(a_source_line_modif));
  return modif;
}

// Links a record at the head of the list, as the newest.
static void link_source_line_modif(a_source_line_modif *modif)
{
  if (source_line_modif_list == nullptr) {
    last_sequence_id = 0;
  } else {
    source_line_modif_list->prev = modif;
  }
  modif->next = source_line_modif_list;
  source_line_modif_list = modif;
  modif->sequence_id = ++last_sequence_id;
  no_modifs_in_curr_line = false;
}

static void attach_source_line_modif(a_source_line_modif *modif, char *location,
                                     unsigned deletion_count)
{
  modif->location = location;
  modif->deletion_count = deletion_count;
  link_source_line_modif(modif);
  if (location == nullptr) {
    modif->saved_char = ' ';
    modif->parent_is_known = true;
    line_start_source_line_modif = modif;
    note_start_text();
    return;
  }
  modif->saved_char = *location;
  *location = modif_mark;
  add_source_line_modif_to_hash_table(modif);
  if (loc_is_in_curr_source_line(location)) {
    modif->parent_is_known = true;
  } else if (last_found_modif != nullptr && text_contains(last_found_modif, location)) {
    modif->parent = last_found_modif;
    modif->parent_is_known = true;
  }
}

a_source_line_modif *add_source_line_modif(char *location, unsigned deletion_count,
                                           char *first_char, char *last_char)
{
  a_source_line_modif *modif = alloc_source_line_modif();
  modif->first_char = first_char;
  modif->last_char = last_char;
  attach_source_line_modif(modif, location, deletion_count);
  return modif;
}

a_source_line_modif *add_inline_source_line_modif(char *location, unsigned deletion_count,
                                                  bool with_blank)
{
  a_source_line_modif *modif = alloc_source_line_modif();
  char *text = modif->inline_text;
  modif->first_char = text;
  if (with_blank) *text++ = ' ';
  modif->last_char = text;
  text[0] = 0;
  text[1] = lesc_end_of_modif;
  attach_source_line_modif(modif, location, deletion_count);
  return modif;
}

a_source_line_modif *add_detached_source_line_modif(char *first_char, char *last_char,
                                                    a_source_line_modif *parent)
{
  a_source_line_modif *modif = alloc_source_line_modif();
  modif->first_char = first_char;
  modif->last_char = last_char;
  modif->parent = parent;
  modif->parent_is_known = true;
  modif->is_detached = true;
  link_source_line_modif(modif);
  return modif;
}

static void unlink_source_line_modif(a_source_line_modif *modif)
{
  if (modif->prev != nullptr) {
    modif->prev->next = modif->next;
  } else {
    source_line_modif_list = modif->next;
  }
  if (modif->next != nullptr) modif->next->prev = modif->prev;
  if (modif->location != nullptr) rem_source_line_modif_from_hash_table(modif);
  if (modif == line_start_source_line_modif) line_start_source_line_modif = nullptr;
  if (modif == last_found_modif) {
    last_found_modif = modif->parent_is_known ? modif->parent : nullptr;
  }
  if (modif->macro != nullptr) --modif->macro->active_expansions;
  if (modif->text_is_in_expansion_buffer) --num_texts_in_expansion_buffer;
}

void rem_source_line_modif(a_source_line_modif *modif)
{
  unlink_source_line_modif(modif);
  if (modif->location != nullptr) *modif->location = modif->saved_char;
}

void free_source_line_modif(a_source_line_modif **modif)
{
  if ((*modif)->concatenations != nullptr) {
    free_concatenation_records((*modif)->concatenations);
  }
  (*modif)->next = avail_source_line_modifs;
  avail_source_line_modifs = *modif;
  *modif = nullptr;
}

unsigned newest_source_line_modif()
{
  return source_line_modif_list == nullptr ? 0 : source_line_modif_list->sequence_id;
}

void rem_source_line_modifs_since(unsigned sequence_id)
{
  a_source_line_modif *modif = source_line_modif_list;
  while (modif != nullptr && modif->sequence_id > sequence_id) {
    a_source_line_modif *older = modif->next;
    rem_source_line_modif(modif);
    free_source_line_modif(&modif);
    modif = older;
  }
}

void drop_source_line_modifs_of_line()
{
  a_source_line_modif *modif = source_line_modif_list;
  while (modif != nullptr) {
    a_source_line_modif *older = modif->next;
    if (!modif->spans_lines || macro_depth == 0) {
      unlink_source_line_modif(modif);
      free_source_line_modif(&modif);
    } else if (modif->location != nullptr && loc_is_in_curr_source_line(modif->location)) {
      rem_source_line_modif_from_hash_table(modif);
      modif->location = nullptr;
      modif->deletion_count = 0;
      modif->parent = nullptr;
      modif->parent_is_known = true;
      modif->is_detached = true;
    }
    modif = older;
  }
  line_start_source_line_modif = nullptr;
}

void source_line_modifs_reset()
{
  source_line_modif_list = nullptr;
  line_start_source_line_modif = nullptr;
  last_found_modif = nullptr;
  last_source_line_modif_exited_while_skipping_white_space = nullptr;
  no_modifs_in_curr_line = true;
  modif_count = 0;
  if (modif_hash_table == nullptr) {
    resize_modif_hash_table(initial_modif_hash_size);
  } else {
    memset((void *)modif_hash_table, 0, modif_hash_size * sizeof(*modif_hash_table));
  }
}

//---------------------------------------------------------------------------------------------
// Passing through.

// Only output walks the line again; without it the text that a macro call used up may stay.
static inline bool deletions_are_needed()
{
  return generate_pp_output || f_raw_listing != nullptr;
}

void delete_collected_source(char *loc)
{
  char *from = delete_source_from_loc;
  if (loc > from && deletions_are_needed()) {
    add_inline_source_line_modif(from, (unsigned)(loc - from), false);
  }
  delete_source_from_loc = loc;
}

void delete_collected_source_in_line()
{
  char *from = delete_source_from_loc;
  if (from >= curr_source_line && from < end_of_curr_source_line) {
    delete_collected_source(end_of_curr_source_line);
  }
}

void enter_text_of_modif(a_source_line_modif *modif)
{
  curr_char_loc = modif->first_char;
  last_found_modif = modif;
}

bool enter_source_line_modif()
{
  a_source_line_modif *modif = assoc_source_line_modif(curr_char_loc);
  if (modif->stop_at_end) return false;
  if (delete_source_from_loc != nullptr) delete_collected_source(curr_char_loc);
  if (modif->first_char == modif->last_char) {
    curr_char_loc = after_source_line_modif(modif);
  } else {
    if (!modif->parent_is_known) f_parent_source_line_modif(modif);
    enter_text_of_modif(modif);
  }
  if (delete_source_from_loc != nullptr) delete_source_from_loc = curr_char_loc;
  return true;
}

bool leave_source_line_modif()
{
  a_source_line_modif *modif = nested_source_line_modif(curr_char_loc);
  check(modif != nullptr);
  if (modif->stop_at_end) return false;
  if (delete_source_from_loc != nullptr) delete_collected_source(curr_char_loc);
  last_source_line_modif_exited_while_skipping_white_space = modif;
  curr_char_loc = after_source_line_modif(modif);
  if (delete_source_from_loc != nullptr) delete_source_from_loc = curr_char_loc;
  last_found_modif = parent_source_line_modif(modif);
  return true;
}

//---------------------------------------------------------------------------------------------
// A buffer has moved.

namespace {
struct a_moved_buffer {
  const char *start;
  const char *end;
  long shift;

  void fix(char **pointer) const
  {
    if (*pointer >= start && *pointer <= end) *pointer += shift;
  }
};
} // namespace

static void move_source_line_modif(a_source_line_modif *modif, const a_moved_buffer &moved)
{
  char *location = modif->location;
  moved.fix(&location);
  if (location != modif->location) {
    rem_source_line_modif_from_hash_table(modif);
    modif->location = location;
    add_source_line_modif_to_hash_table(modif);
  }
  moved.fix(&modif->first_char);
  moved.fix(&modif->last_char);
  for (a_concatenation_record *r = modif->concatenations; r != nullptr; r = r->next) {
    moved.fix(&r->location);
  }
}

void adjust_curr_source_line_structure_after_realloc(char *old_start, char *old_end,
                                                     char *new_start, bool modifs_too)
{
  a_moved_buffer moved = {old_start, old_end, new_start - old_start};
  if (moved.shift == 0) return;
  for (an_orig_line_modif *m = orig_line_modif_list; m != nullptr; m = m->next) {
    moved.fix(&m->location);
  }
  if (modifs_too) {
    for (a_source_line_modif *m = source_line_modif_list; m != nullptr; m = m->next) {
      move_source_line_modif(m, moved);
    }
  }
  for (a_registered_pointer *r = registered_pointers; r != nullptr; r = r->next) {
    moved.fix(r->pointer);
  }
  moved.fix(&curr_char_loc);
  moved.fix(&delete_source_from_loc);
  moved.fix(&start_of_curr_token);
  moved.fix(&end_of_curr_token);
  if (new_start == curr_source_line) {
    for (unsigned i = 0; i < logical_char_info_entries_used; ++i)
      moved.fix(&logical_char_info[i]);
  }
}
