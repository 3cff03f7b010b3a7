// source_input_positions.cpp - from a location to a position, and from a position to file and line.
// Owns:    the file tree under il_header, the table of segments, the file indexes.
// Rule:    sequence numbers never repeat, so a number alone tells file and line; segments are sorted by
//          it, and the last answer is tried first.
// Entry:   conv_line_loc_to_source_pos_full, source_file_for_seq, record_start_of_source_file.
#include <cstring>
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/source_input_internal.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"

static a_seq_number_lookup_entry **segments; // sorted by sequence number
static unsigned long segment_count;
static unsigned long segment_capacity;

// The last answer of source_file_for_seq holds for all numbers of a range.
static struct {
  a_seq_number first;
  a_seq_number last;
  long line_delta;
  bool physical;
  a_source_file *file; // null: nothing is known
} last_answer;

//---------------------------------------------------------------------------------------------
// From a location to a position.

int compare_source_positions(const a_source_position *a, const a_source_position *b)
{
  if (a->seq != b->seq) return a->seq < b->seq ? -1 : 1;
  if (a->column != b->column) return a->column < b->column ? -1 : 1;
  return 0;
}

// Later bytes of multibyte characters between two places of the line.
static long count_logical_char_info(const char *from, const char *to)
{
  unsigned bounds[2];
  const char *places[2] = {from, to};
  for (int i = 0; i < 2; ++i) {
    unsigned low = 0, high = logical_char_info_entries_used;
    while (low < high) {
      unsigned middle = (low + high) / 2;
      if (logical_char_info[middle] < places[i]) {
        low = middle + 1;
      } else {
        high = middle;
      }
    }
    bounds[i] = low;
  }
  return (long)bounds[1] - (long)bounds[0];
}

// Where a walk along the original modifications has come.  Locations mostly ascend, so the next walk
// goes on from there.
static struct {
  const an_orig_line_modif *list; // of the line that was walked
  const char *line_buffer;
  a_seq_number line_seq;
  const an_orig_line_modif *passed; // the last record that was passed, or null
  const char *place;                // behind all that were
  const char *line_start;
  a_seq_number seq;
  long adjustment;
} orig_walk;

static void start_orig_walk()
{
  orig_walk.list = orig_line_modif_list;
  orig_walk.passed = nullptr;
  orig_walk.line_buffer = orig_walk.place = orig_walk.line_start = curr_source_line;
  orig_walk.line_seq = orig_walk.seq = curr_seq_number;
  orig_walk.adjustment = 0;
}

// Takes a record into account if it lies before `location`.
static bool pass_orig_modif(const an_orig_line_modif *m, const char *location)
{
  switch (m->kind) {
  case olm_splice:
  case olm_newline_in_string: {
    const char *line_start = m->kind == olm_splice ? m->location : m->location + 2;
    // The escape that ends the line stays on the line that the splice ended.
    if (location < line_start) return false;
    if (location == line_start && location == end_of_curr_source_line) return false;
    orig_walk.line_start = line_start;
    orig_walk.seq = m->variant.seq;
    orig_walk.adjustment = 0;
    return true;
  }
  case olm_trigraph:
    if (is_trigraph_of_splice(m)) return pass_orig_modif(m->next, location);
    if (m->location >= location) return false;
    orig_walk.adjustment += 2;
    return true;
  case olm_null_char:
    if (m->location >= location) return false;
    orig_walk.adjustment -= 1;
    return true;
  }
  return false;
}

// The position of a place in the line buffer.
static a_source_position position_in_line(const char *location)
{
  if (orig_walk.list != orig_line_modif_list || orig_walk.line_buffer != curr_source_line ||
      orig_walk.line_seq != curr_seq_number || location < orig_walk.place) {
    start_orig_walk();
  }
  for (;;) {
    const an_orig_line_modif *next =
        orig_walk.passed == nullptr ? orig_walk.list : orig_walk.passed->next;
    if (next == nullptr || !pass_orig_modif(next, location)) break;
    orig_walk.passed = next;
  }
  orig_walk.place = location;
  long adjustment = orig_walk.adjustment;
  if (logical_char_info_entries_used > 0) {
    adjustment -= count_logical_char_info(orig_walk.line_start, location);
  }
  return {orig_walk.seq, (a_column_number)(location - orig_walk.line_start + adjustment + 1)};
}

