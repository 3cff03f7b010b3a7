// cmd_line_override.cpp - options for single files and functions, which the shell hands on.
// Owns:    opt_overrides, a map ordered by its keys.
// Rule:    a key is "-" for all code, a file's base name with or without a colon, a function's name
//          with or without that prefix; the closest one found first holds.
// Entry:   lookup_opt_override, get_opt_override, process_opt_override.
#include <cstring>
#include "driver/cmd_line.h"
#include "driver/cmd_line_internal.h"
#include "driver/host_envir.h"
#include "il/il_corresp.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"

struct an_override_entry {
  const char *key;
  OPT_OVERRIDE *record;
};

static an_override_entry *opt_overrides; // sorted by key
static size_t opt_overrides_used, opt_overrides_size;

void OPTION_STATE::save_state()
{
}

void OPTION_STATE::restore_state()
{
}

void OPTION_STATE::reset_state()
{
}

// Index of the first key that isn't below `key`.
static size_t place_of_key(const char *key)
{
  size_t low = 0, high = opt_overrides_used;
  while (low < high) {
    size_t middle = (low + high) / 2;
    if (strcmp(opt_overrides[middle].key, key) < 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

static OPT_OVERRIDE *insert_override(size_t place, const char *key)
{
  if (opt_overrides_used == opt_overrides_size) {
    size_t size = opt_overrides_size == 0 ? 16 : opt_overrides_size * 2;
    opt_overrides = reinterpret_cast<an_override_entry *>(realloc_buffer(
        reinterpret_cast<char *>(opt_overrides), opt_overrides_size * sizeof(an_override_entry),
        size * sizeof(an_override_entry)));
    opt_overrides_size = size;
  }
  memmove(opt_overrides + place + 1, opt_overrides + place,
          (opt_overrides_used - place) * sizeof(an_override_entry));
  opt_overrides_used++;
  auto *record = static_cast<OPT_OVERRIDE *>(alloc_general(sizeof(OPT_OVERRIDE)));
  *record = {};
  opt_overrides[place] = {key, record};
  return record;
}

OPT_OVERRIDE *lookup_opt_override(const char *key, bool create)
{
  size_t place = place_of_key(key);
  if (place < opt_overrides_used && strcmp(opt_overrides[place].key, key) == 0) {
    return opt_overrides[place].record;
  }
  return create ? insert_override(place, key) : nullptr;
}

// Looks for the texts joined; the key isn't stored.
static OPT_OVERRIDE *lookup_joined(const char *first, const char *second, const char *third)
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(256);
  reset_text_buffer(buffer);
  add_to_text_buffer(buffer, first, strlen(first));
  add_to_text_buffer(buffer, second, strlen(second));
  add_to_text_buffer(buffer, third, strlen(third) + 1);
  return lookup_opt_override(buffer->buffer, false);
}

OPT_OVERRIDE *get_opt_override(const char *name, const a_source_position *pos)
{
  if (opt_overrides_used == 0) return nullptr;
  if (name == nullptr) return lookup_opt_override("-", false);
  const char *base = nullptr;
  if (pos != nullptr && !is_null_position(*pos)) {
    const char *file_name, *full_name;
    a_line_number line;
    bool at_end;
    conv_seq_to_file_and_line(pos->seq, &file_name, &full_name, &line, &at_end);
    if (*file_name != '\0') base = start_of_file_name(file_name);
  }
  if (base != nullptr) {
    if (OPT_OVERRIDE *record = lookup_joined(base, ":", name)) return record;
  }
  if (OPT_OVERRIDE *record = lookup_opt_override(name, false)) return record;
  if (base == nullptr) return nullptr;
  if (OPT_OVERRIDE *record = lookup_joined(base, ":", "")) return record;
  return lookup_opt_override(base, false);
}

OPT_OVERRIDE *get_opt_override(const a_source_correspondence *entity)
{
  return get_opt_override(entity->name, &entity->decl_position);
}

OPTION_STATE *process_opt_override(const char *name, const a_source_position *pos)
{
  OPT_OVERRIDE *record = get_opt_override(name, pos);
  if (record == nullptr || record->ansi_options == nullptr) return nullptr;
  static OPTION_STATE state;
  state.save_state();
  state.reset_state();
  a_saved_option_reader saved;
  divert_option_reader(record->ansi_options, &saved);
  read_options();
  resume_option_reader(saved);
  return &state;
}

OPTION_STATE *process_opt_override(const a_source_correspondence *entity)
{
  return process_opt_override(entity->name, &entity->decl_position);
}