// A text whose characters stand for source characters: its ends have positions of their own.
static bool position_of_fixed_end(const a_source_line_modif *modif, const char **location,
                                  a_source_position *result)
{
  if (*location == modif->first_char) {
    *result = modif->pos;
    return true;
  }
  if (*location != modif->last_char - 1) return false;
  if (modif->location != nullptr) {
    *location = modif->location + modif->deletion_count - 1;
    return false;
  }
  *result = modif->pos;
  result->column = (a_column_number)(result->column + (modif->last_char - modif->first_char) - 1);
  return true;
}

void conv_line_loc_to_source_pos_full(char *location, a_source_position *result)
{
  if (fixed_position_in_use) {
    *result = fixed_position;
    return;
  }
  if (loc_is_in_curr_source_line(location)) {
    *result = position_in_line(location);
    return;
  }
  if (pos_of_macro_invocation.seq != 0) { // all of an expansion stands where the call does
    *result = pos_of_macro_invocation;
    return;
  }
  a_source_line_modif *found = nested_source_line_modif(location);
  if (found == nullptr) {
    *result = pos_curr_token;
    return;
  }
  const char *place = location;
  if (found->has_fixed_ends && position_of_fixed_end(found, &place, result)) return;
  a_source_line_modif *modif = found;
  for (;;) {
    if (modif->pos.seq != 0) {
      *result = modif->pos;
      break;
    }
    a_source_line_modif *parent = parent_source_line_modif(modif);
    if (parent == nullptr) {
      place = modif->location;
      if (place == nullptr) place = curr_source_line + end_of_line_escape_offset;
      *result = position_in_line(place);
      break;
    }
    modif = parent;
  }
  found->pos = *result;
  pos_of_macro_invocation = *result;
}

//---------------------------------------------------------------------------------------------
// Segments.

static void add_segment(a_source_file *file, a_seq_number seq, a_line_number line)
{
  last_answer.file = nullptr;
  a_seq_number_lookup_entry *current = segment_count == 0 ? nullptr : segments[segment_count - 1];
  if (current == nullptr || current->first_seq_number != seq) {
    if (segment_count == segment_capacity) {
      unsigned long capacity = segment_capacity == 0 ? 1024 : segment_capacity * 2;
      segments = (a_seq_number_lookup_entry **)realloc_buffer(
          (char *)segments, segment_capacity * sizeof(*segments), capacity * sizeof(*segments));
      segment_capacity = capacity;
    }
    a_seq_number_lookup_entry *entry = alloc_seq_number_lookup_entry();
    entry->next = nullptr;
    if (current == nullptr) {
      il_header.seq_number_lookup_list = entry;
    } else {
      current->next = entry;
    }
    segments[segment_count++] = entry;
    il_header.seq_number_lookup_count = (unsigned)segment_count;
    current = entry;
  }
  current->first_seq_number = seq;
  current->last_seq_number = open_seq_number;
  current->first_line_number = line;
  current->source_file = file;
}

static void close_segment(a_seq_number last_seq)
{
  last_answer.file = nullptr;
  if (segment_count == 0) return;
  a_seq_number_lookup_entry *current = segments[segment_count - 1];
  if (current->last_seq_number == open_seq_number && current->first_seq_number <= last_seq) {
    current->last_seq_number = last_seq;
  }
}

// The segment that holds `seq`; of two that end there at a file's end the one of a primary file.
static a_seq_number_lookup_entry *find_segment(a_seq_number seq, bool want_primary)
{
  unsigned long low = 0, high = segment_count;
  while (low < high) {
    unsigned long middle = (low + high) / 2;
    if (segments[middle]->first_seq_number <= seq) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  while (low > 0) {
    a_seq_number_lookup_entry *entry = segments[--low];
    if (entry->last_seq_number < seq) break;
    if (!want_primary || !entry->source_file->is_include_file || low == 0) return entry;
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// The tree.

a_source_file *record_start_of_source_file(const a_source_file_start &start)
{
  a_source_file *file = alloc_source_file();
  file->file_name = start.file_name;
  file->full_name = start.full_name;
  file->name_as_written = start.name_as_written;
  file->first_seq_number = start.seq;
  file->last_seq_number = open_seq_number;
  file->first_line_number = start.line;
  file->first_child = file->last_child = file->next_sibling = nullptr;
  file->is_include_file = start.is_include_file;
  file->is_angle_bracket_include = start.is_angle_bracket_include;
  file->is_preinclude = start.is_preinclude;
  file->is_macro_preinclude = start.is_macro_preinclude;
  file->is_system_header = start.is_system_header;
  file->is_top_level = start.parent == nullptr;
  if (start.parent == nullptr) {
    a_source_file **link = &il_header.source_files;
    while (*link != nullptr)
      link = &(*link)->next_sibling;
    *link = file;
  } else {
    if (start.parent->last_child == nullptr) {
      start.parent->first_child = file;
    } else {
      start.parent->last_child->next_sibling = file;
    }
    start.parent->last_child = file;
  }
  close_segment(start.seq - 1);
  add_segment(file, start.seq, start.line);
  return file;
}

void record_end_of_source_file(a_source_file *file, a_seq_number seq)
{
  file->last_seq_number = seq;
  close_segment(seq);
}

void record_resumption_of_source_file(a_source_file *file, a_seq_number seq, a_line_number line)
{
  close_segment(seq - 1);
  add_segment(file, seq, line);
}

static inline bool holds(const a_source_file *file, a_seq_number seq)
{
  return file->first_seq_number <= seq && seq <= file->last_seq_number;
}

// Lines of the parent's own text that an entry's sequence numbers don't stand for.
static unsigned long foreign_lines(const a_source_file *file)
{
  if (file->last_seq_number == open_seq_number) return 0;
  if (file->full_name != nullptr) return file->last_seq_number - file->first_seq_number + 1;
  unsigned long lines = 0;
  for (a_source_file *f = file->first_child; f != nullptr; f = f->next_sibling) {
    lines += foreign_lines(f);
  }
  return lines;
}

// Walks the tree from a primary file down to the physical file that holds `seq`.
static a_source_file *find_in_tree(a_source_file *file, a_seq_number seq, bool at_end_of_file,
                                   a_line_number *line)
{
  a_source_file *physical_file = file;
  unsigned long passed = 0; // numbers since the physical file's first that are lines of other files
  while (!at_end_of_file) {
    a_source_file *child = file->first_child;
    while (child != nullptr && !holds(child, seq)) {
      if (child->first_seq_number < seq) passed += foreign_lines(child);
      child = child->next_sibling;
    }
    if (child == nullptr) break;
    file = child;
    if (file->full_name != nullptr) {
      physical_file = file;
      passed = 0;
    }
  }
  *line = seq + physical_file->first_line_number - physical_file->first_seq_number - passed;
  return physical_file;
}

a_source_file *primary_source_file_for_seq(a_seq_number seq)
{
  for (a_source_file *f = il_header.source_files; f != nullptr; f = f->next_sibling) {
    if (holds(f, seq) || seq - 1 == f->last_seq_number) return f;
  }
  return nullptr;
}

a_source_file *source_file_for_seq(a_seq_number seq, a_line_number *line, bool *at_end_of_file,
                                   bool physical)
{
  *line = 0;
  *at_end_of_file = false;
  if (seq == 0 || il_header.source_files == nullptr) return nullptr;
  if (last_answer.file != nullptr && seq >= last_answer.first && seq <= last_answer.last &&
      last_answer.physical == physical) {
    *line = seq + last_answer.line_delta;
    return last_answer.file;
  }
  for (a_source_file *f = il_header.source_files; f != nullptr; f = f->next_sibling) {
    if (seq - 1 == f->last_seq_number) {
      --seq;
      *at_end_of_file = true;
      break;
    }
  }
  if (physical) {
    a_source_file *primary = primary_source_file_for_seq(seq);
    return primary == nullptr ? nullptr : find_in_tree(primary, seq, *at_end_of_file, line);
  }
  a_seq_number_lookup_entry *entry = find_segment(seq, *at_end_of_file);
  if (entry == nullptr) return nullptr;
  long delta = (long)entry->first_line_number - (long)entry->first_seq_number;
  *line = seq + delta;
  if (!*at_end_of_file) {
    last_answer = {entry->first_seq_number, entry->last_seq_number, delta, false,
                   entry->source_file};
    if (last_answer.last == open_seq_number) last_answer.last = seq_number_last_read;
  }
  return entry->source_file;
}

void conv_seq_to_file_and_line(a_seq_number seq, const char **file_name, const char **full_name,
                               a_line_number *line, bool *at_end_of_file)
{
  a_source_file *file = source_file_for_seq(seq, line, at_end_of_file, false);
  *file_name = file == nullptr ? "" : file->file_name;
  *full_name = file == nullptr || file->full_name == nullptr ? "" : file->full_name;
  if (file != nullptr && file->full_name == nullptr) *full_name = file->file_name;
}

void conv_seq_to_physical_file_and_line(a_seq_number seq, a_source_file **file, a_line_number *line,
                                        bool *at_end_of_file)
{
  *file = source_file_for_seq(seq, line, at_end_of_file, true);
}

a_source_file *eff_primary_source_file()
{
  a_source_file *primary = il_header.source_files;
  if (primary == nullptr) return nullptr;
  a_source_file *child = primary->first_child;
  while (child != nullptr && child->is_preinclude)
    child = child->next_sibling;
  // A preprocessed input names its source in an opening line marker.
  bool is_marker = child != nullptr && child->full_name == nullptr &&
                   child->first_seq_number == 2 && child->first_line_number == 1;
  return is_marker ? child : primary;
}

bool seq_is_in_system_header(a_seq_number seq)
{
  a_line_number line;
  bool at_end;
  a_source_file *file = source_file_for_seq(seq, &line, &at_end, false);
  return file != nullptr && file->is_system_header;
}

bool seq_is_in_include_file(a_seq_number seq)
{
  a_line_number line;
  bool at_end;
  a_source_file *file = source_file_for_seq(seq, &line, &at_end, false);
  if (file == nullptr) return false;
  if (file->is_include_file) return true;
  return file->full_name == nullptr &&
         strcmp(file->file_name, eff_primary_source_file()->file_name) != 0;
}

//---------------------------------------------------------------------------------------------
// File indexes.

static constexpr unsigned file_index_size = 10;
static constexpr unsigned first_interval = 100;

namespace {
struct a_file_index {
  a_file_index *next; // most recently used first
  a_file_index *prev;
  a_source_file *file;
  unsigned count;
  unsigned interval;
  a_line_number lines[file_index_size];
  long offsets[file_index_size];
};
} // namespace

static a_file_index *file_index_list;

static void move_to_front(a_file_index *index)
{
  if (index == file_index_list) return;
  index->prev->next = index->next;
  if (index->next != nullptr) index->next->prev = index->prev;
  index->prev = nullptr;
  index->next = file_index_list;
  file_index_list->prev = index;
  file_index_list = index;
}

static a_file_index *find_file_index(a_source_file *file)
{
  for (a_file_index *index = file_index_list; index != nullptr; index = index->next) {
    if (index->file == file) {
      move_to_front(index);
      return index;
    }
  }
  return nullptr;
}

a_line_number initialize_file_index(a_source_file *file)
{
  a_file_index *index = (a_file_index *)alloc_in_region(0, sizeof(a_file_index));
  index->prev = nullptr;
  index->next = file_index_list;
  if (file_index_list != nullptr) file_index_list->prev = index;
  file_index_list = index;
  index->file = file;
  index->count = 0;
  index->interval = first_interval;
  return first_interval;
}

// Drops the entry that leaves the places most evenly spread, and widens the interval.
static void thin_out_file_index(a_file_index *index)
{
  a_line_number step = index->lines[file_index_size - 1] / 5;
  unsigned dropped = 0;
  while (dropped < 5 && index->lines[dropped] >= (dropped + 1) * step)
    ++dropped;
  for (unsigned i = dropped; i + 1 < file_index_size; ++i) {
    index->lines[i] = index->lines[i + 1];
    index->offsets[i] = index->offsets[i + 1];
  }
  --index->count;
  index->interval += first_interval;
}

a_line_number update_file_index(a_source_file *file, a_line_number line, long offset)
{
  a_file_index *index = find_file_index(file);
  if (index->count == file_index_size) thin_out_file_index(index);
  index->lines[index->count] = line;
  index->offsets[index->count] = offset;
  ++index->count;
  return line + index->interval;
}

void look_up_file_index(a_source_file *file, a_line_number line, a_line_number *indexed_line,
                        long *offset)
{
  *indexed_line = 0;
  *offset = 0;
  a_file_index *index = find_file_index(file);
  if (index == nullptr) return;
  for (unsigned i = 0; i < index->count && index->lines[i] <= line; ++i) {
    *indexed_line = index->lines[i];
    *offset = index->offsets[i];
  }
}

void clear_file_index_list()
{
  file_index_list = nullptr;
}

void positions_trans_unit_init()
{
  last_answer.file = nullptr;
  if (il_header.seq_number_lookup_list == nullptr) segment_count = 0;
}
